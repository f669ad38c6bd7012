#include "VrfBuilder.h"

#include "result/StepSampler.h"
#include "result/mdVelorinResultModel.h"

#include <bit>
#include <gtest/gtest.h>
#include <random>

using namespace mdVelorinResultModel;

namespace {

/// Values by their bits, so that the zeros' signs and the NaN count too.
using Bits = std::vector<std::optional<std::uint32_t>>;

class StepSamplerTest : public testing::Test {
protected:
    int upTo(int most) { return std::uniform_int_distribution(0, most)(random); }

    VrfBuilder randomFile(int nodes, int elements) {
        VrfBuilder file;
        for (const qint32 type : {-1, 1, -2, 0, 2})
            file.items.push_back({{}, type, 0});
        file.nodes.assign(std::size_t(nodes), {0, 0});
        file.elements.assign(std::size_t(elements), {1, 2});
        for (int steps = 1 + upTo(3); steps > 0; --steps) {
            VrfBuilder::Step step{0, QString(upTo(3) > 0 ? 0 : 4 * upTo(75), u'x'), {}, {{}, {}, {}, {}, {}}};
            for (int e = 0; e < elements; ++e)
                step.types.push_back(upTo(3) - 1);
            for (auto& block : step.values)
                for (int count = upTo(3) > 0 ? nodes : upTo(nodes + 3); count > 0; --count)
                    block.push_back(upTo(9) > 0 ? 1e3 / (upTo(999) - 500) : upTo(1) ? -0.0 : std::nan(""));
            file.steps.push_back(step);
        }
        return file;
    }

    /// What loading the step into a copy of the model gives.
    Bits loaded(std::int32_t step, std::int32_t item, const std::vector<std::int32_t>& places, std::int32_t reference) {
        Bits result(places.size());
        ResultModel copy = model;
        if (!LoadStep(step, item, copy, true, reference) || item >= copy.ItemCount)
            return result;
        ItemValues values = copy.ItemData.at(item);
        if (reference >= 0)
            values = SubtractValues(values, copy.ReferenceItemData.at(item));
        values = ExpandItemValues(copy.Items.at(item).ElementType, copy.Mesh, values);
        for (std::size_t i = 0; i < places.size(); ++i)
            if (places[i] >= 0 && places[i] < values.Values.size())
                result[i] = std::bit_cast<std::uint32_t>(values.Values.at(places[i]));
        return result;
    }

    void expectAsLoaded(std::int32_t item, const std::vector<std::int32_t>& places, std::int32_t reference) {
        const StepSampler sampler(model, item, places, reference);
        for (std::int32_t step = -1; step <= model.StepCount; ++step) {
            Bits sampled;
            for (const std::optional<float> value : sampler.Read(step))
                sampled.push_back(value ? std::optional(std::bit_cast<std::uint32_t>(*value)) : std::nullopt);
            ASSERT_EQ(sampled, loaded(step, item, places, reference)) << step << " " << item << " " << reference;
        }
    }

    std::mt19937 random{20};
    TestFolder folder;
    ResultModel model;
};

TEST_F(StepSamplerTest, GivesWhatLoadingTheStepGivesWhateverTheFile) {
    for (int round = 0; round < 120 && !HasFatalFailure(); ++round) {
        QByteArray bytes = randomFile(1 + upTo(8), 1 + upTo(12)).Bytes();
        ASSERT_TRUE(LoadResultFile(folder.Write(bytes), model));
        const int start = model.FirstStepOffset, room = int(bytes.size()) - start;
        if (round % 3 == 1)
            bytes.chop(upTo(room));
        for (int lies = round % 3 == 2 ? 3 : 0; lies > 0; --lies) {
            // Types, counts and lengths of names that aren't true.
            const qint32 lie = std::array{-1, 0, 3, 17, 1 << 20, std::numeric_limits<qint32>::max()}[upTo(5)];
            std::memcpy(bytes.data() + start + upTo((room - 4) / 4) * 4, &lie, 4);
        }
        ASSERT_TRUE(LoadResultFile(folder.Write(bytes), model));
        std::vector<std::int32_t> places{-1, std::numeric_limits<std::int32_t>::max()};
        for (int i = upTo(20); i > 0; --i)
            places.push_back(upTo(18));
        for (std::int32_t item = -1; item <= 5; ++item)
            for (std::int32_t reference = -1; reference <= model.StepCount; ++reference)
                expectAsLoaded(item, places, reference);
    }
}

TEST_F(StepSamplerTest, ReadsFarAndNearPlacesOfLargeStepsAndLittleElse) {
    constexpr int count = 70000;
    VrfBuilder file = randomFile(count, count);
    for (VrfBuilder::Step& step : file.steps)
        step.types.assign(count, upTo(1));
    file.steps.front().types[70] = 2;
    ASSERT_TRUE(LoadResultFile(folder.Write(file.Bytes()), model));
    std::vector<std::int32_t> all(count), few{count - 1};
    std::iota(all.rbegin(), all.rend(), 0);
    for (int i = 0; i < 40; ++i)
        few.push_back(upTo(count - 1) >> upTo(8));
    for (std::int32_t item = 0; item < 5; ++item)
        for (const auto& places : {all, few, {3, 8191, 8192, 8195, 16383, 16384, 33000}})
            expectAsLoaded(item, places, item % 2 - 1);

    const auto bytesRead = [] {
        QFile counters(QStringLiteral("/proc/self/io"));
        return counters.open(QIODevice::ReadOnly) ? counters.readAll().mid(7).split('\n').front().toLongLong() : -1;
    };
    if (bytesRead() < 0)
        GTEST_SKIP() << "the system doesn't tell what is read";
    const StepSampler sampler(model, 0, std::span(few).first(10), -1);
    const qint64 before = bytesRead();
    sampler.Read(0);
    EXPECT_LT(bytesRead() - before, 24000) << "of 3 MB";
}

} // namespace
