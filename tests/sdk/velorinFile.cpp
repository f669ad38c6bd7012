// The file reader of the SDK beside the program's own, on files that are whole, bent and cut off.
#include "Picture.h"
#include "result/VrfBuilder.h"

#include "result/readers/VrfReader.h"
#include <velorin_file.h>

#include <bit>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// By their bits, so that zeros' signs and NaN count too; the program keeps single precision.
bool same(double wide, float narrow) {
    return std::bit_cast<std::uint32_t>(float(wide)) == std::bit_cast<std::uint32_t>(narrow) || std::isnan(wide);
}

VrfBuilder madeUp(Dice& dice) {
    VrfBuilder file;
    const int nodes = dice.Between(1, 12), elements = dice.Between(1, 8);
    for (int i = dice.Between(1, 3); i > 0; --i)
        file.items.push_back({QString(dice.Between(0, 3), u'応'), dice.Between(-1, 2), dice.Between(0, 3)});
    for (int i = 0; i < nodes; ++i)
        file.nodes.push_back({dice.Between(-99, 99) / 7.0, dice.Between(-99, 99) / 7.0});
    for (int e = 0; e < elements; ++e) {
        file.elements.emplace_back();
        for (int i = dice.Between(0, 5); i > 0; --i)
            file.elements.back().push_back(dice.Between(-1, nodes + 1));
    }
    for (int s = dice.Between(0, 3); s > 0; --s) {
        VrfBuilder::Step step{dice.Between(0, 99) / 3.0, QString(dice.Between(0, 4), u'段'), {}, {}};
        for (int e = 0; e < elements; ++e)
            step.types.push_back(dice.Between(-1, 2));
        for (std::size_t i = 0; i < file.items.size(); ++i)
            step.values.emplace_back(std::size_t(dice.Between(0, nodes + 3)), dice.Between(-9, 9) / 7.0);
        file.steps.push_back(step);
    }
    return file;
}

/// A few numbers of the file changed, mostly to what counts and lengths may be, or its end cut off.
void bend(QByteArray& bytes, Dice& dice) {
    constexpr qint32 wild[] = {-1, 0, 1, 2, 3, 7, 255, 65536, 0x7fffffff, INT32_MIN, 0x10000000};
    for (int i = dice.Between(0, 2); i > 0; --i) {
        const qint32 number = qToLittleEndian(wild[dice.Between(0, int(std::size(wild)) - 1)]);
        bytes.replace(dice.Between(0, int(bytes.size()) - 4), 4, reinterpret_cast<const char*>(&number), 4);
    }
    if (dice.Between(0, 2) == 0)
        bytes.truncate(dice.Between(0, int(bytes.size())));
}

void compareMesh(const velorin_file* file, const ResultContent& known) {
    ASSERT_EQ(velorin_file_node_count(file), known.NodeX.size());
    for (int i = 0; i < known.NodeX.size(); ++i) {
        EXPECT_TRUE(same(velorin_file_coordinates(file)[2 * i], known.NodeX[i]));
        EXPECT_TRUE(same(velorin_file_coordinates(file)[2 * i + 1], known.NodeY[i]));
    }
    ASSERT_EQ(velorin_file_element_count(file), known.FirstCorner.size() - 1);
    for (int e = 0; e < velorin_file_element_count(file); ++e) {
        const std::int32_t* nodes = nullptr;
        const int count = velorin_file_element(file, e, &nodes);
        EXPECT_EQ(QList<std::int32_t>(nodes, nodes + count),
                  known.NodeIndex.sliced(known.FirstCorner[e], known.FirstCorner[e + 1] - known.FirstCorner[e]));
    }
}

void compareStep(const velorin_file* file, const ResultContent& known, int step) {
    EXPECT_TRUE(same(velorin_file_step_time(file, step), known.Steps[step].Time));
    const int elements = velorin_file_element_count(file), beyond = elements + 2;
    std::vector<std::int32_t> types(std::size_t(beyond), 7), knownTypes(std::size_t(beyond), 9);
    velorin_file_types(file, step, 0, beyond, types.data());
    known.Source->ReadTypes(step, 0, knownTypes);
    EXPECT_EQ(types, knownTypes);
    for (int item = 0; item < known.Items.size(); ++item) {
        const int count = velorin_file_value_count(file, step, item);
        ASSERT_EQ(count, known.Source->ValueCount(step, item));
        std::vector<double> values(std::size_t(std::clamp(count, 0, 50) + 3), 7);
        std::vector<float> knownValues(values.size(), 9);
        velorin_file_values(file, step, item, 1, int(values.size()), values.data());
        known.Source->ReadValues(step, item, 1, knownValues);
        EXPECT_TRUE(std::equal(values.begin(), values.end(), knownValues.begin(), same));
    }
}

