// Layout of frmGraphSetting: its controls, their order, their fields and what they are connected to.
#include "app/NumberFormat.h"
#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "platform/device/Fonts.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"
#include "plot/windows/frmGraphSetting.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

using FormSupport::AddRow;
using FormSupport::Named;

namespace {

constexpr int tenthsPerMillimetre = 10;

/// A length in millimetres that shows its tenths.
FormSupport::Edit<int> lengthEdit(QLineEdit* box) {
    return {box, [](int tenths) { return NumberFormat::Format(tenths * 0.1, u"0.0"); },
            [](const QString& text) { return Round(mdTips::Val(text) * tenthsPerMillimetre); }};
}

QString positiveTenths(const QString& text) {
    return NumberFormat::Format(std::abs(mdTips::Val(text)), u"0.0");
}

} // namespace

void frmGraphSetting::buildControls() {
    SSTab1 = Named(new QTabWidget, u"SSTab1"_s);
    SSTab1->addTab(buildGeneralTab(), tr("全般"));
    SSTab1->addTab(buildLabelTab(), tr("ラベル"));
    SSTab1->addTab(buildFontTab(), tr("フォント"));
    SSTab1->addTab(buildSeriesTab(), tr("系列"));
    Command1 = {Named(new QPushButton(u"OK"_s), u"Command1"_s, 0),
                Named(new QPushButton(tr("キャンセル")), u"Command1"_s, 1)};
    Command1[0]->setDefault(true);
    FormSupport::ButtonWidths({Command1[0], Command1[1]});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1);
    layout->addLayout(FormSupport::ButtonRow({}, {Command1[0], Command1[1]}));
    orderControls();
}

void frmGraphSetting::orderControls() {
    FormSupport::TabOrder({SSTab1,
                           chkPlotLegend,
                           chkPlotGrid,
                           chkPlotScale,
                           cmbLegendPos,
                           txtSize[Marker],
                           txtSize[Line],
                           cmbScaleFormat,
                           txtScaleMask,
                           txtLabel[0],
                           txtLabel[1],
                           txtLabel[2],
                           txtLabel[3],
                           txtLabel[4],
                           cmbFont,
                           txtFontFace,
                           lvFontFace,
                           fontFields.Size,
                           fontFields.Styles[0],
                           fontFields.Styles[1],
                           fontFields.Styles[2],
                           fontFields.Styles[3]});
    FormSupport::TabOrder({fontFields.Styles[3], lstLegend, cmdLegend[0], cmdLegend[1], cmbMarkerStyle,
                           cmdColor[Marker], cmbLineStyle, cmdColor[Line], Command1[0], Command1[1]});
}

QWidget* frmGraphSetting::buildGeneralTab() {
    chkPlotLegend = Named(new QCheckBox(tr("凡例を描画(&L)")), u"chkPlotLegend"_s);
    chkPlotGrid = Named(new QCheckBox(tr("グリッドを描画(&G)")), u"chkPlotGrid"_s);
    chkPlotScale = Named(new QCheckBox(tr("目盛り軸を描画(&S)")), u"chkPlotScale"_s);
    cmbLegendPos = Named(new QComboBox, u"cmbLegendPos"_s);
    cmbLegendPos->addItems({tr("左上"), tr("中央上"), tr("右上"), tr("左下"), tr("中央下"), tr("右下")});
    cmbScaleFormat = Named(new QComboBox, u"cmbScaleFormat"_s);
    cmbScaleFormat->addItems({tr("標準"), tr("オプションの数値書式"), tr("ユーザー定義")});
    txtScaleMask = Named(new QLineEdit, u"txtScaleMask"_s);
    txtScaleMask->setAccessibleName(tr("目盛り値のユーザー定義書式"));
    txtScaleMask->setToolTip(tr("例: 0.000、0.0##、0.00E-0"));
    auto* tab = new QWidget;
    auto* grid = new QGridLayout(tab);
    int row = 0;
    for (QCheckBox* box : {chkPlotLegend, chkPlotGrid, chkPlotScale})
        grid->addWidget(box, row++, 0, 1, 3);
    AddRow(*grid, row++, tr("凡例位置(&P):"), cmbLegendPos);
    for (const int i : {Marker, Line}) {
        txtSize[i] = Named(new QLineEdit, u"txtSize"_s, i);
        FormSupport::ReformatOnLeaving(*txtSize[i], positiveTenths, FormSupport::OnEnter::MoveOn);
        FormSupport::SelectAllOnFocus(*txtSize[i]);
        grid->addWidget(new QLabel(u"mm"_s), row, 2);
        AddRow(*grid, row++, i == Marker ? tr("マーカーサイズ(&M):") : tr("ラインサイズ(&N):"), txtSize[i]);
    }
    AddRow(*grid, row, tr("目盛り値の書式(&V):"), cmbScaleFormat);
    grid->addWidget(txtScaleMask, row++, 2);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(row, 1);
    return tab;
}

