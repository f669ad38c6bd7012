// Opening a file, loading a step and finding neighbours, each beside a plain read of the bytes that it concerns.
#include "PlainRead.h"
#include "QuadMesh.h"
#include "Table.h"

#include "result/mdVelorinResultModel.h"

namespace {

void open(const QString& path) {
    ResultModel model;
    mdVelorinResultModel::LoadResultFile(path, model);
    benchmark::DoNotOptimize(model);
}

/// The mesh and all that follows from it; the one step adds nothing to speak of.
void openMesh(benchmark::State& state) {
    const int elements = int(state.range(0));
    const ResultModel known = QuadMesh::Opened(elements, 1);
    Table::Measure(
        state, elements,
        {[&] { open(known.FileName); }, [&] { readPlainly(known.FileHandle, 0, known.FirstStepOffset); }, {}});
}

/// What further steps add to the opening, beside a read of the whole file.
void openSteps(benchmark::State& state) {
    const int elements = int(state.range(0));
    const QString oneStep = QuadMesh::File(elements, 1);
    const QString manySteps = QuadMesh::File(elements, int(state.range(1)));
    const ReadHandle file = ReadHandle::Open(manySteps);
    Table::Measure(state, elements,
                   {[&] { open(manySteps); }, [&] { readPlainly(file, 0, file.Size()); }, [&] { open(oneStep); }});
    state.SetLabel("ratio 0.1");
}

/// Another step each time, with the item of the second argument, beside a read of the step's bytes.
void loadStep(benchmark::State& state) {
    constexpr int steps = 10;
    const int elements = int(state.range(0));
    ResultModel model = QuadMesh::Opened(elements, steps);
    std::int32_t step = 0;
    Table::Measure(state, elements,
                   {[&] { mdVelorinResultModel::LoadStep(step, std::int32_t(state.range(1)), model, true, -1); },
                    [&] {
                        step = (step + 1) % (steps - 1);
                        readPlainly(model.FileHandle, model.Steps.at(step).FileOffset,
                                    model.Steps.at(step + 1).FileOffset);
                    },
                    {}});
    state.SetLabel("ratio 1.5");
}

void buildNeighbours(benchmark::State& state) {
    const int elements = int(state.range(0));
    ResultModel model = QuadMesh::Opened(elements, 1);
    const auto& corners = model.Mesh.Elements.NodeIndex;
    Table::Measure(state, elements,
                   {[&] {
                        model.Mesh.NeighbourBasis.clear();
                        mdVelorinResultModel::BuildElementNeighbours(model.Mesh);
                    },
                    [&] {
                        // The mesh's part of the file that says which element has which nodes.
                        const qint64 bytes = (corners.size() + elements) * qint64(sizeof(std::int32_t));
                        readPlainly(model.FileHandle, model.FirstStepOffset - bytes, model.FirstStepOffset);
                    },
                    {}});
    state.SetLabel("150 ns an element");
}

constexpr int nodeItem = 0;
constexpr int elementItem = 3;

} // namespace

BENCHMARK(openMesh)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime();
BENCHMARK(openSteps)->Args({10000, 1000})->Args({100000, 100})->Args({1000000, 10})->UseManualTime();
BENCHMARK(loadStep)->ArgsProduct({{10000, 100000, 1000000}, {nodeItem, elementItem}})->UseManualTime();
BENCHMARK(buildNeighbours)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime();

int main(int argc, char** argv) {
    return Table::Main(argc, argv);
}