/// An object's value is the one at its place among those of its type.
void compareObjects(const velorin_file* file, const ResultContent& known, int step, int item) {
    const int type = known.Items[item].ElementType;
    const int objects = type < 0 ? velorin_file_node_count(file) : velorin_file_element_count(file);
    std::vector<std::int32_t> types(std::size_t(velorin_file_element_count(file))), asked;
    known.Source->ReadTypes(step, 0, types);
    for (int i = -1; i <= objects; ++i)
        asked.push_back(i);
    std::vector<double> values(asked.size());
    std::vector<char> has(asked.size());
    ASSERT_TRUE(velorin_file_values_of(file, step, item, int(asked.size()), asked.data(), values.data(), has.data()));
    for (int i = 0, place = -1; i < objects; ++i) {
        const bool counts = type < 0 || types[std::size_t(i)] == type;
        place += counts;
        float value = 0;
        known.Source->ReadValues(step, item, place, std::span(&value, counts ? 1 : 0));
        EXPECT_EQ(bool(has[std::size_t(i) + 1]), counts && place < known.Source->ValueCount(step, item));
        EXPECT_TRUE(same(values[std::size_t(i) + 1], value));
    }
    EXPECT_FALSE(has.front() || has.back());
}

} // namespace

TEST(VelorinFile, FindsWhatTheProgramFindsInWholeBentAndCutFiles) {
    Dice dice(11);
    const TestFolder folder;
    int opened = 0, refused = 0;
    for (int round = 0; round < 600 && !testing::Test::HasFailure(); ++round) {
        QByteArray bytes = madeUp(dice).Bytes();
        bend(bytes, dice);
        const QString path = folder.Write(bytes);
        ResultContent known;
        const bool usable = VrfReader::Recognises(bytes.first(std::min<qsizetype>(bytes.size(), 5)), path) &&
                            VrfReader::Open(path, known, {});
        const int handle = ::open(path.toUtf8().constData(), O_RDONLY);
        velorin_file_problem problem = VELORIN_FILE_NO_MEMORY;
        velorin_file* file = velorin_file_open(handle, &problem);
        ASSERT_EQ(file != nullptr, usable) << round;
        EXPECT_EQ(problem, usable ? VELORIN_FILE_GOOD : VELORIN_FILE_OTHER);
        ++(usable ? opened : refused);
        if (file) {
            compareMesh(file, known);
            ASSERT_EQ(velorin_file_step_count(file), known.Steps.size());
            for (int step = 0; step < known.Steps.size(); ++step) {
                compareStep(file, known, step);
                compareObjects(file, known, step, int(known.Items.size()) - 1);
            }
        }
        velorin_file_close(file);
        ::close(handle);
    }
    EXPECT_GT(opened, 100);
    EXPECT_GT(refused, 100);
}

TEST(VelorinFile, GivesNamesInUtf8CutBetweenCharacters) {
    const TestFolder folder;
    VrfBuilder made = twoSquares();
    made.items[1].name.clear();
    const int handle = ::open(folder.Write(made.Bytes()).toUtf8().constData(), O_RDONLY);
    velorin_file* file = velorin_file_open(handle, nullptr);
    ASSERT_TRUE(file);
    char text[8];
    const auto utf8 = [&](const char* name, std::size_t size) {
        velorin_file_utf8(name, text, size);
        return QString::fromUtf8(text);
    };
    EXPECT_EQ(utf8(velorin_file_title(file), sizeof text), u"試験"_s);
    EXPECT_EQ(utf8(velorin_file_title(file), 6), u"試"_s);
    EXPECT_EQ(utf8(velorin_file_title(file), 1), QString());
    EXPECT_EQ(utf8("a\xff"
                   "b",
                   sizeof text),
              u"a\ufffdb"_s);
    EXPECT_STREQ(velorin_file_item_name(file, 1), "");
    EXPECT_STREQ(velorin_file_item_name(file, 2), "");
    EXPECT_EQ(utf8(velorin_file_step_name(file, 0), sizeof text), u"初期"_s);
    velorin_file_close(file);
    ::close(handle);
    velorin_file_problem problem = VELORIN_FILE_GOOD;
    EXPECT_FALSE(velorin_file_open(-1, &problem));
    EXPECT_EQ(problem, VELORIN_FILE_UNREADABLE);
}
