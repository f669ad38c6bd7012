// Fuzz target: any bytes as the drawing property file beside a result file; what it gave is written and read again.
#include "property/propertyFile.h"
#include "Fuzz.h"

#include <QTemporaryDir>

namespace {

/// A folder for the two files. There is no store of settings, which would cost far more than the reading.
struct Place {
    QTemporaryDir Folder;
    QString ResultFile = Folder.filePath(u"r.vrf"_s);
    QFile Property{propertyFile::PathFor(ResultFile)};

    Place() {
        qputenv("XDG_CONFIG_HOME", "/dev/null");
        QFile file(ResultFile);
        require(file.open(QIODevice::WriteOnly), "a folder to write to");
    }
};

struct Drawing {
    ApplicationSettings Settings;
    ResultModel Model;

    explicit Drawing(const Place& place) {
        Model.FileName = place.ResultFile;
        propertyFile::LoadPropertyFile(Settings, Model);
    }
};

void requireRanges(const ApplicationSettings& s) {
    const auto within = [](int value, int highest) { return value >= 0 && value <= highest; };
    require(within(s.Displacement.Fiducial, 2) && within(s.Vector.Fiducial, 2), "scale modes");
    require(within(s.Contour.ColorIndex, 5), "colour scheme");
    require(s.Displacement.Scale >= 0 && s.Vector.Scale >= 0 && s.Contour.Divide >= 0, "nothing below 0");
    require(s.Vector.ItemSetCount == s.Vector.ItemSets.size(), "as many item sets as the count says");
    require(s.Vector.DefaultItemSet >= -1 && s.Vector.DefaultItemSet < s.Vector.ItemSetCount, "the set in use is one");
}

/// Names with tags or line ends in them, which text behind a child element can leave, don't come back.
bool namesComeBack(const VectorSettings& vector) {
    return std::none_of(vector.ItemSets.begin(), vector.ItemSets.end(), [](const VectorItemSet& set) {
        return set.Name.contains(u'<') || set.Name.contains(u"\r\n"_s);
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Place place;
    place.Property.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    place.Property.write(reinterpret_cast<const char*>(data), qint64(size));
    place.Property.close();
    Drawing read(place);
    requireRanges(read.Settings);
    if (!namesComeBack(read.Settings.Vector))
        return 0;

    // What the file's forms don't hold is lost the first time; from then on all comes back.
    propertyFile::SavePropertyFile(read.Settings, read.Model);
    const Drawing again(place);
    propertyFile::SavePropertyFile(again.Settings, again.Model);
    const Drawing last(place);
    require(last.Settings == again.Settings, "the settings come back");
    require(last.Model.CurrentStep == read.Model.CurrentStep, "the step comes back");
    require(last.Model.CurrentItem == read.Model.CurrentItem, "the item comes back");
    return 0;
}
