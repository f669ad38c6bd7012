#include "output/SlideShow.h"
#include "result/ModelTest.h"

#include <mutex>
#include <random>
#include <set>

namespace {

/// Passes on what another source gives, and notes the items whose values were asked for.
class NotedSteps final : public StepSource {
public:
    NotedSteps(std::shared_ptr<const StepSource> source, const ResultModel& model)
        : StepSource({model.StepCount, model.ItemCount, model.Mesh.ElementCount}), inner(std::move(source)) {}
    mutable std::set<std::int32_t> Asked; ///< -1 for types

private:
    void note(std::int32_t item) const {
        const std::scoped_lock lock(guard);
        Asked.insert(item);
    }
    qint64 typesAt(std::int32_t, qint64, std::span<std::int32_t>) const override {
        note(-1);
        return 0;
    }
    std::int32_t countOf(std::int32_t step, std::int32_t item) const override { return inner->ValueCount(step, item); }
    qint64 valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const override {
        note(item);
        inner->ReadValues(step, item, first, values);
        return qint64(values.size());
    }
    std::shared_ptr<const StepSource> inner;
    mutable std::mutex guard;
};

/// Step by step through loaded steps.
ShowRange plainRange(std::int32_t item, ResultModel copy, const VectorItemSet& vectors) {
    ShowRange range;
    const auto magnitude = [&copy](std::int32_t of) {
        const ItemValues& values = copy.ItemData.at(of);
        return std::max(std::abs(values.MaxValue), std::abs(values.MinValue));
    };
    for (std::int32_t step = 0; step < copy.StepCount; ++step) {
        mdVelorinResultModel::LoadStep(step, item, copy, false, -1);
        range.Maximum = std::max(range.Maximum, copy.ItemData.at(item).MaxValue);
        range.Minimum = std::min(range.Minimum, copy.ItemData.at(item).MinValue);
        for (const std::int32_t of : {copy.DisplacementItemX, copy.DisplacementItemY})
            range.MaxDisplacement = std::max(range.MaxDisplacement, of < 0 ? 0 : magnitude(of));
        for (const std::int32_t of : {vectors.Horz, vectors.Vert})
            range.MaxVector = std::max(range.MaxVector, of < 0 ? 0 : magnitude(of));
    }
    return range;
}

VrfBuilder randomFile(std::mt19937& random) {
    VrfBuilder file = twoSquares();
    file.items = {{u"X"_s, -1, 1}, {u"Y"_s, -1, 2}, {u"S"_s, 2, 0}, {u"H"_s, 1, 0}, {u"V"_s, 1, 0}, {u"T"_s, -1, 0}};
    file.steps.resize(1 + random() % 4);
    for (VrfBuilder::Step& step : file.steps) {
        step = {0, {}, {1, 2}, {}};
        for (std::size_t i = 0; i < file.items.size(); ++i) {
            constexpr int counts[] = {0, 1, 6, 40000};
            auto& values = step.values.emplace_back(std::size_t(counts[random() % 4]));
            for (double& value : values)
                value = double(random() % 1000) - (random() % 2 ? 900 : 0);
            if (!values.empty() && random() % 8 == 0)
                values.assign(values.size(), std::numeric_limits<double>::quiet_NaN());
        }
    }
    return file;
}

struct ShowTest : ModelTest {
    /// The file in `show.session`, at a step with the item per node.
    void take(const VrfBuilder& file, std::int32_t step) {
        ASSERT_TRUE(session.Open(folder.Write(file.Bytes())));
        session.LoadStep(step, 0);
        contour() = {.MaxValue = 8, .MinValue = 2, .Divide = 5};
    }
    ContourSettings& contour() { return session.Settings.Contour; }
    QString heldContour() {
        return u"%1..%2/%3 %4"_s.arg(contour().MinValue)
            .arg(contour().MaxValue)
            .arg(contour().Divide)
            .arg(contour().Automatic);
    }

