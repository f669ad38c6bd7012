// Layout of frmPageLayout: its controls, their order, their fields and what they are connected to.
#include "output/windows/frmPageLayout.h"

#include "app/NumberFormat.h"
#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"
#include "platform/widgets/UpDown.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

using FormSupport::Named;

namespace {
constexpr int longestMargin = 9999;
constexpr int numberCharacters = 8;

QLineEdit* numberBox(const QString& name, int index = -1) {
    auto* box = Named(new QLineEdit, name, index);
    box->setAlignment(Qt::AlignRight);
    box->setFixedWidth(box->fontMetrics().averageCharWidth() * numberCharacters + box->sizeHint().height());
    FormSupport::SelectAllOnFocus(*box);
    return box;
}

QString outlineText(const QString& text) {
    return NumberFormat::Format(mdTips::MaxOf(mdTips::Val(text), 0.1), u"0.0");
}

/// What "1:N" is to be, of "N" or "1:N"; 1 for what is no scale.
double denominatorOf(const QString& text) {
    constexpr double least = 1e-6, most = 1e9;
    const double number = mdTips::Val(text.mid(text.indexOf(u':') + 1));
    return number > 0 ? std::clamp(number, least, most) : 1;
}

QComboBox* combo(const QString& name, const QStringList& lines = {}) {
    auto* made = Named(new QComboBox, name);
    made->addItems(lines);
    // The names of papers and printers are long, and others come while the dialog stands.
    made->setSizeAdjustPolicy(lines.isEmpty() ? QComboBox::AdjustToMinimumContentsLengthWithIcon
                                              : QComboBox::AdjustToContents);
    if (lines.isEmpty())
        made->setMinimumContentsLength(22);
    return made;
}
} // namespace

void frmPageLayout::buildControls() {
    auto* tbTab = Named(new QTabWidget, u"tbTab"_s);
    tbTab->addTab(buildPageTab(), u"ページ"_s);
    tbTab->addTab(buildLabelTab(), u"文字列"_s);
    Command1 = {Named(new QPushButton(u"OK"_s), u"Command1"_s, 0),
                Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1)};
    Command1[0]->setDefault(true);
    FormSupport::ButtonWidths({Command1[0], Command1[1]});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tbTab);
    layout->addLayout(FormSupport::ButtonRow({}, {Command1[0], Command1[1]}));
    FormSupport::TabOrder({tbTab, cmbPrinter, cmdPrinter, cmbPaper, cmbOrientation, txtMargin[0], txtMargin[1],
                           txtMargin[2], txtMargin[3], chkPaintOutline, txtOutline, cmbScale, txtScale, cmbScaleUnit});
    FormSupport::TabOrder({cmbScaleUnit, lvLabel, cmdLabel[0], cmdLabel[1], cmdLabel[2], Command1[0], Command1[1]});
}

QWidget* frmPageLayout::buildPageTab() {
    auto* tab = new QWidget;
    auto* layout = new QGridLayout(tab);
    layout->addWidget(buildPaperFrame(), 0, 0);
    layout->addWidget(buildMarginFrame(), 1, 0);
    layout->addWidget(buildScaleFrame(), 2, 0);
    layout->setRowStretch(3, 1);
    picPaper = Named(new PictureBox, u"picPaper"_s);
    picPaper->setAccessibleName(u"用紙と余白"_s);
    picPaper->setFocusPolicy(Qt::NoFocus);
    constexpr int paperSide = 200;
    picPaper->setMinimumSize(paperSide, paperSide);
    layout->addWidget(picPaper, 0, 1, 4, 1);
    layout->setColumnStretch(1, 1);
    return tab;
}

