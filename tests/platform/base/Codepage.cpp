#include "platform/base/Codepage.h"

#include <gtest/gtest.h>

TEST(Codepage, EveryCodeThatDecodesComesBackOrHasATwin) {
    int decodable = 0;
    for (int code = 0; code < 0x10000; ++code) {
        QByteArray bytes;
        if (code > 0xff)
            bytes += char(code >> 8);
        bytes += char(code & 0xff);
        const QString text = Codepage::Decode(bytes);
        if (text.size() != 1 || text[0] == QChar::ReplacementCharacter)
            continue;
        ++decodable;
        EXPECT_EQ(Codepage::Decode(Codepage::Encode(text)), text) << code;
    }
    // ASCII, half-width kana, characters of two bytes, and the user-defined area.
    EXPECT_EQ(decodable, 128 + 63 + 7724 + 1880);
}

TEST(Codepage, BadBytesAndUnknownCharactersTakeNoGoodOnesAlong) {
    const std::pair<QByteArray, QString> both[] = {{"Plain ~\\ text\x7f\n", u"Plain ~\\ text\x7f\n"_s},
                                                   {"\x81\x60\x81\x7c\x81\x61\x81\xca", u"～－∥￢"_s},
                                                   {"\x87\x40\x87\x8a\xfb\xfc\xfa\x43", u"①㈱髙ⅳ"_s},
                                                   {"\xb1\xb2\xdf\x95\x5c\x8e\xa6", u"ｱｲﾟ表示"_s}};
    for (const auto& [bytes, text] : both)
        EXPECT_TRUE(Codepage::Encode(text) == bytes && Codepage::Decode(bytes) == text) << text.toStdString();
    const std::pair<QByteArray, QString> bad[] = {{"ab\x83", u"ab\ufffd"_s},
                                                  {"\x81\x30\x78", u"\ufffd0x"_s},
                                                  {"\x85\x41\x78", u"\ufffdAx"_s},
                                                  {QByteArray("\x83\0y", 3), QString(u"\ufffd"_s + QChar(0) + u"y"_s)},
                                                  {"\x85\xf0z", u"\ufffdz"_s},
                                                  {"\x80\xa0\xfd\xfe\xff!", u"\ufffd\ufffd\ufffd\ufffd\ufffd!"_s},
                                                  {"\x81\xff\xb1", u"\ufffd\ufffdｱ"_s},
                                                  {"\x95\x5c\x83\n\x95\x5c", u"表\ufffd\n表"_s}};
    for (const auto& [bytes, text] : bad)
        EXPECT_EQ(Codepage::Decode(bytes), text) << bytes.toHex().toStdString();
    const char16_t lone[] = {0xd83d, u'x', 0xde00, u'位', 0xd83d};
    EXPECT_EQ(Codepage::Encode(QStringView(lone, 5)), "?x?\x88\xca?");
    EXPECT_EQ(Codepage::Encode(u"a\u00e9b한c😀"_s), "a?b?c?");
    EXPECT_EQ(Codepage::ByteLength(u"😀位ｱ"_s), 4);
}
