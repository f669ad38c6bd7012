// Layout of frmDrawSettings: its controls, their order, their fields and what they are connected to.
#include "view/windows/frmDrawSettings.h"

#include "app/NumberFormat.h"
#include "app/mdTips.h"
#include "platform/base/Rounding.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

using FormSupport::Named;

namespace {
constexpr int listCharacters = 26;

constexpr int tenthsPerMillimetre = 10;

/// A length that shows its tenths and is read as whole millimetres.
FormSupport::Edit<int> lengthEdit(QLineEdit* box) {
    return {box, [](int tenths) { return NumberFormat::Format(tenths * 0.1, u"0.0"); },
            [](const QString& text) {
                constexpr int longest = std::numeric_limits<int>::max() / tenthsPerMillimetre;
                return std::clamp(Round(mdTips::Val(text)), 0, longest) * tenthsPerMillimetre;
            }};
}

QString wholeMillimetres(const QString& text) {
    return QString::number(Round(mdTips::MaxOf(mdTips::Val(text), 0.0)));
}

/// A frame with the two rows that a scale has.
QGroupBox* scaleFrame(const QString& title, const QStringList& modes, QComboBox* mode, QLineEdit* length) {
    auto* frame = new QGroupBox(title);
    auto* grid = new QGridLayout(frame);
    mode->addItems(modes);
    FormSupport::AddRow(*grid, 0, u"スケール(&S):"_s, mode);
    FormSupport::AddRow(*grid, 1, u"基準値(&D):"_s, length);
    grid->addWidget(new QLabel(u"mm"_s), 1, 2);
    grid->setColumnStretch(3, 1);
    FormSupport::ReformatOnLeaving(*length, wholeMillimetres);
    FormSupport::SelectAllOnFocus(*length);
    return frame;
}

/// A combo for item names, which may be long and many.
QComboBox* itemCombo() {
    auto* combo = new QComboBox;
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(16);
    return combo;
}
} // namespace

void frmDrawSettings::buildControls() {
    tbTab = Named(new QTabWidget, u"tbTab"_s);
    tbTab->addTab(buildDisplacementTab(), u"変位図"_s);
    tbTab->addTab(buildVectorTab(), u"ベクトル図"_s);
    tbTab->addTab(buildContourTab(), u"コンタ図"_s);

    Command1 = {Named(new QPushButton(u"OK"_s), u"Command1"_s, 0),
                Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1)};
    Command1[0]->setDefault(true);
    cmdSetDefault = Named(new QPushButton(u"規定値として設定"_s), u"cmdSetDefault"_s);
    FormSupport::ButtonWidths({Command1[0], Command1[1]});
    FormSupport::ButtonWidths({cmdSetDefault});

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tbTab);
    layout->addLayout(FormSupport::ButtonRow({cmdSetDefault}, {Command1[0], Command1[1]}));
    FormSupport::TabOrder({tbTab, cmbDispScale, txtDispScale, chkDispPaintLegend, chkDispOrgMesh, cmbVectorScale,
                           txtVectorScale, chkVectorPaintLegend, lstVectorItem, txtVectorItem, cmbVectorItem[0],
                           cmbVectorItem[1], cmdVectorEdit[0], cmdVectorEdit[1]});
    FormSupport::TabOrder({cmdVectorEdit[1], optContourColor[0], optContourColor[1], optContourColor[2],
                           optContourColor[3], optContourColor[4], optContourColor[5], cmdContourColor[0],
                           cmdContourColor[1], cmdContourColor[2], cmbContourPreset, chkContourColorReverse,
                           chkContourPaintLegend, chkContourLegendName, chkContourLegendRange, Command1[0], Command1[1],
                           cmdSetDefault});
}

QWidget* frmDrawSettings::buildDisplacementTab() {
    cmbDispScale = Named(new QComboBox, u"cmbDispScale"_s);
    txtDispScale = Named(new QLineEdit, u"txtDispScale"_s);
    chkDispPaintLegend = Named(new QCheckBox(u"凡例の描画(&L)"_s), u"chkDispPaintLegend"_s);
    chkDispOrgMesh = Named(new QCheckBox(u"変位前のメッシュの描画(&M)"_s), u"chkDispOrgMesh"_s);
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->addWidget(scaleFrame(u"変位スケール"_s, {u"なし"_s, u"１．０基準"_s, u"最大値基準"_s, u"実際の値"_s},
                                 cmbDispScale, txtDispScale));
    layout->addWidget(chkDispPaintLegend);
    layout->addWidget(chkDispOrgMesh);
    layout->addStretch();
    return tab;
}