QWidget* frmPageLayout::buildPaperFrame() {
    cmbPrinter = combo(u"cmbPrinter"_s);
    cmdPrinter = Named(new QPushButton(u"プロパティ(&I)..."_s), u"cmdPrinter"_s);
    cmbPaper = combo(u"cmbPaper"_s);
    cmbOrientation = combo(u"cmbOrientation"_s, {u"縦方向"_s, u"横方向"_s});
    auto* frame = new QGroupBox(u"プリンタと用紙"_s);
    auto* grid = new QGridLayout(frame);
    FormSupport::AddRow(*grid, 0, u"プリンタ(&P):"_s, cmbPrinter);
    grid->addWidget(cmdPrinter, 1, 1, Qt::AlignRight);
    FormSupport::AddRow(*grid, 2, u"用紙(&Z):"_s, cmbPaper);
    FormSupport::AddRow(*grid, 3, u"印刷の向き(&O):"_s, cmbOrientation);
    grid->setColumnStretch(1, 1);
    return frame;
}

QWidget* frmPageLayout::buildMarginFrame() {
    const QString captions[] = {u"左(&L):"_s, u"上(&T):"_s, u"右(&G):"_s, u"下(&B):"_s};
    auto* frame = new QGroupBox(u"余白と外枠 (mm)"_s);
    auto* grid = new QGridLayout(frame);
    for (int i = 0; i < int(txtMargin.size()); ++i) {
        txtMargin[i] = numberBox(u"txtMargin"_s, i);
        udMargin[i] = Named(new UpDown(0, longestMargin), u"udMargin"_s, i);
        udMargin[i]->ServeKeysOf(*txtMargin[i]);
        // Left and right stand beside each other, as do top and bottom.
        const int row = i % 2, column = i / 2 * 4;
        auto* caption = FormSupport::Caption(captions[i], txtMargin[i]);
        grid->addWidget(caption, row, column);
        grid->addWidget(txtMargin[i], row, column + 1);
        grid->addWidget(udMargin[i], row, column + 2);
    }
    grid->setColumnStretch(3, 1);
    chkPaintOutline = Named(new QCheckBox(u"外枠の印刷(&F)"_s), u"chkPaintOutline"_s);
    txtOutline = numberBox(u"txtOutline"_s);
    auto* width = FormSupport::Caption(u"太さ(&K):"_s, txtOutline);
    grid->addWidget(chkPaintOutline, 2, 0, 1, 4);
    grid->addWidget(width, 2, 4);
    grid->addWidget(txtOutline, 2, 5);
    return frame;
}

QWidget* frmPageLayout::buildScaleFrame() {
    cmbScale = combo(u"cmbScale"_s, {u"なし"_s, u"1:N"_s});
    txtScale = numberBox(u"txtScale"_s);
    cmbScaleUnit = combo(u"cmbScaleUnit"_s, {u"mm"_s, u"cm"_s, u"m"_s});
    auto* frame = new QGroupBox(u"縮尺"_s);
    auto* row = new QHBoxLayout(frame);
    for (const auto& [caption, control] :
         {std::pair<QString, QWidget*>(u"縮尺(&S):"_s, cmbScale), {u"分母 N(&N):"_s, txtScale}}) {
        auto* label = FormSupport::Caption(caption, control);
        row->addWidget(label);
        row->addWidget(control);
    }
    row->addStretch();
    auto* unit = FormSupport::Caption(u"座標の単位(&U):"_s, cmbScaleUnit);
    row->addWidget(unit);
    row->addWidget(cmbScaleUnit);
    return frame;
}

QWidget* frmPageLayout::buildLabelTab() {
    constexpr int textWidth = 3800 / 15, placeWidth = 1440 / 15;
    lvLabel = Named(new QTreeWidget, u"lvLabel"_s);
    lvLabel->setAccessibleName(u"文字列の一覧"_s);
    lvLabel->setHeaderLabels({u"印刷 / 文字列"_s, u"位置"_s});
    lvLabel->setRootIsDecorated(false);
    lvLabel->setUniformRowHeights(true);
    lvLabel->header()->setStretchLastSection(true);
    lvLabel->setColumnWidth(0, textWidth);
    lvLabel->setColumnWidth(1, placeWidth);
    lvLabel->setMinimumWidth(textWidth + placeWidth + lvLabel->fontMetrics().height() * 2);
    cmdLabel = {Named(new QPushButton(u"追加(&A)"_s), u"cmdLabel"_s, 0),
                Named(new QPushButton(u"削除(&R)"_s), u"cmdLabel"_s, 1),
                Named(new QPushButton(u"編集(&E)"_s), u"cmdLabel"_s, 2)};
    FormSupport::ButtonWidths({cmdLabel[0], cmdLabel[1], cmdLabel[2]});
    auto* tab = new QWidget;
    auto* layout = new QHBoxLayout(tab);
    layout->addWidget(lvLabel, 1);
    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : cmdLabel)
        buttons->addWidget(button);
    buttons->addStretch();
    layout->addLayout(buttons);
    return tab;
}

