// Fuzz target: any bytes as the drawing property file beside a result file; what it gave is written and read again.
#include "property/propertyFile.h"
#include "Fuzz.h"

namespace {

struct DrawingFile {
    ApplicationSettings Settings;
    ResultModel Model;

    void Read(const QString& path) {
        Model.FileName = path.chopped(propertyFile::PathFor({}).size());
        QFile(Model.FileName).open(QIODevice::WriteOnly); // it only counts beside a file
        propertyFile::LoadPropertyFile(Settings, Model);
    }
    void Write(const QString&) const { propertyFile::SavePropertyFile(Settings, Model); }
    bool Draw() const {
        const ApplicationSettings& s = Settings;
        const auto within = [](int value, int lowest, int highest) { return value >= lowest && value <= highest; };
        require(within(s.Displacement.Fiducial, 0, 2) && within(s.Vector.Fiducial, 0, 2), "scale modes");
        require(within(s.Contour.ColorIndex, 0, 5), "colour scheme");
        require(s.Displacement.Scale >= 0 && s.Vector.Scale >= 0 && s.Contour.Divide >= 0, "nothing below 0");
        require(s.Vector.ItemSetCount == s.Vector.ItemSets.size(), "as many item sets as the count says");
        require(within(s.Vector.DefaultItemSet, -1, s.Vector.ItemSetCount - 1), "the set in use is one");
        // Names with tags or line ends in them, which text behind a child element can leave, don't come back.
        return std::ranges::none_of(s.Vector.ItemSets, [](const VectorItemSet& set) {
            return set.Name.contains(u'<') || set.Name.contains(u"\r\n"_s);
        });
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    readDrawWriteRead<DrawingFile>(data, size);
    return 0;
}