QWidget* frmDrawSettings::buildVectorTab() {
    cmbVectorScale = Named(new QComboBox, u"cmbVectorScale"_s);
    txtVectorScale = Named(new QLineEdit, u"txtVectorScale"_s);
    chkVectorPaintLegend = Named(new QCheckBox(u"凡例の描画(&L)"_s), u"chkVectorPaintLegend"_s);
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->addWidget(scaleFrame(u"ベクトルスケール"_s, {u"なし"_s, u"１．０基準"_s, u"最大値基準"_s}, cmbVectorScale,
                                 txtVectorScale));
    layout->addWidget(chkVectorPaintLegend);
    layout->addWidget(buildItemSetFrame(), 1);
    return tab;
}

QWidget* frmDrawSettings::buildItemSetFrame() {
    lstVectorItem = Named(new QListWidget, u"lstVectorItem"_s);
    lstVectorItem->setUniformItemSizes(true);
    // As high as the boxes beside it.
    lstVectorItem->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    lstVectorItem->setMinimumWidth(fontMetrics().averageCharWidth() * listCharacters);
    lstVectorItem->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    txtVectorItem = Named(new QLineEdit, u"txtVectorItem"_s);
    for (int i = 0; i < 2; ++i)
        cmbVectorItem[i] = Named(itemCombo(), u"cmbVectorItem"_s, i);
    cmdVectorEdit = {Named(new QPushButton(u"追加(&A)"_s), u"cmdVectorEdit"_s, 0),
                     Named(new QPushButton(u"削除(&R)"_s), u"cmdVectorEdit"_s, 1)};

    auto* frame = new QGroupBox(u"アイテム"_s);
    auto* listCaption = FormSupport::Caption(u"アイテムセット(&I):"_s, lstVectorItem);
    auto* details = new QGridLayout;
    FormSupport::AddRow(*details, 0, u"名称(&N):"_s, txtVectorItem);
    FormSupport::AddRow(*details, 1, u"X成分アイテム(&X):"_s, cmbVectorItem[0]);
    FormSupport::AddRow(*details, 2, u"Y成分アイテム(&Y):"_s, cmbVectorItem[1]);
    details->setColumnStretch(1, 1);
    auto* edit = new QHBoxLayout;
    edit->addStretch();
    edit->addWidget(cmdVectorEdit[0]);
    edit->addWidget(cmdVectorEdit[1]);
    details->setRowStretch(3, 1);
    details->addLayout(edit, 4, 0, 1, 2);

    auto* grid = new QGridLayout(frame);
    grid->addWidget(listCaption, 0, 0);
    grid->addWidget(lstVectorItem, 1, 0);
    grid->addLayout(details, 1, 1);
    grid->setColumnStretch(0, 2);
    grid->setColumnStretch(1, 3);
    return frame;
}

QWidget* frmDrawSettings::buildContourTab() {
    const std::array<QString, 6> captions{u"黒 -> 白(&1)"_s,       u"黒 -> 赤 -> 白(&2)"_s, u"黒 -> 緑 -> 白(&3)"_s,
                                          u"黒 -> 青 -> 白(&4)"_s, u"規定値(&5)"_s,         u"ユーザー定義(&6)"_s};
    auto* tab = new QWidget;
    auto* grid = new QGridLayout(tab);
    auto* options = new QVBoxLayout;
    for (int i = 0; i < int(captions.size()); ++i) {
        optContourColor[i] = Named(new QRadioButton(captions[i]), u"optContourColor"_s, i);
        options->addWidget(optContourColor[i]);
    }
    grid->addLayout(options, 0, 0, Qt::AlignTop);
    grid->addWidget(buildUserColors(), 0, 1, Qt::AlignTop);

    picContourPreview = Named(new PictureBox, u"picContourPreview"_s);
    picContourPreview->setFocusPolicy(Qt::NoFocus);
    picContourPreview->setFixedHeight(fontMetrics().height() * 2);
    auto* previewCaption = new QLabel(u"プレビュー:"_s);
    picContourPreview->setAccessibleName(u"プレビュー"_s);
    chkContourColorReverse = Named(new QCheckBox(u"最大値・最小値色の反転(&R)"_s), u"chkContourColorReverse"_s);
    chkContourPaintLegend = Named(new QCheckBox(u"凡例の描画(&L)"_s), u"chkContourPaintLegend"_s);
    grid->addWidget(previewCaption, 1, 0, 1, 2);
    grid->addWidget(picContourPreview, 2, 0, 1, 2);
    grid->addWidget(chkContourColorReverse, 3, 0, 1, 2);
    chkContourLegendName = Named(new QCheckBox(u"凡例にアイテム名を付ける(&I)"_s), u"chkContourLegendName"_s);
    chkContourLegendRange = Named(new QCheckBox(u"凡例に範囲の取り方を付ける(&G)"_s), u"chkContourLegendRange"_s);
    auto* legend = new QHBoxLayout;
    for (QCheckBox* box : {chkContourPaintLegend, chkContourLegendName, chkContourLegendRange})
        legend->addWidget(box);
    legend->addStretch();
    grid->addLayout(legend, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 4);
    grid->setRowStretch(5, 1);
    return tab;
}

