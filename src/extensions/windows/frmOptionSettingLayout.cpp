// Layout of frmOptionSetting: its controls, what they offer and what they are connected to.
#include "app/NumberFormat.h"
#include "app/clsHashTable.h"
#include "app/mdTipsDrawing.h"
#include "extensions/windows/ctlToolTable.h"
#include "extensions/windows/frmOptionSetting.h"
#include "platform/device/Fonts.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QTabWidget>
#include <QVBoxLayout>

using FormSupport::AddRow;
using FormSupport::Bind;
using FormSupport::Named;

namespace {

constexpr int lineTypes = 5;

/// At least one tenth, in tenths of a millimetre.
int lineWidth(const QString& text) {
    return Round(std::max(mdTips::Val(text), 0.1) * 10);
}

/// The faces and their kinds, as they were when they were first asked for.
const clsHashTable& fontFaces() {
    static const clsHashTable table = [] {
        clsHashTable collected;
        for (const QString& face : Fonts::Faces())
            collected.Add(face, int(Fonts::KindOf(face)));
        return collected;
    }();
    return table;
}

} // namespace

void frmOptionSetting::buildControls() {
    SSTab1 = Named(new QTabWidget, u"SSTab1"_s);
    toolPage = new ctlToolTable;
    SSTab1->addTab(buildGeneralTab(), u"全般"_s);
    SSTab1->addTab(buildLineTab(), u"ライン"_s);
    SSTab1->addTab(buildFontTab(), u"フォント"_s);
    SSTab1->addTab(toolPage, u"ツール"_s);
    Command1 = {Named(new QPushButton(u"OK"_s), u"Command1"_s, 0),
                Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1)};
    Command1[0]->setDefault(true);
    FormSupport::ButtonWidths({Command1[0], Command1[1]});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1);
    layout->addLayout(FormSupport::ButtonRow({}, {Command1[0], Command1[1]}));
}

QWidget* frmOptionSetting::buildGeneralTab() {
    const std::array<QString, 4> captions{u"起動時に前回終了時のウィンドウの位置とサイズを復元する。(&W)"_s,
                                          u"起動時に最後に読み込んだファイルを自動的に開く。(&F)"_s,
                                          u"起動時にアドインモジュールのインストールを実行する。(&A)"_s,
                                          u"レイアウトファイルを自動的に保存する。(&L)"_s};
    auto* tab = new QWidget;
    auto* grid = new QGridLayout(tab);
    int row = 0;
    for (int i = 0; i < int(Check1.size()); ++i) {
        Check1[i] = Named(new QCheckBox(captions[i]), u"Check1"_s, i);
        grid->addWidget(Check1[i], row++, 0, 1, 3);
    }
    rows = {Bind(Check1[0], &WindowSettings::RestoreWindowStatus), Bind(Check1[1], &WindowSettings::RestoreLastFile),
            Bind(Check1[2], &WindowSettings::AutoInstall), Bind(Check1[3], &WindowSettings::AutoSave)};
    txtHelpDir = Named(new QLineEdit, u"txtHelpDir"_s);
    FormSupport::SelectAllOnFocus(*txtHelpDir);
    cmdHelpDir = FormSupport::BrowseButton(u"cmdHelpDir"_s, u"ヘルプディレクトリの選択"_s);
    AddRow(*grid, row, u"ヘルプディレクトリ(&H):"_s, txtHelpDir);
    grid->addWidget(cmdHelpDir, row++, 2);
    cmbRealFormat = Named(new QComboBox, u"cmbRealFormat"_s);
    cmbRealFormat->setEditable(true);
    cmbRealFormat->setCompleter(nullptr);
    cmbRealFormat->addItems({u"0.0"_s, u"0.000"_s, u"0.0##"_s, u"0.00000"_s, u"0.000##"_s, u"0.000E-0"_s, u"0.0##E-0"_s,
                             u"0.00000E-0"_s, u"0.000##E-0"_s});
    AddRow(*grid, row++, u"実数フォーマット(&R):"_s, cmbRealFormat);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(row, 1);
    return tab;
}

