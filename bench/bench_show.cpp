// A slide show while it plays, beside a paint alone, and the range of all steps at its start, beside a plain read of
// the values that count.
#include "PlainRead.h"
#include "QuadMesh.h"
#include "Stage.h"
#include "Table.h"
#include "output/SlideShow.h"
#include "platform/base/Parallel.h"

namespace {

constexpr int steps = 100;
constexpr int stressPerNode = 2;

/// A step further each time: 25 pictures a second are 40 ms each.
void play(benchmark::State& state) {
    const int elements = int(state.range(0));
    Stage stage(QuadMesh::Opened(elements, steps, stressPerNode));
    SlideShow show(stage);
    show.Start(*ComputeItemRange(stressPerNode, stage.Model, stage.Settings.Vector));
    Table::Measure(state, elements,
                   {[&] {
                        show.ShowNext();
                        parallelFor(2, [&](int piece) { piece == 0 ? stage.Paint(0) : show.ReadAhead(); });
                    },
                    [&] { stage.Paint(0); },
                    {}});
    state.SetLabel("40 ms");
}

void computeItemRange(benchmark::State& state) {
    const int elements = int(state.range(0));
    const ResultModel model = QuadMesh::Opened(elements, steps);
    Table::Measure(state, elements,
                   {[&] { benchmark::DoNotOptimize(ComputeItemRange(stressPerNode, model, {})); },
                    [&] {
                        // The three items per node stand one after the other behind the elements' types.
                        const qint64 bytes = 3 * qint64(sizeof(double)) * model.Mesh.NodeCount;
                        for (const StepInfo& step : model.Steps) {
                            const qint64 from = step.FileOffset + qint64(sizeof(std::int32_t)) * elements;
                            readPlainly(model.FileHandle, from, from + bytes);
                        }
                    },
                    {}});
    state.SetLabel("ratio 1.5");
}

/// A step has come to the file: it is read on from where it ended, with the range of all steps, beside the same with
/// every step looked at again.
void followGrowth(benchmark::State& state) {
    constexpr int manySteps = 1000;
    const int elements = int(state.range(0));
    const ResultModel whole = QuadMesh::Opened(elements, manySteps, stressPerNode);
    const qint64 bytes = whole.Source->EndOf(manySteps - 1);
    ResultModel before;
    mdVelorinResultModel::LoadSettledFile(whole.FileName, whole.Source->EndOf(manySteps - 2), before);
    Session session;
    session.TakeUp(before, false);
    const ValueBounds known = *session.RangeOfAllSteps(stressPerNode);
    const auto follow = [&](bool grown) {
        session.TakeUp(before, false);
        session.HoldRange(stressPerNode, known);
        ResultModel more;
        mdVelorinResultModel::ExtendSettledFile(before, bytes, more);
        mdVelorinResultModel::LoadStep(manySteps - 1, stressPerNode, more, false, -1);
        session.TakeUpAnew(more, grown);
        session.FindRange(stressPerNode);
    };
    Table::Measure(state, elements, {[&] { follow(true); }, [&] { follow(false); }, {}});
}

} // namespace

BENCHMARK(play)->Arg(10000)->Arg(100000)->UseManualTime();
BENCHMARK(computeItemRange)->Arg(10000)->Arg(100000)->UseManualTime();
BENCHMARK(followGrowth)->Arg(10000)->UseManualTime();

int main(int argc, char** argv) {
    return Table::Main(argc, argv);
}
