#include "output/SlideShow.h"
#include "result/ModelTest.h"

#include <random>

namespace {

/// Maximum and minimum of the item, largest displacement and vector, as the steps give them when each is loaded.
std::array<float, 4> plainRange(std::int32_t item, ResultModel copy, const VectorItemSet& vectors) {
    std::array range{-BoundStart, BoundStart, 0.0f, 0.0f};
    for (std::int32_t step = 0; step < copy.StepCount; ++step) {
        mdVelorinResultModel::LoadStep(step, item, copy, false, -1);
        range[0] = std::max(range[0], copy.ItemData.at(item).MaxValue);
        range[1] = std::min(range[1], copy.ItemData.at(item).MinValue);
        for (const auto& [entry, of] :
             {std::pair(2, copy.DisplacementItemX), {2, copy.DisplacementItemY}, {3, vectors.Horz}, {3, vectors.Vert}})
            for (const float bound : {copy.ItemData.value(of).MaxValue, copy.ItemData.value(of).MinValue})
                range[std::size_t(entry)] = std::max(range[std::size_t(entry)], std::abs(bound));
    }
    return range;
}

struct ShowTest : ModelTest {
    QString heldContour() const {
        const ContourSettings& contour = session.Settings.Contour;
        return u"%1..%2/%3 %4"_s.arg(contour.MinValue).arg(contour.MaxValue).arg(contour.Divide).arg(contour.Automatic);
    }

    Session session;
    SlideShow show{session};
};

TEST_F(ShowTest, TheRangeIsThatOfAllSteps) {
    std::mt19937 random(7);
    const VectorSettings vector{.ItemSetCount = 2, .DefaultItemSet = 1, .ItemSets = {{u"a"_s, 0, 0}, {u"b"_s, 3, -1}}};
    VrfBuilder file = twoSquares();
    file.items = {{u"X"_s, -1, 1}, {u"Y"_s, -1, 2}, {u"S"_s, 2, 0}, {u"H"_s, 1, 0}};
    for (int run = 0; run < 40; ++run) {
        for (VrfBuilder::Step& step : file.steps)
            for (auto& values : step.values = std::vector<std::vector<double>>(file.items.size())) {
                constexpr int counts[] = {0, 1, 6, 40000};
                values.resize(std::size_t(counts[random() % 4]));
                for (double& value : values)
                    value = double(random() % 1000) - (random() % 2 ? 900 : 0);
                if (random() % 8 == 0)
                    values.assign(values.size(), std::numeric_limits<double>::quiet_NaN());
            }
        open(file);
        const ShowRange range = *ComputeItemRange(2, model, vector);
        EXPECT_EQ(plainRange(2, model, vector.ItemSets.at(1)),
                  (std::array{range.Maximum, range.Minimum, range.MaxDisplacement, range.MaxVector}));
    }
    file.steps[0].values[0].resize(2 << 20);
    open(file);
    EXPECT_FALSE(ComputeItemRange(0, model, {}, [](qint64 done, qint64 total) { return done < 1 || total < 2; }));
}

TEST_F(ShowTest, HoldsContourAndStepAndPutsThemBackAsTheSettingsSayAtTheEnd) {
    ASSERT_TRUE(session.Open(folder.Write(twoSquares().Bytes())));
    const QString held = u"1..12/9 0"_s, fixed = u"2..8/5 0"_s, own = u"2..8/5 1"_s;
    for (const auto& [automaticAtStart, automaticAtEnd, flag, during, after] :
         {std::tuple(true, true, true, held, own),
          {false, false, false, fixed, own},
          {true, false, true, held, u"1..12/5 1"_s},
          {false, true, false, fixed, own}}) {
        SlideShowSettings& settings = session.Settings.SlideShow;
        settings = {
            .AtFirst = flag, .RestoreStep = flag, .AutomaticContourValue = automaticAtStart, .ContourDivide = 9};
        session.Settings.Contour = {.MaxValue = 8, .MinValue = 2, .Divide = 5};
        session.LoadStep(1, 0);
        show.Start(*ComputeItemRange(0, session.Model, session.Settings.Vector));
        EXPECT_EQ(session.SlideShow.SlideMaxDisplacement, 12);
        EXPECT_EQ(heldContour(), during);
        EXPECT_EQ(session.SlideShow.RangeOfAllSteps, automaticAtStart);
        EXPECT_EQ(session.Model.CurrentStep, flag ? 0 : 1);
        show.ShowNext();
        settings.AutomaticContourValue = automaticAtEnd;
        show.Stop();
        EXPECT_EQ(heldContour(), after);
        EXPECT_EQ(session.Model.CurrentStep, flag ? 1 : 0);
    }
}

TEST_F(ShowTest, AStepReadAheadIsTheStepLoaded) {
    VrfBuilder file = twoSquares();
    file.steps.push_back({2, {}, {1, 2}, {{9, 8, 7, 6, 5, 4}, {3}}});
    Session plain;
    const QString path = folder.Write(file.Bytes());
    for (Session* each : {&session, &plain}) {
        ASSERT_TRUE(each->Open(path));
        each->Settings.Difference.StandardStep = 0;
        each->LoadStep(1, 0);
    }
    // Turn by turn: read, read for another item than is shown then, left out.
    for (int turn = 0; turn < 12; ++turn) {
        const std::int32_t item = turn / 4 % 2;
        if (turn % 3 < 2)
            show.ReadAhead();
        if (session.Model.CurrentItem != item)
            session.LoadStep(session.Model.CurrentStep, item);
        show.ShowNext();
        ASSERT_TRUE(plain.LoadStep((turn + 2) % 3, item));
        const auto loaded = [](const ResultModel& of) {
            const MeshData& mesh = of.Mesh;
            return std::tie(of.CurrentStep, mesh.Nodes.Value, mesh.Nodes.ReferenceValue, mesh.Nodes.Active,
                            mesh.Elements.Neighbour, of.ItemData.at(1).Values);
        };
        EXPECT_TRUE(loaded(session.Model) == loaded(plain.Model));
    }
}

} // namespace