QWidget* frmDrawSettings::buildUserColors() {
    const std::array<QString, 3> captions{u"最小値(&N)..."_s, u"中間値(&M)..."_s, u"最大値(&X)..."_s};
    auto* frame = new QGroupBox(u"ユーザ設定色"_s);
    auto* layout = new QVBoxLayout(frame);
    for (int i = 0; i < int(captions.size()); ++i) {
        cmdContourColor[i] = Named(new ColorButton(captions[i]), u"cmdContourColor"_s, i);
        layout->addWidget(cmdContourColor[i]);
    }
    cmbContourPreset = Named(new QComboBox, u"cmbContourPreset"_s);
    cmbContourPreset->addItems({u"なし（上の３色）"_s, u"viridis"_s, u"cividis"_s, u"青・灰・赤（０が中央）"_s});
    auto* caption = FormSupport::Caption(u"プリセット(&P):"_s, cmbContourPreset);
    layout->addWidget(caption);
    layout->addWidget(cmbContourPreset);
    return frame;
}

void frmDrawSettings::bindControls() {
    using FormSupport::Bind;
    using S = ApplicationSettings;
    rows = {Bind(cmbDispScale, &S::Displacement, &DisplacementSettings::Fiducial),
            Bind(lengthEdit(txtDispScale), &S::Displacement, &DisplacementSettings::Scale),
            Bind(chkDispPaintLegend, &S::Displacement, &DisplacementSettings::Legend),
            Bind(chkDispOrgMesh, &S::Displacement, &DisplacementSettings::Original),
            Bind(cmbVectorScale, &S::Vector, &VectorSettings::Fiducial),
            Bind(lengthEdit(txtVectorScale), &S::Vector, &VectorSettings::Scale),
            Bind(chkVectorPaintLegend, &S::Vector, &VectorSettings::Legend),
            Bind(FormSupport::OptionGroup{optContourColor}, &S::Contour, &ContourSettings::ColorIndex),
            Bind(cmbContourPreset, &S::Contour, &ContourSettings::Preset),
            Bind(chkContourPaintLegend, &S::Contour, &ContourSettings::Legend),
            Bind(chkContourLegendName, &S::Contour, &ContourSettings::LegendName),
            Bind(chkContourLegendRange, &S::Contour, &ContourSettings::LegendRange),
            Bind(chkContourColorReverse, &S::Contour, &ContourSettings::Reverse)};
    for (int i = 0; i < int(cmdContourColor.size()); ++i)
        rows.push_back(Bind(cmdContourColor[i], &S::Contour, &ContourSettings::Colors, i));
}

void frmDrawSettings::connectControls() {
    connect(lstVectorItem, &QListWidget::itemSelectionChanged, this, &frmDrawSettings::showItemSet);
    connect(cmbVectorItem[0], &QComboBox::currentIndexChanged, this, &frmDrawSettings::onHorzSelected);
    connect(cmbVectorItem[1], &QComboBox::currentIndexChanged, this, &frmDrawSettings::onVertSelected);
    connect(txtVectorItem, &QLineEdit::textChanged, this, &frmDrawSettings::onNameChanged);
    connect(cmdVectorEdit[0], &QPushButton::clicked, this, &frmDrawSettings::addItemSet);
    connect(cmdVectorEdit[1], &QPushButton::clicked, this, &frmDrawSettings::removeItemSet);
    for (QRadioButton* option : optContourColor)
        connect(option, &QRadioButton::toggled, this, &frmDrawSettings::drawContourPreview);
    connect(cmbContourPreset, &QComboBox::currentIndexChanged, this, &frmDrawSettings::showPreset);
    // Who chooses a preset wants to see it.
    connect(cmbContourPreset, &QComboBox::activated, optContourColor[5], &QRadioButton::click);
    connect(chkContourColorReverse, &QCheckBox::toggled, this, &frmDrawSettings::drawContourPreview);
    connect(picContourPreview, &PictureBox::Resized, this, &frmDrawSettings::drawContourPreview);
    for (ColorButton* button : cmdContourColor)
        connect(button, &ColorButton::ColorChosen, this, &frmDrawSettings::drawContourPreview);
    connect(Command1[0], &QPushButton::clicked, this, &frmDrawSettings::apply);
    connect(Command1[1], &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdSetDefault, &QPushButton::clicked, this, &frmDrawSettings::setDefault);
}