void frmPageLayout::bindControls() {
    using FormSupport::Bind;
    using FormSupport::Edit;
    const Edit<int> outline{txtOutline, [](int tenths) { return outlineText(QString::number(tenths * 0.1)); },
                            [](const QString& text) { return Round(mdTips::Val(outlineText(text)) * 10); }, 1};
    rows = {Bind(chkPaintOutline, &PageSettings::Frame), Bind(outline, &PageSettings::FrameSize),
            Bind(cmbScaleUnit, &PageSettings::ScaleUnit)};
    // Whether there is a scale, and which, are one field.
    rows.push_back({[this](const PageSettings& page) {
                        cmbScale->setCurrentIndex(page.ScaleDenominator > 0 ? 1 : 0);
                        txtScale->setText(
                            NumberFormat::Shortest(page.ScaleDenominator > 0 ? page.ScaleDenominator : 1));
                    },
                    [this](PageSettings& page) {
                        page.ScaleDenominator = cmbScale->currentIndex() > 0 ? denominatorOf(txtScale->text()) : 0;
                    }});
    for (int i = 0; i < int(txtMargin.size()); ++i)
        FormSupport::ReformatOnLeaving(*txtMargin[i],
                                       [this, i](const QString& text) { return checkedMargin(i, text); });
    FormSupport::ReformatOnLeaving(*txtOutline, outlineText);
    FormSupport::ReformatOnLeaving(*txtScale,
                                   [](const QString& text) { return NumberFormat::Shortest(denominatorOf(text)); });
}

void frmPageLayout::connectControls() {
    connect(cmbPrinter, &QComboBox::currentIndexChanged, this, &frmPageLayout::choosePrinter);
    connect(cmdPrinter, &QPushButton::clicked, this, &frmPageLayout::editProperties);
    connect(cmbPaper, &QComboBox::currentIndexChanged, this, [this] {
        if (Updating || !printer)
            return;
        printer->SetPaperSize(cmbPaper->currentData().toInt());
        paintPaper();
    });
    connect(cmbOrientation, &QComboBox::currentIndexChanged, this, [this](int line) {
        if (Updating || !printer)
            return;
        printer->SetOrientation(line + 1);
        paintPaper();
    });
    for (int i = 0; i < int(udMargin.size()); ++i)
        connect(udMargin[i], &UpDown::Changed, this, [this, i] { showMargin(i); });
    connect(chkPaintOutline, &QCheckBox::toggled, this, &frmPageLayout::enableControls);
    connect(cmbScale, &QComboBox::currentIndexChanged, this, &frmPageLayout::enableControls);
    connect(picPaper, &PictureBox::Resized, this, &frmPageLayout::paintPaper);
    connect(lvLabel, &QTreeWidget::itemDoubleClicked, this, &frmPageLayout::editLabel);
    connect(lvLabel, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* row) {
        if (!Updating)
            labels[lvLabel->indexOfTopLevelItem(row)].Print = row->checkState(0) == Qt::Checked;
    });
    connect(cmdLabel[0], &QPushButton::clicked, this, &frmPageLayout::addLabel);
    connect(cmdLabel[1], &QPushButton::clicked, this, &frmPageLayout::removeLabel);
    connect(cmdLabel[2], &QPushButton::clicked, this, &frmPageLayout::editLabel);
    connect(Command1[0], &QPushButton::clicked, this, &frmPageLayout::apply);
    connect(Command1[1], &QPushButton::clicked, this, &frmPageLayout::reject);
}