QWidget* frmOptionSetting::buildLineTab() {
    cmbLine = Named(new QComboBox, u"cmbLine"_s);
    cmbLine->addItems({u"変位メッシュ"_s, u"変位前のメッシュ"_s, u"ベクトル"_s, u"線要素"_s});
    cmbLineType = Named(new QComboBox, u"cmbLineType"_s);
    listLineTypes();
    txtLineSize = Named(new QLineEdit, u"txtLineSize"_s);
    FormSupport::SelectAllOnFocus(*txtLineSize);
    FormSupport::ReformatOnLeaving(
        *txtLineSize, [](const QString& text) { return NumberFormat::Format(lineWidth(text) * 0.1, u"0.0"); });
    // The button beside it is for the keyboard.
    picLineColor = Named(new ColorButton({}), u"picLineColor"_s);
    picLineColor->setAccessibleName(u"ラインの色"_s);
    picLineColor->setFocusPolicy(Qt::NoFocus);
    cmdLineColor = FormSupport::BrowseButton(u"cmdLineColor"_s, u"ラインの色の選択"_s);
    picLine = SampleBox(u"picLine"_s, u"ラインのサンプル"_s, 3);
    auto* tab = new QWidget;
    auto* grid = new QGridLayout(tab);
    AddRow(*grid, 0, u"ライン(&L):"_s, cmbLine);
    AddRow(*grid, 1, u"種類(&T):"_s, cmbLineType);
    AddRow(*grid, 2, u"サイズ(&S):"_s, txtLineSize);
    grid->addWidget(new QLabel(u"mm"_s), 2, 2);
    AddRow(*grid, 3, u"色(&C):"_s, picLineColor)->setBuddy(cmdLineColor);
    grid->addWidget(cmdLineColor, 3, 2);
    grid->addWidget(new QLabel(u"サンプル:"_s), 4, 0, Qt::AlignTop);
    grid->addWidget(picLine, 4, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(5, 1);
    return tab;
}

/// The lines themselves, without words for the eye; assistive tools read theirs.
void frmOptionSetting::listLineTypes() {
    const std::array<QString, lineTypes> names{u"実線"_s, u"破線"_s, u"点線"_s, u"一点鎖線"_s, u"二点鎖線"_s};
    constexpr int width = 96, height = 16, penWidth = 3;
    const qreal scale = devicePixelRatioF();
    for (int type = 0; type < lineTypes; ++type) {
        QImage picture(QSize(width, height) * scale, QImage::Format_RGB32);
        picture.fill(Qt::white);
        RasterDevice device(picture, Round(96 * scale));
        const Pen old = mdTips::SelectGeometricPen(device, type, Round(penWidth * scale), 0);
        device.MoveTo({0, picture.height() / 2});
        device.LineTo({picture.width(), picture.height() / 2});
        mdTips::RestoreObject(device, old);
        picture.setDevicePixelRatio(scale);
        cmbLineType->addItem(QIcon(QPixmap::fromImage(picture)), QString());
        cmbLineType->setItemData(type, names[std::size_t(type)], Qt::AccessibleTextRole);
        cmbLineType->setItemData(type, names[std::size_t(type)], Qt::ToolTipRole);
    }
    cmbLineType->setIconSize({width, height});
}

QWidget* frmOptionSetting::buildFontTab() {
    cmbFont = Named(new QComboBox, u"cmbFont"_s);
    cmbFont->addItems({u"変位凡例"_s, u"ベクトル凡例"_s, u"コンタ凡例"_s, u"数値"_s});
    cmbFontFace = Named(new QComboBox, u"cmbFontFace"_s);
    cmbFontFace->setEditable(true);
    cmbFontFace->setInsertPolicy(QComboBox::NoInsert);
    listFontFaces();
    cmbFontFace->completer()->setCompletionMode(QCompleter::InlineCompletion);
    cmbFontFace->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* checks = new QHBoxLayout;
    for (QCheckBox* box : fontFields.Styles)
        checks->addWidget(box);
    checks->addStretch();
    auto* tab = new QWidget;
    auto* grid = new QGridLayout(tab);
    AddRow(*grid, 0, u"対象(&O):"_s, cmbFont);
    AddRow(*grid, 1, u"フォント名(&F):"_s, cmbFontFace);
    AddRow(*grid, 2, u"サイズ(&S):"_s, fontFields.Size);
    grid->addLayout(checks, 3, 1);
    grid->addWidget(new QLabel(u"サンプル:"_s), 4, 0, Qt::AlignTop);
    grid->addWidget(fontFields.Sample, 4, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(5, 1);
    return tab;
}

/// Each face with a picture of its kind; in words for assistive tools and the mouse.
void frmOptionSetting::listFontFaces() {
    struct Kind {
        QIcon Picture;
        QString Name;
    };
    const std::array<Kind, 3> kinds{
        {{FormSupport::RowIcon(u":/icons/fontOutline.svg"_s), tr("アウトラインフォント")},
         {FormSupport::RowIcon(u":/icons/fontBitmap.svg"_s), tr("ビットマップフォント")},
         {FormSupport::RowIcon(u":/icons/fontStandIn.svg"_s), tr("代わりのフォントで表示")}}};
    const clsHashTable& faces = fontFaces();
    for (int i = 0; i < faces.Count(); ++i) {
        QString face;
        QVariant kind;
        faces.GetItem(i, face, kind);
        const Kind& shown = kinds[std::size_t(kind.toInt())];
        cmbFontFace->addItem(shown.Picture, face);
        cmbFontFace->setItemData(i, shown.Name, Qt::AccessibleDescriptionRole);
        cmbFontFace->setItemData(i, shown.Name, Qt::ToolTipRole);
    }
}

void frmOptionSetting::connectControls() {
    connect(cmdHelpDir, &QPushButton::clicked, this, &frmOptionSetting::chooseHelpFolder);
    connect(cmbLine, &QComboBox::currentIndexChanged, this, &frmOptionSetting::showLine);
    connect(cmbLineType, &QComboBox::currentIndexChanged, this, [this](int type) {
        if (Updating)
            return;
        line().Style = type;
        drawLineSample();
    });
    connect(txtLineSize, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (Updating)
            return;
        line().Width = lineWidth(text);
        drawLineSample();
    });
    connect(cmdLineColor, &QPushButton::clicked, picLineColor, &QPushButton::click);
    connect(picLineColor, &ColorButton::ColorChosen, this, [this] {
        line().Color = picLineColor->Color();
        drawLineSample();
    });
    connect(cmbFont, &QComboBox::currentIndexChanged, this, &frmOptionSetting::showFont);
    cmbFontFace->installEventFilter(this);
    connect(cmbFontFace, &QComboBox::currentTextChanged, this, &frmOptionSetting::readFont);
    fontFields.OnChange(this, [this] { readFont(); });
    connect(picLine, &PictureBox::Resized, this, &frmOptionSetting::drawLineSample);
    connect(fontFields.Sample, &PictureBox::Resized, this, &frmOptionSetting::drawFontSample);
    connect(Command1[0], &QPushButton::clicked, this, [this] {
        apply();
        Result = true;
        accept();
    });
    connect(Command1[1], &QPushButton::clicked, this, &QDialog::reject);
}
