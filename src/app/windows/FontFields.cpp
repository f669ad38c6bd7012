#include "app/windows/FontFields.h"

#include "app/NumberFormat.h"
#include "app/mdTipsDrawing.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/FormSupport.h"
#include "platform/widgets/PictureBox.h"

#include <QCheckBox>
#include <QComboBox>

using FormSupport::Named;

namespace {

/// In the order of their boxes.
constexpr bool FontObject::*fontStyles[] = {&FontObject::Bold, &FontObject::Italic, &FontObject::Underline,
                                            &FontObject::StrikeThrough};

} // namespace

FontFields::FontFields()
    : Size(Named(new QComboBox, u"cmbFontSize"_s)),
      Sample(SampleBox(u"picFont"_s, QObject::tr("フォントのサンプル"), 4)) {
    Size->setEditable(true);
    Size->setCompleter(nullptr);
    Size->setInsertPolicy(QComboBox::NoInsert);
    for (const int size : {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72})
        Size->addItem(QString::number(size));
    const std::array<QString, 4> captions{QObject::tr("太字(&B)"), QObject::tr("斜体(&I)"), QObject::tr("下線(&U)"),
                                          QObject::tr("取り消し線(&T)")};
    for (int i = 0; i < int(Styles.size()); ++i)
        Styles[i] = Named(new QCheckBox(captions[i]), u"chkFont"_s, i);
}

void FontFields::Show(const FontObject& font) const {
    Size->setEditText(NumberFormat::Shortest(font.Size));
    for (std::size_t i = 0; i < Styles.size(); ++i)
        Styles[i]->setChecked(font.*fontStyles[i]);
}

QString FontFields::Edited(const QString& fontString, const QString& face) const {
    ColorRef color = 0;
    FontObject font = mdTips::ParseFontString(fontString, color);
    font.Name = face;
    font.Size = mdTips::Val(Size->currentText());
    for (std::size_t i = 0; i < Styles.size(); ++i)
        font.*fontStyles[i] = Styles[i]->isChecked();
    return mdTips::MakeFontString(font, color);
}

void FontFields::DrawSample(const QString& fontString) const {
    RasterDevice device(Sample->BlankSheet(), Sample->DotsPerInch());
    const DeviceSize size = Sample->PixelSize();
    ColorRef color = 0;
    const FontObject font = mdTips::ParseFontString(fontString, color);
    constexpr int middle = 5;
    const Font old = mdTips::SelectFontFor(device, device, font, 0);
    mdTips::DrawAnchoredText(device, size.Width / 2, size.Height / 2, u"AaBbあア亜"_s, middle);
    mdTips::RestoreObject(device, old);
    Sample->ShowSheet();
}

void FontFields::OnChange(QObject* receiver, const std::function<void()>& changed) const {
    QObject::connect(Size, &QComboBox::currentTextChanged, receiver, changed);
    for (QCheckBox* box : Styles)
        QObject::connect(box, &QCheckBox::toggled, receiver, changed);
}
