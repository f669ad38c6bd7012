// Fuzz target: any bytes as a plot's data file, read, drawn, written and read again.
#include "Fuzz.h"
#include "platform/device/TraceDevice.h"
#include "plot/clsPlot.h"

namespace {

struct DataFile : clsPlot {
    void Read(const QString& path) { CsvLoad(path, false); }
    void Write(const QString& path) const { CsvSave(path); }
    bool Draw() {
        for (int s = 1; s <= DataLegendCount(); ++s)
            for (int point = 1; point <= DataCount(s); ++point)
                require(std::isfinite(DataBase(s, point)) && std::isfinite(DataPlot(s, point)), "numbers");
        TraceDevice device(320, 240);
        SetDrawArea(0, 0, 320, 240);
        Redraw(&device, nullptr);
        return true;
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    readDrawWriteRead<DataFile>(data, size);
    return 0;
}