    Session session;
    SlideShow show{session};
};

TEST_F(ShowTest, TheRangeIsThatOfAllStepsAndReadsOnlyWhatCounts) {
    std::mt19937 random(7);
    VectorSettings vector{.ItemSetCount = 2, .DefaultItemSet = 1, .ItemSets = {{u"a"_s, 0, 0}, {u"b"_s, 3, -1}}};
    for (int run = 0; run < 40; ++run) {
        open(randomFile(random));
        const auto noted = std::make_shared<NotedSteps>(model.Source, model);
        const ShowRange plain = plainRange(2, model, vector.ItemSets.at(1));
        model.Source = noted;
        const auto range = ComputeItemRange(2, model, vector);
        ASSERT_TRUE(range);
        EXPECT_EQ(range->Maximum, plain.Maximum);
        EXPECT_EQ(range->Minimum, plain.Minimum);
        EXPECT_EQ(range->MaxDisplacement, plain.MaxDisplacement);
        EXPECT_EQ(range->MaxVector, plain.MaxVector);
        for (const std::int32_t asked : noted->Asked)
            EXPECT_TRUE(asked >= 0 && asked <= 3) << asked;
    }
    // No set in use, no such item; and a stop.
    vector.DefaultItemSet = 2;
    const auto nothing = ComputeItemRange(-1, model, vector);
    EXPECT_EQ(nothing->MaxVector + (nothing->Maximum < nothing->Minimum), 1);
    VrfBuilder large = twoSquares();
    large.steps[0].values[0].resize(5 << 20);
    open(large);
    EXPECT_FALSE(ComputeItemRange(0, model, vector, [](qint64 done, qint64 total) { return done < 1 || total < 2; }));
}

TEST_F(ShowTest, HoldsContourAndStepAndPutsThemBackAsTheSettingsSayAtTheEnd) {
    SlideShowSettings& settings = session.Settings.SlideShow;
    settings.ContourDivide = 9;
    const QString held = u"1..12/9 0"_s, own = u"2..8/5 1"_s;
    struct Case {
        bool automaticAtStart, automaticAtEnd, atFirst, restore;
        QString during, after;
        int stepDuring, stepAfter;
    };
    for (const Case& c : {Case{true, true, true, true, held, own, 0, 1},
                          {true, true, false, false, held, own, 1, 0},
                          {false, false, false, true, u"2..8/5 0"_s, own, 1, 1},
                          {true, false, true, false, held, u"1..12/5 1"_s, 0, 1},
                          {false, true, true, false, u"2..8/5 0"_s, own, 0, 1}}) {
        settings.AutomaticContourValue = c.automaticAtStart;
        settings.AtFirst = c.atFirst;
        settings.RestoreStep = c.restore;
        take(twoSquares(), 1);
        show.Start(*ComputeItemRange(0, session.Model, session.Settings.Vector));
        EXPECT_TRUE(show.IsOn());
        EXPECT_EQ(session.SlideShow.SlideMaxDisplacement, 12);
        EXPECT_EQ(heldContour(), c.during);
        EXPECT_EQ(session.Model.CurrentStep, c.stepDuring);
        show.ShowNext();
        settings.AutomaticContourValue = c.automaticAtEnd;
        show.Stop();
        EXPECT_FALSE(show.IsOn());
        EXPECT_EQ(heldContour(), c.after);
        EXPECT_EQ(session.Model.CurrentStep, c.stepAfter);
        // Settings that change in between count at once, and without a range of its own a show has what was before it.
        show.Start({4, 3, 0, 0});
        settings.AutomaticContourValue = true;
        show.ApplySettings();
        EXPECT_EQ(heldContour(), u"3..4/9 0"_s);
        settings.AutomaticContourValue = false;
        show.ApplySettings();
        EXPECT_EQ(heldContour(), c.after);
        show.Stop();
    }
}

TEST_F(ShowTest, AStepReadAheadIsTheStepLoaded) {
    VrfBuilder file = twoSquares();
    file.steps.push_back({2, {}, {1, 2}, {{9, 8, 7, 6, 5, 4}, {3}}});
    take(file, 1);
    session.Settings.Difference.StandardStep = 0;
    Session plain;
    plain.Open(session.Model.FileName);
    plain.Settings = session.Settings;
    // Turn by turn: read, read for another item than is shown then, left out.
    for (int turn = 0; turn < 12; ++turn) {
        const std::int32_t item = turn / 4 % 2;
        if (turn % 3 < 2)
            show.ReadAhead();
        if (session.Model.CurrentItem != item)
            session.LoadStep(session.Model.CurrentStep, item);
        show.ShowNext();
        ASSERT_TRUE(plain.LoadStep((turn + 2) % 3, item));
        const MeshData &shown = session.Model.Mesh, &loaded = plain.Model.Mesh;
        EXPECT_EQ(session.Model.CurrentStep, plain.Model.CurrentStep);
        EXPECT_EQ(session.Model.CurrentItem, item);
        EXPECT_EQ(shown.Nodes.Value, loaded.Nodes.Value);
        EXPECT_EQ(shown.Nodes.ReferenceValue, loaded.Nodes.ReferenceValue);
        EXPECT_EQ(shown.Nodes.Active, loaded.Nodes.Active);
        EXPECT_EQ(shown.Elements.ElementType, loaded.Elements.ElementType);
        EXPECT_EQ(shown.Elements.Neighbour, loaded.Elements.Neighbour);
        EXPECT_EQ(session.Model.ItemData.at(1).Values, plain.Model.ItemData.at(1).Values);
    }
}

} // namespace
