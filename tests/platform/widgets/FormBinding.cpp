#include "RoundTrip.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

namespace {

struct Inner {
    std::array<ColorRef, 2> Colors{};
    int Number = 0;
    bool operator==(const Inner&) const = default;
};

struct Record {
    bool Flag = false;
    QString Text;
    int Line = 0, Choice = 0;
    Inner Deep;
    bool operator==(const Record&) const = default;
};

TEST(FormBinding, EveryKindOfControlCarriesItsField) {
    QWidget form;
    std::array<QRadioButton*, 3> options{new QRadioButton(&form), new QRadioButton(&form), new QRadioButton(&form)};
    auto* number = new QLineEdit(&form);
    auto* combo = new QComboBox(&form);
    combo->addItems({u"a"_s, u"b"_s});
    using namespace FormSupport;
    const Edit<int> edit{number, [](int value) { return QString::number(value); },
                         [](const QString& text) {
                             bool good = false;
                             const int value = text.toInt(&good);
                             return good ? std::optional(value) : std::nullopt;
                         },
                         -5, 5};
    const Rows<Record> rows{Bind(new QCheckBox(&form), &Record::Flag),
                            Bind(new QLineEdit(&form), &Record::Text),
                            Bind(LineNumber{combo, 1}, &Record::Line),
                            Bind(OptionGroup{options}, &Record::Choice),
                            Bind(new ColorButton({}, &form), &Record::Deep, &Inner::Colors, 1),
                            Bind(edit, &Record::Deep, &Inner::Number)};
    Record record{true, u"text"_s, 1, 2, {{0, 0x123456}, 5}};
    expectRoundTrip(rows, record, {false, u""_s, 2, 0, {{0, 1}, -5}});
    EXPECT_EQ(options[0]->focusPolicy() == Qt::StrongFocus, options[0]->isChecked());
    for (const auto& [text, value] : {std::pair(u"99"_s, 5), {u"-99"_s, -5}, {u"word"_s, -5}}) {
        number->setText(text);
        rows.Read(record);
        EXPECT_EQ(record.Deep.Number, value);
    }
    rows[3].Fill({false, {}, 0, 7, {}});
    rows.Read(record);
    EXPECT_EQ(record.Choice, 0) << "no such option: the one before stays";
}

TEST(ColorButton, CaptionStandsOutFromTheGround) {
    for (const ColorRef dark : {0x000000, 0xff0000, 0x707070, 0x006000})
        EXPECT_EQ(ColorButton::CaptionColor(dark), 0xffffffu) << dark;
    for (const ColorRef light : {0xffffff, 0x00ff00, 0x00ffff, 0x808080})
        EXPECT_EQ(ColorButton::CaptionColor(light), 0u) << light;
}

} // namespace