QWidget* frmGraphSetting::buildLabelTab() {
    const std::array<QString, 5> captions{tr("グラフタイトル(&T):"), tr("基準軸(&H):"), tr("プロット軸(&S):"),
                                          tr("基準軸(&D):"), tr("プロット軸(&P):")};
    auto* title = new QGridLayout;
    auto* history = new QGroupBox(tr("時系列図"));
    auto* distribution = new QGroupBox(tr("分布図"));
    auto *ofHistory = new QGridLayout(history), *ofDistribution = new QGridLayout(distribution);
    for (int i = 0; i < int(txtLabel.size()); ++i) {
        txtLabel[i] = Named(new QLineEdit, u"txtLabel"_s, i);
        FormSupport::SelectAllOnFocus(*txtLabel[i]);
        AddRow(i == 0 ? *title : i <= 2 ? *ofHistory : *ofDistribution, i, captions[i], txtLabel[i]);
    }
    auto* hint = new QLabel(tr("%item% アイテム名、 %title% タイトル、 %file% ファイル名、 %name% 図の名称"));
    hint->setTextFormat(Qt::PlainText);
    hint->setWordWrap(true);
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->addLayout(title);
    layout->addWidget(history);
    layout->addWidget(distribution);
    layout->addWidget(hint);
    layout->addStretch();
    return tab;
}

