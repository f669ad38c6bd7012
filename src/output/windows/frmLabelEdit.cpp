#include "output/windows/frmLabelEdit.h"

#include "app/mdTipsDrawing.h"
#include "app/windows/ShowMessage.h"
#include "platform/device/Fonts.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

using FormSupport::Named;

namespace {
constexpr int twipsPerPixel = 15;
constexpr int heightWithMacros = 8385 / twipsPerPixel, heightWithout = 4920 / twipsPerPixel;

/// The small sheet is divided into cells as large as an option.
constexpr int columns = 17, rows = 9;
/// The document on it leaves so many free on each side.
constexpr int marginCells = 2;

struct Cell {
    int Column, Row;
};

/// Each six places are the corners and middles of one frame: the sheet's edge, around the document, inside it.
constexpr Cell cellOf(int position) {
    const int frame = position / 6, across = position % 3;
    const bool below = position % 6 >= 3;
    const int indent = frame == 0 ? 0 : marginCells;
    const int column = across == 0 ? indent : across == 1 ? columns / 2 : columns - 1 - indent;
    return {column, below ? rows - 1 - frame : frame};
}
} // namespace

frmLabelEdit::frmLabelEdit(QWidget* parent)
    : QDialog(parent), txtLabel(Named(new QLineEdit, u"txtLabel"_s)), txtFont(Named(new QLineEdit, u"txtFont"_s)),
      cmdFont(FormSupport::BrowseButton(u"cmdFont"_s, u"フォントの選択"_s)),
      picPaper(Named(new PictureBox, u"picPaper"_s)), lblPosition(Named(new QLabel, u"lblPosition"_s)),
      chkMacro(Named(new QCheckBox(u"マクロ一覧"_s), u"chkMacro"_s)),
      txtMacro(Named(new QPlainTextEdit, u"txtMacro"_s)) {
    setObjectName(u"frmLabelEdit"_s);
    setWindowTitle(u"文字列の編集"_s);
    Command1 = {Named(new QPushButton(u"OK"_s), u"Command1"_s, 0),
                Named(new QPushButton(u"キャンセル"_s), u"Command1"_s, 1)};
    Command1[0]->setDefault(true);
    FormSupport::ButtonWidths({Command1[0], Command1[1]});

    txtMacro->setReadOnly(true);
    txtMacro->setTabChangesFocus(true);
    txtMacro->setAccessibleName(u"マクロ一覧"_s);
    txtMacro->setFont(Fonts::ToQFont({.Height = fontMetrics().height(), .Face = u"ＭＳ ゴシック"_s}));
    txtMacro->setPlainText(u"利用可能なマクロ一覧：\r\n"_s +
                           pageLabels::MacroDescriptions(QDate::currentDate()).join(u"\r\n"_s));

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(textRows());
    layout->addWidget(placeFrame());
    layout->addWidget(chkMacro);
    layout->addWidget(txtMacro, 1);
    connect(cmdFont, &QPushButton::clicked, this, &frmLabelEdit::chooseFont);
    connect(chkMacro, &QCheckBox::toggled, this, &frmLabelEdit::showMacros);
    connect(Command1[0], &QPushButton::clicked, this, &frmLabelEdit::apply);
    connect(Command1[1], &QPushButton::clicked, this, &QDialog::reject);
    FormSupport::TabOrder({txtLabel, cmdFont, optPosition[0]});
    for (std::size_t i = 1; i < optPosition.size(); ++i)
        FormSupport::TabOrder({optPosition[i - 1], optPosition[i]});
    FormSupport::TabOrder({optPosition.back(), chkMacro, txtMacro, Command1[0], Command1[1]});
    Position(0);
    showMacros(false);
    FormSupport::PlaceOnScreen(*this, {sizeHint().width(), height()});
}

