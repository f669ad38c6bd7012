// Opening the files of other programs, each beside the same mesh and values in a file of our own.
#include "OtherFormats.h"
#include "Table.h"

#include "result/mdVelorinResultModel.h"

namespace {

ResultModel opened(const QString& path) {
    ResultModel model;
    if (!mdVelorinResultModel::LoadResultFile(path, model))
        qFatal("%s cannot be read", qPrintable(path));
    return model;
}

void open(benchmark::State& state) {
    const int nodes = int(state.range(0)), form = int(state.range(1));
    const QString path = OtherFormats::File(nodes, form), own = OtherFormats::File(nodes, 0);
    Table::Measure(state, nodes, {[&] { opened(path); }, [&] { opened(own); }, {}});
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

void everyForm(benchmark::internal::Benchmark* row) {
    for (std::size_t form = 1; form < OtherFormats::Forms().size(); ++form)
        row->Args({490000, int(form)});
}

} // namespace

BENCHMARK(open)->Apply(everyForm)->UseManualTime();
BENCHMARK(openAndLoad)->Apply(everyForm)->UseManualTime();

int main(int argc, char** argv) {
    return Table::Main(argc, argv);
}
