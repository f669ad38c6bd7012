// Fuzz target: any bytes as a plot's data file, read, drawn, written and read again, and the plot as a graph's text.
#include "Fuzz.h"
#include "platform/device/TraceDevice.h"
#include "plot/mdGraph.h"

namespace {

struct DataFile : Graph {
    void Read(const QString& path) { Plot.CsvLoad(path, false); }
    void Write(const QString& path) const { Plot.CsvSave(path); }
    bool Draw() {
        for (int s = 1; s <= Plot.DataLegendCount(); ++s)
            for (int point = 1; point <= Plot.DataCount(s); ++point)
                require(std::isfinite(Plot.DataBase(s, point)) && std::isfinite(Plot.DataPlot(s, point)), "numbers");
        for (const int type : {::GraphType::History, ::GraphType::Distribution}) {
            this->GraphType = type;
            const qsizetype lines = mdGraph::GraphText(*this, u'\t').count(u"\r\n"_s) + 1;
            require(lines == (type == ::GraphType::History ? 2 + std::max(Plot.DataCount(1), 0)
                                                           : 1 + 2 * Plot.DataLegendCount()),
                    "a line for each of its kind");
        }
        TraceDevice device(320, 240);
        Plot.SetDrawArea(0, 0, 320, 240);
        Plot.Redraw(&device, nullptr);
        return true;
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    readDrawWriteRead<DataFile>(data, size);
    return 0;
}