QLayout* frmLabelEdit::textRows() {
    FormSupport::MakeReadOnly(*txtFont);
    auto* grid = new QGridLayout;
    FormSupport::AddRow(*grid, 0, u"文字列(&T):"_s, txtLabel);
    FormSupport::AddRow(*grid, 1, u"フォント(&F):"_s, txtFont)->setBuddy(cmdFont);
    grid->addWidget(cmdFont, 1, 2);
    grid->addWidget(txtLabel, 0, 1, 1, 2);
    grid->setColumnMinimumWidth(3, fontMetrics().averageCharWidth() * 2);
    grid->addWidget(Command1[0], 0, 4);
    grid->addWidget(Command1[1], 1, 4);
    grid->setColumnStretch(1, 1);
    constexpr int characters = 40, longestText = 10000000;
    txtLabel->setMaxLength(longestText);
    txtLabel->setMinimumWidth(fontMetrics().averageCharWidth() * characters);
    return grid;
}

QWidget* frmLabelEdit::placeFrame() {
    auto* frame = new QGroupBox(u"位置"_s);
    auto* layout = new QHBoxLayout(frame);
    auto* group = new QButtonGroup(this);
    const int mark = std::max(style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth),
                              style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight));
    constexpr int air = 4;
    cell = mark + air;
    picPaper->setFixedSize(columns * cell, rows * cell);
    picPaper->setFocusPolicy(Qt::NoFocus);
    for (int i = 0; i < int(optPosition.size()); ++i) {
        auto* option = optPosition[i] = Named(new QRadioButton(picPaper), u"optPosition"_s, i);
        option->setAccessibleName(pageLabels::PositionName(i));
        option->setToolTip(pageLabels::PositionName(i));
        option->setGeometry(cellOf(i).Column * cell + air / 2, cellOf(i).Row * cell + air / 2, mark, mark);
        group->addButton(option, i);
    }
    layout->addWidget(picPaper);
    layout->addWidget(lblPosition);
    layout->addStretch();
    connect(picPaper, &PictureBox::Resized, this, &frmLabelEdit::paintPaper);
    connect(group, &QButtonGroup::idToggled, this, [this](int place, bool on) {
        if (on)
            lblPosition->setText(pageLabels::PositionName(place));
    });
    return frame;
}

void frmLabelEdit::paintPaper() {
    QImage& sheet = picPaper->BlankSheet();
    RasterDevice device(sheet, picPaper->DotsPerInch());
    mdTips::SelectSolidPen(device, 0, 1, PenStyle::Solid);
    device.Rectangle({0, 0, sheet.width(), sheet.height()});
    mdTips::SelectSolidPen(device, 0, 1, PenStyle::Dot);
    const double perCell = double(sheet.width()) / columns;
    const int left = Round(marginCells * perCell), top = left;
    const int right = sheet.width() - left - 1, bottom = sheet.height() - top - 1;
    const DevicePoint corners[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}, {left, top}};
    device.Polyline(corners);
    picPaper->ShowSheet();
}

void frmLabelEdit::FontString(const QString& text) {
    fontString = text;
    txtFont->setText(text);
}

QString frmLabelEdit::LabelString() const {
    return txtLabel->text();
}

void frmLabelEdit::LabelString(const QString& text) {
    txtLabel->setText(text);
}

int frmLabelEdit::Position() const {
    int place = 0;
    FormSupport::Take(FormSupport::OptionGroup{optPosition}, place);
    return place;
}

void frmLabelEdit::Position(int index) {
    const bool known = index >= 0 && index < int(optPosition.size());
    FormSupport::Put(FormSupport::OptionGroup{optPosition}, known ? index : 0);
}

void frmLabelEdit::showMacros(bool shown) {
    txtMacro->setVisible(shown);
    layout()->activate();
    setFixedHeight(std::max(shown ? heightWithMacros : heightWithout, minimumSizeHint().height()));
}

void frmLabelEdit::chooseFont() {
    ColorRef color = 0;
    const FontObject font = mdTips::ParseFontString(fontString, color);
    const auto chosen = Dialogs::ChooseFont(
        this, u"フォント"_s, {font.Name, font.Size, font.Bold, font.Italic, font.Underline, font.StrikeThrough, color});
    if (chosen)
        FontString(mdTips::MakeFontString(
            {chosen->Family, chosen->Points, chosen->Bold, chosen->Italic, chosen->Underline, chosen->StrikeOut},
            chosen->Color));
}

void frmLabelEdit::apply() {
    if (txtLabel->text().isEmpty()) {
        mdApplication::ShowMessage(u"文字列を設定してください。"_s, MessageStyle::Information);
        txtLabel->setFocus();
        return;
    }
    Result = true;
    accept();
}
