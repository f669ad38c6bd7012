// What every source of steps has to keep to, whatever the format, and what the model and the sampler make of it: all of
// it held against what the test made up.
#include "MemorySteps.h"
#include "ModelTest.h"

#include "platform/base/Parallel.h"
#include "result/StepSampler.h"
#include "result/readers/ArraySteps.h"

#include <bit>
#include <random>

using namespace mdVelorinResultModel;

namespace {

using Steps = std::vector<MemorySteps::Step>;
constexpr std::int32_t itemTypes[] = {-1, 1, -2, 0, 2};
constexpr std::int32_t itemCount = std::size(itemTypes);
constexpr int large = 70000; ///< nodes or elements: several of whatever is read at once

/// By its bits, so that the zeros' signs and the NaN count too.
std::uint32_t bits(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

template<class T>
std::vector<T> cutTo(const std::vector<T>& all, qint64 count) {
    return {all.begin(), all.begin() + std::clamp<qint64>(count, 0, qint64(all.size()))};
}

class StepSourceTest : public ModelTest {
protected:
    int upTo(int most) { return std::uniform_int_distribution(0, most)(random); }

    VrfBuilder madeUp(int nodes, int elements) {
        VrfBuilder file;
        for (const qint32 type : itemTypes)
            file.items.push_back({{}, type, 0});
        file.nodes.assign(std::size_t(nodes), {0, 0});
        file.elements.assign(std::size_t(elements), {1});
        for (int left = 1 + upTo(3); left > 0; --left) {
            // Values stand behind a name of some length.
            VrfBuilder::Step step{0, QString(upTo(9), u'x'), {}, {}};
            for (int e = 0; e < elements; ++e)
                step.types.push_back(upTo(4) - 1);
            for (std::int32_t i = 0; i < itemCount; ++i) {
                step.values.emplace_back(std::size_t(upTo(3) > 0 ? nodes : upTo(nodes + 3)));
                for (double& value : step.values.back())
                    value = upTo(9) > 0 ? 1e3 / (upTo(999) - 500) : upTo(1) > 0 ? -0.0 : std::nan("");
            }
            file.steps.push_back(step);
        }
        return file;
    }

    /// The steps of a file of which the last `lost` bytes are gone.
    static Steps stepsOf(const VrfBuilder& file, qint64 lost) {
        Steps steps;
        for (const VrfBuilder::Step& whole : file.steps) {
            QByteArray bytes;
            VrfBuilder::appendStep(bytes, whole);
            qint64 left = bytes.size() - (&whole == &file.steps.back() ? lost : 0) - 12 - whole.name.size();
            steps.push_back({cutTo(whole.types, left / 4), {}});
            left -= qint64(whole.types.size()) * 4;
            for (const std::vector<double>& values : whole.values) {
                left -= 4;
                const auto most = qint64(std::max(file.nodes.size(), file.elements.size()));
                const auto told = qint64(values.size());
                // A count beyond the mesh is believed only when the values are there.
                const bool isTold = left >= 0 && (told <= most || told * 8 <= left);
                steps.back().blocks.push_back({isTold ? qint32(told) : 0, cutTo(values, isTold ? left / 8 : 0)});
                left -= told * 8;
            }
        }
        return steps;
    }

    /// Ranges within, across and beyond the ends, from several threads at once.
    static void expectSteps(const StepSource& source, const Steps& steps, int elements) {
        std::vector<int> differs(60);
        const auto ask = [&](int call) {
            std::minstd_rand own(unsigned(call) + 1);
            const auto upToHere = [&own](std::size_t most) { return own() % (most + 1); };
            const std::size_t step = upToHere(steps.size() + 1), item = upToHere(itemCount + 1); // from -1 on
            const bool isThere = step >= 1 && step <= steps.size();
            const MemorySteps::Step expected = isThere ? steps[step - 1] : MemorySteps::Step();
            const MemorySteps::Block block =
                isThere && item >= 1 && item <= itemCount ? expected.blocks[item - 1] : MemorySteps::Block();
            const auto inFile = std::int32_t(step) - 1, ofItem = std::int32_t(item) - 1;
            const std::size_t most = std::size_t(std::max(block.told, elements)) + 3;
            const auto first = qint64(upToHere(most));
            std::vector<std::int32_t> types(upToHere(most), 77);
            std::vector<float> values(upToHere(most), 77);
            source.ReadTypes(inFile, first, types);
            source.ReadValues(inFile, ofItem, first, values);
            differs[std::size_t(call)] =
                source.ValueCount(inFile, ofItem) != block.told ||
                types != partOf<std::int32_t>(expected.types, first, types.size()) ||
                !std::ranges::equal(values, partOf<float>(block.values, first, values.size()), {}, bits, bits);
        };
        parallelFor(int(differs.size()), ask, 4);
        EXPECT_EQ(differs, std::vector<int>(differs.size()));
    }

    /// Loads every step of `loaded`, also those that are not there, and compares what `sampled` gives at `places`.
    static void expectAsLoaded(const ResultModel& sampled, ResultModel loaded, std::int32_t item,
                               const std::vector<std::int32_t>& places, std::int32_t reference) {
        const StepSampler sampler(sampled, item, places, reference);
        for (std::int32_t step = -1; step <= loaded.StepCount; ++step) {
            std::vector<std::optional<std::uint32_t>> expected(places.size()), given;
            if (LoadStep(step, item, loaded, true, reference) && item < itemCount) {
                ItemValues values = loaded.ItemData.at(item);
                if (reference >= 0)
                    values = SubtractValues(values, loaded.ReferenceItemData.at(item));
                values = ExpandItemValues(loaded.Items.at(item).ElementType, loaded.Mesh, values);
                for (std::size_t i = 0; i < places.size(); ++i)
                    if (places[i] >= 0 && places[i] < values.Values.size())
                        expected[i] = bits(values.Values.at(places[i]));
            }
            for (const std::optional<float> value : sampler.Read(step))
                given.push_back(value ? std::optional(bits(*value)) : std::nullopt);
            ASSERT_EQ(given, expected) << step << " " << item << " " << reference;
        }
    }

    /// Those of the loaded step are what a plain walk finds, of two equal zeros the first.
    void expectBounds() {
        ASSERT_TRUE(LoadStep(0, 0, model, true, -1));
        for (const ItemValues& values : model.ItemData) {
            float highest = values.Count > 0 ? -BoundStart : 0, lowest = -highest;
            for (const float value : values.Values) {
                highest = value > highest ? value : highest;
                lowest = value < lowest ? value : lowest;
            }
            EXPECT_EQ(bits(values.MaxValue), bits(highest));
            EXPECT_EQ(bits(values.MinValue), bits(values.Count > 0 ? lowest : 0));
        }
    }

    std::vector<std::int32_t> somePlaces(int most) {
        std::vector<std::int32_t> places{-1, std::numeric_limits<std::int32_t>::max(), most};
        for (int i = upTo(40); i > 0; --i)
            places.push_back(upTo(most + 3) >> upTo(8));
        return places;
    }

    std::mt19937 random{20};
};

TEST_F(StepSourceTest, GivesWhatIsThereAndZerosBeyond) {
    for (int round = 0; round < 80 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const int nodes = round % 20 > 0 ? 1 + upTo(8) : large, elements = round % 20 > 0 ? 1 + upTo(12) : large;
        const VrfBuilder file = madeUp(nodes, elements);
        QByteArray bytes = file.Bytes(), last;
        VrfBuilder::appendStep(last, file.steps.back());
        const int lost = upTo(1) * upTo(int(last.size() - 13 - file.steps.back().name.size()));
        bytes.chop(lost);
        ASSERT_TRUE(LoadResultFile(folder.Write(bytes), model));
        const Steps steps = stepsOf(file, lost);
        ResultModel fromMemory = model;
        fromMemory.Source = std::make_shared<const MemorySteps>(steps, itemCount, elements);
        fromMemory.FileHandle.Close();
        expectSteps(*model.Source, steps, elements);
        expectSteps(*fromMemory.Source, steps, elements);
        for (std::int32_t item = -1; item <= itemCount && nodes < large; ++item)
            for (std::int32_t reference = -1; reference <= model.StepCount; ++reference)
                expectAsLoaded(model, fromMemory, item, somePlaces(12), reference);
        expectAsLoaded(fromMemory, model, upTo(itemCount - 1), somePlaces(nodes), upTo(1) - 1);
        expectBounds();

        for (int lies = 0; lies < 3; ++lies) {
            // Types, counts and lengths of names that aren't true: the sampler gives what the model gives.
            const qint32 lie = std::array{-1, 0, 3, 17, 1 << 20, std::numeric_limits<qint32>::max()}[upTo(5)];
            const int room = int(bytes.size()) - model.FirstStepOffset;
            std::memcpy(bytes.data() + model.FirstStepOffset + upTo((room - 4) / 4) * 4, &lie, 4);
        }
        ASSERT_TRUE(LoadResultFile(folder.Write(bytes), model));
        for (std::int32_t item = 0; item < itemCount; ++item)
            expectAsLoaded(model, model, item, somePlaces(17), upTo(model.StepCount) - 1);
    }
}

/// Arrays that are read whole: two of the items are components of one, each element is a part of a cell.
TEST_F(StepSourceTest, WholeArraysGiveTheSame) {
    for (int round = 0; round < 20 && !HasFailure(); ++round) {
        const int nodes = round > 0 ? 1 + upTo(8) : large, cells = 1 + upTo(12), elements = cells * 2 - upTo(1);
        ForeignResult result;
        result.Arrays = {{{}, 3, {}, false}, {{}, 2, {}, true}};
        result.Steps.resize(std::size_t(1 + upTo(2)));
        std::vector<std::vector<std::vector<float>>> arrays;
        Steps steps;
        for (ForeignStep& step : result.Steps) {
            step.Arrays = upTo(2) > 0 ? std::vector<std::int32_t>{0, 1} : std::vector<std::int32_t>{0};
            arrays.push_back({std::vector<float>(std::size_t(nodes * 3 - upTo(2))),
                              std::vector<float>(std::size_t(cells * 2 - upTo(1)))});
            for (std::vector<float>& all : arrays.back())
                std::ranges::generate(all, [this] { return float(upTo(999)); });
            steps.push_back({std::vector<std::int32_t>(std::size_t(elements)), {}});
            for (std::int32_t i = 0; i < itemCount; ++i) {
                const std::vector<float>& all = arrays.back()[i < 3 ? 0 : 1];
                MemorySteps::Block block{i < 3 ? nodes : step.Arrays.size() > 1 ? elements : 0, {}};
                for (std::size_t place = 0; place < std::size_t(block.told); ++place) {
                    const std::size_t at = i < 3 ? place * 3 + std::size_t(i) : place / 2 * 2 + std::size_t(i - 3);
                    block.values.push_back(at < all.size() ? all[at] : 0);
                }
                steps.back().blocks.push_back(block);
            }
        }
        std::vector<std::int32_t> cellOf;
        for (int e = 0; e < elements; ++e)
            cellOf.push_back(e / 2);
        result.Read = [arrays](std::int32_t step, std::int32_t array) {
            return arrays[std::size_t(step)][std::size_t(array)];
        };
        expectSteps(ArraySteps(std::move(result), {{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}}, cellOf, cells, nodes),
                    steps, elements);
    }
}

TEST_F(StepSourceTest, ASamplerReadsLittleMoreThanItsPlaces) {
    ASSERT_TRUE(LoadResultFile(folder.Write(madeUp(large, 1).Bytes()), model));
    const auto bytesRead = [] {
        QFile counters(QStringLiteral("/proc/self/io"));
        return counters.open(QIODevice::ReadOnly) ? counters.readAll().mid(7).split('\n').front().toLongLong() : -1;
    };
    if (bytesRead() < 0)
        GTEST_SKIP() << "the system doesn't tell what is read";
    const StepSampler sampler(model, 0, std::array{3, 200, 9000, 33000, large - 1}, -1);
    const qint64 before = bytesRead();
    sampler.Read(0);
    EXPECT_LT(bytesRead() - before, 12000) << "of 3 MB";
}

} // namespace
