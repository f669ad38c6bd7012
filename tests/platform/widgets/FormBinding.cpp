#include "platform/widgets/FormBinding.h"

#include <QLineEdit>
#include <QRadioButton>
#include <gtest/gtest.h>

// That every kind of control carries its field is proved with the dialogs.

TEST(FormBinding, NumbersAreHeldAndOptionsThatAreNotThereLeaveTheOneBefore) {
    struct Record {
        int Number = 0, Choice = 0;
    } record;
    QWidget form;
    std::array options{new QRadioButton(&form), new QRadioButton(&form)};
    auto* number = new QLineEdit(&form);
    using namespace FormSupport;
    const Edit<int> edit{number, [](int value) { return QString::number(value); },
                         [](const QString& text) {
                             bool good = false;
                             const int value = text.toInt(&good);
                             return good ? std::optional(value) : std::nullopt;
                         },
                         -5, 5};
    const Rows<Record> rows{Bind(edit, &Record::Number), Bind(OptionGroup{options}, &Record::Choice)};
    for (const auto& [text, choice, value] : {std::tuple(u"99"_s, 1, 5), {u"-99"_s, 7, -5}, {u"word"_s, -1, -5}}) {
        rows.Fill({0, choice});
        number->setText(text);
        rows.Read(record);
        EXPECT_EQ(record.Number, value);
        EXPECT_EQ(record.Choice, 1);
        EXPECT_EQ(options[0]->focusPolicy(), Qt::ClickFocus) << "Tab comes to the chosen one";
    }
}

TEST(ColorButton, CaptionStandsOutFromTheGround) {
    for (const auto& [dark, light] : {std::pair(0xff0000, 0x00ff00), {0x707070, 0x808080}, {0x006000, 0x00ffff}})
        EXPECT_EQ(ColorButton::CaptionColor(dark) - ColorButton::CaptionColor(light), 0xffffffu) << dark;
}
