// Numbers out of text: each the nearest, and long runs of them in stretches as one after the other.
#include "TestFolder.h"

#include "result/readers/TextNumbers.h"

#include <bit>
#include <random>

namespace {

class TextNumbersTest : public testing::Test {
protected:
    std::uint64_t upTo(std::uint64_t most) { return random() % (most + 1); }

    /// A number as one program or another might spell it.
    QByteArray spelled() {
        const double any = std::ldexp(double(random()), -int(upTo(140)));
        switch (upTo(6)) {
        case 0:
            return QByteArray::number(std::bit_cast<double>(random()), 'g', int(upTo(20)) + 1);
        case 1:
            return QByteArray::number(quint64(random() >> upTo(63))) + 'e' + QByteArray::number(int(upTo(60)) - 30);
        case 2: // in the middle between two
            return QByteArray::number(quint64(((1ULL << 52 | random() >> 12) << 1) + 1)) + ".00";
        case 3:
            return '-' + QByteArray::number(any, 'e', int(upTo(18)));
        case 4:
            return '+' + QByteArray::number(qint64(upTo(9999))) + '.' + QByteArray::number(quint64(upTo(~0ULL >> 5)));
        case 5:
            return QByteArray::number(any, 'E', 5).replace('E', upTo(1) ? 'D' : 'E');
        default:
            return QByteArray::number(qint64(random() >> upTo(63)));
        }
    }
    static double plain(QByteArray word) { return std::strtod(word.replace('D', 'E').constData(), nullptr); }

    ReadHandle written(const QByteArray& bytes) { return ReadHandle::Open(folder.Write(bytes, u"numbers"_s)); }

    TestFolder folder;
    std::mt19937_64 random{5};
};

TEST_F(TextNumbersTest, EachIsTheNearest) {
    for (int i = 0; i < 300000; ++i) {
        const QByteArray word = spelled();
        double value = 0;
        ASSERT_TRUE(RealOf(std::string_view(word), value)) << word.data();
        const double expected = plain(word);
        ASSERT_TRUE(std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(expected) ||
                    std::isnan(expected))
            << word.data();
    }
    double value = 0;
    for (const char* const word : {"", "-", "1.2.3", "0x1", "12e", "1e+", ".", " 1", "1-", "12345678a"})
        EXPECT_FALSE(RealOf(word, value)) << word;
}

TEST_F(TextNumbersTest, WholeOnesStayWhole) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    WordNumbers<std::int64_t> wide;
    wide.Parse("7 -12 +3 4.0 1e3 9223372036854775807 -9007199254740993 1.5 8", false);
    EXPECT_TRUE(
        std::ranges::equal(wide.All(), std::array<std::int64_t, 7>{7, -12, 3, 4, 1000, most, -9007199254740993}));
    EXPECT_FALSE(wide.IsWhole());
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    WordNumbers<std::int32_t> narrow;
    narrow.Parse("2147483647 2147483648 -5 99999999999999999999\n", false);
    EXPECT_TRUE(std::ranges::equal(narrow.All(), std::array{2147483647, least, -5, least}));
    EXPECT_TRUE(narrow.IsWhole());
}

TEST_F(TextNumbersTest, StretchesGiveWhatTheScannerGives) {
    const qint64 usual = TextStretches::StretchBytes;
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        TextStretches::StretchBytes = round % 3 > 0 ? 30 + qint64(upTo(5000)) : usual;
        QByteArray text;
        std::vector<double> numbers;
        std::vector<std::size_t> lineEnds; ///< how many stand before each
        const int count = round % 3 > 0 ? 3000 : 120000;
        for (int i = 0; i < count; ++i) {
            const QByteArray word = spelled();
            numbers.push_back(plain(word));
            text += word;
            for (auto blanks = upTo(2) + 1; blanks > 0; --blanks) {
                const QByteArray blank = std::array{" ", "\t", "\n", "\r\n"}[upTo(3)];
                text += blank;
                if (blank.endsWith('\n'))
                    lineEnds.push_back(numbers.size());
            }
        }
        const auto same = [](std::span<const double> got, std::span<const double> expected) {
            return std::ranges::equal(got, expected, [](double a, double b) { return a == b || a != a; });
        };
        const std::size_t some = upTo(numbers.size() - 1);
        const ReadHandle file = written(text + "what else stands there");
        FileScanner in(file);
        std::vector<double> got;
        const auto keep = [&got](std::span<const double> part) { got.insert(got.end(), part.begin(), part.end()); };
        EXPECT_TRUE(TextNumbers<double>(in, 10).Hand(qint64(some), keep));
        double next = 0;
        EXPECT_TRUE(in.Number(next)) << "the scanner stands behind those that were taken";
        got.push_back(next);
        EXPECT_FALSE(TextNumbers<double>(in, count).Hand(count, keep)) << "a word that is no number ends them";
        EXPECT_TRUE(same(got, numbers));
        EXPECT_EQ(in.Word(), "what");

        in.Seek(0);
        EXPECT_TRUE(SkipWords(in, qint64(some)));
        EXPECT_TRUE(in.Number(next));
        EXPECT_TRUE(same(std::array{next}, std::array{numbers[some]}));
        EXPECT_FALSE(SkipWords(in, count + 5));

        in.Seek(0);
        TextNumbers<double> marked(in, 10, TextNumbers<double>::Marked);
        std::size_t taken = 0;
        while (const std::size_t here = std::min<std::size_t>(upTo(4) + 1, numbers.size() - taken)) {
            const double* const row = marked.Row(here);
            ASSERT_TRUE(row && same({row, here}, std::span(numbers).subspan(taken, here))) << taken;
            taken += here;
            if (upTo(1) > 0) {
                marked.SkipLine();
                const auto end = std::ranges::lower_bound(lineEnds, taken);
                taken = end == lineEnds.end() ? numbers.size() : *end;
            }
        }
        EXPECT_EQ(marked.Row(1), nullptr);

        in.Seek(0);
        EXPECT_TRUE(SkipTo(in, 'w'));
        EXPECT_EQ(in.Word(), "what");
        EXPECT_FALSE(SkipTo(in, '?'));
    }
    TextStretches::StretchBytes = usual;
    FileScanner in(written(QByteArray(1 << 20, '7')));
    EXPECT_TRUE(TextNumbers<float>(in, 3).Some(3).empty()) << "a word without an end";
    EXPECT_FALSE(SkipWords(in, 2));
}

} // namespace
