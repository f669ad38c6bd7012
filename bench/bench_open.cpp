// Opening the files of other programs, each beside the same mesh and values in a file of our own.
#include "OtherFormats.h"
#include "Table.h"

#include "result/StepSampler.h"
#include "result/mdVelorinResultModel.h"

#include <malloc.h>

namespace {

ResultModel opened(const QString& path) {
    ResultModel model;
    if (!mdVelorinResultModel::LoadResultFile(path, model))
        qFatal("%s cannot be read", qPrintable(path));
    return model;
}

/// Gives memory back to the system, so that a file is opened as by a program that has just begun. With memory at hand
/// from the file before, our own opens in half the time, a text hardly sooner.
void asAtFirst() {
    malloc_trim(0);
}

void open(benchmark::State& state) {
    const int nodes = int(state.range(0)), form = int(state.range(1));
    const QString path = OtherFormats::File(nodes, form), own = OtherFormats::File(nodes, 0);
    Table::Measure(state, nodes, {[&] { opened(path); }, [&] { opened(own); }, {}, asAtFirst});
    state.SetLabel(OtherFormats::Forms()[std::size_t(form)].toStdString() + ", ratio 3");
}

/// The same with all values of a step.
void openAndLoad(benchmark::State& state) {
    const int nodes = int(state.range(0)), form = int(state.range(1));
    const QString path = OtherFormats::File(nodes, form), own = OtherFormats::File(nodes, 0);
    // A source keeps what it has read.
    const auto load = [](const QString& file) {
        ResultModel fresh = opened(file);
        mdVelorinResultModel::LoadStep(0, 0, fresh, true, -1);
    };
    Table::Measure(state, nodes, {[&] { load(path); }, [&] { load(own); }, {}});
    state.SetLabel(OtherFormats::Forms()[std::size_t(form)].toStdString());
}

/// The history of one node over many steps.
void history(benchmark::State& state) {
    constexpr int steps = 20;
    const int nodes = int(state.range(0)), form = int(state.range(1));
    const auto read = [](const ResultModel& model) {
        const StepSampler sampler(model, 4, std::array{model.Mesh.NodeCount / 2}, -1);
        for (std::int32_t step = 0; step < model.StepCount; ++step)
            benchmark::DoNotOptimize(sampler.Read(step));
    };
    const ResultModel own = opened(OtherFormats::File(nodes, 0, steps));
    const ResultModel model = opened(OtherFormats::File(nodes, form, steps));
    Table::Measure(state, steps, {[&] { read(model); }, [&] { read(own); }, {}});
    state.SetLabel(OtherFormats::Forms()[std::size_t(form)].toStdString() + ", ns a step");
}

void everyForm(benchmark::internal::Benchmark* row) {
    for (std::size_t form = 1; form < OtherFormats::Forms().size(); ++form)
        row->Args({490000, int(form)});
}

} // namespace

BENCHMARK(open)->Apply(everyForm)->UseManualTime();
BENCHMARK(openAndLoad)->Apply(everyForm)->UseManualTime();
BENCHMARK(history)->ArgsProduct({{100000}, {5, 7, 8, 9}})->UseManualTime();

int main(int argc, char** argv) {
    return Table::Main(argc, argv);
}