QWidget* frmGraphSetting::buildFontTab() {
    cmbFont = Named(new QComboBox, u"cmbFont"_s);
    cmbFont->addItems({tr("タイトル"), tr("軸ラベル"), tr("目盛り値"), tr("凡例")});
    cmbFont->setAccessibleName(tr("フォントの対象"));
    txtFontFace = Named(new QLineEdit, u"txtFontFace"_s);
    lvFontFace = Named(new QListWidget, u"lvFontFace"_s);
    lvFontFace->setAccessibleName(tr("フォントの一覧"));
    lvFontFace->addItems(Fonts::Faces());
    auto* tab = new QWidget;
    auto* grid = new QGridLayout(tab);
    auto* details = new QGridLayout;
    grid->addWidget(cmbFont, 0, 0);
    grid->addWidget(txtFontFace, 2, 0);
    auto* faceCaption = FormSupport::Caption(tr("フォント名(&F):"), txtFontFace);
    grid->addWidget(faceCaption, 1, 0);
    grid->addWidget(lvFontFace, 3, 0);
    AddRow(*details, 0, tr("サイズ(&S):"), fontFields.Size);
    for (int i = 0; i < int(fontFields.Styles.size()); ++i)
        details->addWidget(fontFields.Styles[i], i + 1, 0, 1, 2);
    details->setRowStretch(5, 1);
    grid->addLayout(details, 2, 1, 2, 1);
    grid->addWidget(new QLabel(tr("サンプル:")), 4, 0);
    grid->addWidget(fontFields.Sample, 5, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    return tab;
}

QWidget* frmGraphSetting::buildSeriesTab() {
    lstLegend = Named(new QListWidget, u"lstLegend"_s);
    cmdLegend = {Named(new QPushButton(tr("追加")), u"cmdLegend"_s, 0),
                 Named(new QPushButton(tr("削除")), u"cmdLegend"_s, 1)};
    cmbMarkerStyle = Named(new QComboBox, u"cmbMarkerStyle"_s);
    cmbLineStyle = Named(new QComboBox, u"cmbLineStyle"_s);
    auto* caption = FormSupport::Caption(tr("データ系列(&L):"), lstLegend);
    auto* tab = new QWidget;
    auto* grid = new QGridLayout(tab);
    auto* details = new QGridLayout;
    AddRow(*details, 0, tr("マーカー形状(&M):"), cmbMarkerStyle);
    AddRow(*details, 2, tr("ライン種類(&N):"), cmbLineStyle);
    for (const int i : {Marker, Line}) {
        picColor[i] = Named(new QLabel, u"picColor"_s, i);
        cmdColor[i] = Named(new QPushButton(u"..."_s), u"cmdColor"_s, i);
        cmdColor[i]->setAccessibleName(i == Marker ? tr("マーカー色") : tr("ライン色"));
        auto* color = new QHBoxLayout;
        color->addWidget(picColor[i], 1);
        color->addWidget(cmdColor[i]);
        auto* colorCaption =
            FormSupport::Caption(i == Marker ? tr("マーカー色(&C):") : tr("ライン色(&O):"), cmdColor[i]);
        details->addWidget(colorCaption, 2 * i + 1, 0);
        details->addLayout(color, 2 * i + 1, 1);
    }
    // Of mixed characters the label takes more room than it asks for.
    details->setColumnMinimumWidth(0, fontMetrics().averageCharWidth() * 18);
    details->setColumnStretch(1, 1);
    details->setRowStretch(4, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdLegend[0]);
    buttons->addWidget(cmdLegend[1]);
    grid->addWidget(caption, 0, 0);
    grid->addWidget(lstLegend, 1, 0);
    grid->addLayout(buttons, 2, 0);
    grid->addLayout(details, 1, 1);
    picLegend = SampleBox(u"picLegend"_s, tr("系列のサンプル"), 3);
    grid->addWidget(new QLabel(tr("サンプル:")), 3, 0);
    grid->addWidget(picLegend, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    return tab;
}

void frmGraphSetting::bindControls() {
    using FormSupport::Bind;
    using G = GraphDefaults;
    rows = {Bind(chkPlotScale, &G::PlotScale),
            Bind(chkPlotGrid, &G::PlotGrid),
            Bind(chkPlotLegend, &G::PlotLegend),
            Bind(cmbLegendPos, &G::LegendPosition),
            Bind(lengthEdit(txtSize[Marker]), &G::DotSize),
            Bind(lengthEdit(txtSize[Line]), &G::LineSize),
            Bind(cmbScaleFormat, &G::ScaleFormat),
            Bind(txtScaleMask, &G::ScaleMask)};
    for (int i = 0; i < int(txtLabel.size()); ++i)
        rows.push_back(Bind(txtLabel[i], &G::GraphLabels, i));
}

void frmGraphSetting::connectControls() {
    connect(cmbScaleFormat, &QComboBox::currentIndexChanged, this, &frmGraphSetting::enableMask);

    connect(cmbFont, &QComboBox::currentIndexChanged, this, &frmGraphSetting::showFont);
    connect(lvFontFace, &QListWidget::itemSelectionChanged, this, &frmGraphSetting::chooseFace);
    connect(txtFontFace, &QLineEdit::textEdited, this, &frmGraphSetting::completeFace);
    connect(txtFontFace, &QLineEdit::textChanged, this, &frmGraphSetting::readFont);
    fontFields.OnChange(this, [this] { readFont(); });
    connect(fontFields.Sample, &PictureBox::Resized, this, &frmGraphSetting::drawFontSample);
    txtFontFace->installEventFilter(this);

    connect(lstLegend, &QListWidget::currentRowChanged, this, &frmGraphSetting::showStyle);
    connect(cmdLegend[0], &QPushButton::clicked, this, &frmGraphSetting::addStyle);
    connect(cmdLegend[1], &QPushButton::clicked, this, &frmGraphSetting::removeStyle);
    for (QComboBox* combo : {cmbMarkerStyle, cmbLineStyle})
        connect(combo, &QComboBox::currentIndexChanged, this, &frmGraphSetting::readStyle);
    for (const int i : {Marker, Line})
        connect(cmdColor[i], &QPushButton::clicked, this, [this, i] { chooseColor(i); });
    connect(picLegend, &PictureBox::Resized, this, &frmGraphSetting::drawSeriesSample);
    connect(SSTab1, &QTabWidget::currentChanged, this, &frmGraphSetting::drawSeriesSample);

    connect(Command1[0], &QPushButton::clicked, this, &frmGraphSetting::apply);
    connect(Command1[1], &QPushButton::clicked, this, &QDialog::reject);
}
