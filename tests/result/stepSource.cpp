// What every source of steps has to keep to, whatever the format: held against what the test made up.
#include "MemorySteps.h"
#include "ModelTest.h"

#include "platform/base/Parallel.h"

#include <bit>
#include <random>

using namespace mdVelorinResultModel;

namespace {

using Steps = std::vector<MemorySteps::Step>;
constexpr std::int32_t itemTypes[] = {-1, 1, 0, -2};
constexpr std::int32_t itemCount = std::size(itemTypes);

template<class T>
std::vector<T> cutTo(const std::vector<T>& all, qint64 count) {
    return {all.begin(), all.begin() + std::clamp<qint64>(count, 0, qint64(all.size()))};
}

class StepSourceTest : public ModelTest {
protected:
    int upTo(int most) { return std::uniform_int_distribution(0, most)(random); }

    /// Whole steps, each with a name of another length in front of it in the file.
    VrfBuilder madeUp() {
        VrfBuilder file;
        for (const qint32 type : itemTypes)
            file.items.push_back({{}, type, 0});
        // Now and then more than what is read at once.
        file.nodes.assign(upTo(7) > 0 ? std::size_t(1 + upTo(9)) : 70000, {0, 0});
        file.elements.assign(std::size_t(1 + upTo(9)), {1});
        for (int s = 1 + upTo(3); s > 0; --s) {
            VrfBuilder::Step step{double(s), QString(upTo(9), u'x'), {}, {}};
            for (std::size_t e = 0; e < file.elements.size(); ++e)
                step.types.push_back(upTo(4) - 2);
            for (std::int32_t i = 0; i < itemCount; ++i) {
                step.values.emplace_back(std::size_t(upTo(2) > 0 ? int(file.nodes.size()) : upTo(3)));
                for (double& value : step.values.back())
                    value = upTo(20) > 0 ? upTo(2000) / 7.0 - 100 : upTo(1) > 0 ? -0.0 : std::nan("");
            }
            file.steps.push_back(step);
        }
        return file;
    }

    /// The steps of a file of which the last `missing` bytes are gone.
    static Steps stepsOf(const VrfBuilder& file, qint64 missing) {
        Steps steps;
        for (const VrfBuilder::Step& whole : file.steps) {
            QByteArray bytes;
            VrfBuilder::appendStep(bytes, whole);
            const qint64 lost = &whole == &file.steps.back() ? missing : 0;
            qint64 left = bytes.size() - lost - 12 - whole.name.size();
            MemorySteps::Step step{cutTo(whole.types, left / 4), {}};
            left -= qint64(whole.types.size()) * 4;
            for (const std::vector<double>& values : whole.values) {
                left -= 4;
                // A count beyond the mesh is believed only when the values are there.
                const bool isTold = left >= 0;
                step.blocks.push_back({isTold ? qint32(values.size()) : 0, cutTo(values, isTold ? left / 8 : 0)});
                left -= qint64(values.size()) * 8;
            }
            steps.push_back(step);
        }
        return steps;
    }

    /// Asks for ranges within, across and beyond the ends, from several threads at once.
    void expectSteps(const StepSource& source, const Steps& steps, std::int32_t elements, unsigned seed) {
        std::atomic<int> wrong = 0;
        parallelFor(
            40,
            [&](int call) {
                std::mt19937 own(seed + unsigned(call));
                const auto from = [&own](int first, qint64 last) {
                    return first + qint64(own() % std::uint64_t(last - first + 1));
                };
                const auto step = std::int32_t(from(-1, qint64(steps.size())));
                const auto item = std::int32_t(from(-1, itemCount));
                const bool isStep = step >= 0 && step < qint32(steps.size());
                static const MemorySteps::Step none;
                const MemorySteps::Step& expected = isStep ? steps[std::size_t(step)] : none;
                const MemorySteps::Block block =
                    isStep && item >= 0 && item < itemCount ? expected.blocks[std::size_t(item)] : MemorySteps::Block();
                wrong += source.ValueCount(step, item) != block.told;
                const qint64 first = from(0, std::max(block.told, elements) + 3);
                std::vector<std::int32_t> types(std::size_t(from(0, elements + 3)), 77);
                std::vector<float> values(std::size_t(from(0, block.told + 3)), 77);
                source.ReadTypes(step, first, types);
                source.ReadValues(step, item, first, values);
                for (qint64 i = 0; i < qint64(types.size()); ++i)
                    wrong += types[std::size_t(i)] !=
                             (first + i < qint64(expected.types.size()) ? expected.types[std::size_t(first + i)] : 0);
                for (qint64 i = 0; i < qint64(values.size()); ++i)
                    wrong += std::bit_cast<std::uint32_t>(values[std::size_t(i)]) !=
                             std::bit_cast<std::uint32_t>(first + i < qint64(block.values.size())
                                                              ? float(block.values[std::size_t(first + i)])
                                                              : 0.0f);
            },
            4);
        EXPECT_EQ(wrong, 0);
    }

    std::mt19937 random{5};
};

TEST_F(StepSourceTest, GivesWhatIsThereAndZerosBeyond) {
    for (int round = 0; round < 60; ++round) {
        const VrfBuilder file = madeUp();
        const std::int32_t elements = std::int32_t(file.elements.size());
        QByteArray last;
        VrfBuilder::appendStep(last, file.steps.back());
        const int missing = round % 2 > 0 ? upTo(int(last.size()) - 13 - int(file.steps.back().name.size())) : 0;
        QByteArray bytes = file.Bytes();
        bytes.chop(missing);
        ASSERT_TRUE(LoadResultFile(folder.Write(bytes), model));
        const Steps steps = stepsOf(file, missing);
        const auto memory = std::make_shared<const MemorySteps>(steps, itemCount, elements);
        for (const std::shared_ptr<const StepSource>& source : {model.Source, {memory}}) {
            SCOPED_TRACE(testing::Message() << round << (source == model.Source ? " file" : " memory"));
            ASSERT_EQ(source->StepCount(), steps.size());
            expectSteps(*source, steps, elements, unsigned(round) * 100);
        }
        // The model asks its source alone.
        ResultModel copy = model;
        copy.Source = memory;
        copy.FileHandle.Close();
        ASSERT_TRUE(LoadStep(copy.StepCount - 1, 0, copy, false, 0) &&
                    LoadStep(copy.StepCount - 1, 0, model, false, 0));
        EXPECT_EQ(copy.Mesh.Elements.ElementType, model.Mesh.Elements.ElementType);
        EXPECT_EQ(copy.Mesh.Nodes.Active, model.Mesh.Nodes.Active);
    }
}

} // namespace
