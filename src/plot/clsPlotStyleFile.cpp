// The plot's style file: background and scales as lines of "key=value".
#include "plot/clsPlot.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "platform/base/NativePath.h"
#include "platform/base/Rounding.h"
#include "platform/base/WholeFile.h"

#include <QFile>
#include <QImageReader>
#include <variant>

namespace {

constexpr qint64 largestFile = qint64(1) << 20;
constexpr qint64 mostPixels = qint64(32) << 20;
constexpr int widestLine = 32767;    ///< device units
constexpr double largestFont = 1638; ///< points
constexpr qsizetype longestFace = 255;

/// What is particular to the values of a key.
enum class Kind {
    Plain,
    Width,          ///< of a line, held within 0 to `widestLine`
    ColorFromNumber ///< read as a number first, so that the "0x" of what is written reads as 0
};

using Field = std::variant<bool PlotScale::*, int PlotScale::*, float PlotScale::*, ColorRef PlotScale::*,
                           QString FontObject::*, double FontObject::*, bool FontObject::*>;

struct ScaleKey {
    QStringView Written;
    QStringView Read;
    Field What;
    Kind Is = Kind::Plain;
};

/// The keys of a scale in the order of the file. Files in use have the grid's width under a key that isn't read.
const ScaleKey scaleKeys[] = {
    {u"draw", u"draw", &PlotScale::ScaleDraw},
    {u"auto", u"auto", &PlotScale::ScaleAutomatic},
    {u"rev", u"rev", &PlotScale::ScaleReverse},
    {u"posrev", u"posrev", &PlotScale::ScalePosReverse},
    {u"svalue", u"svalue", &PlotScale::ScaleValueDraw},
    {u"max", u"max", &PlotScale::ScaleMax},
    {u"min", u"min", &PlotScale::ScaleMin},
    {u"mscale", u"mscale", &PlotScale::ScaleMScale},
    {u"hscale", u"hscale", &PlotScale::ScaleHScale},
    {u"lcolor", u"lcolor", &PlotScale::ScaleLineColor},
    {u"lwidth", u"lwidth", &PlotScale::ScaleLineWidth, Kind::Width},
    {u"lstyle", u"lstyle", &PlotScale::ScaleLineStyle},
    {u"grid", u"grid", &PlotScale::GridDraw},
    {u"glcolor", u"glcolor", &PlotScale::GridColor, Kind::ColorFromNumber},
    {u"glwiwdth", u"glwidth", &PlotScale::GridWidth, Kind::Width},
    {u"glstyle", u"glstyle", &PlotScale::GridStyle},
    {u"fname", u"fname", &FontObject::Name},
    {u"fsize", u"fsize", &FontObject::Size},
    {u"fbold", u"fbold", &FontObject::Bold},
    {u"fitalic", u"fitalic", &FontObject::Italic},
    {u"fundln", u"fundln", &FontObject::Underline},
    {u"fcolor", u"fcolor", &PlotScale::ScaleFontColor},
};

int numberOf(const QString& text) {
    return Round(mdTips::Val(text));
}

struct ValueText {
    QString operator()(bool value) const { return value ? u"1"_s : u"0"_s; }
    QString operator()(int value) const { return QString::number(value); }
    /// From the single's shortest form: widened as it is, the single of 0.01 would lie below 0.01.
    QString operator()(float value) const {
        return mdApplication::FormatAutoNumber(NumberFormat::Shortest(value).toDouble(), 3, true);
    }
    QString operator()(ColorRef value) const { return mdTips::FormatColor(value, u"0x"_s); }
    QString operator()(const QString& value) const { return value; }
    QString operator()(double value) const { return NumberFormat::Shortest(value); }
};

/// Takes a value from its text; what can't be had leaves the target as it is.
struct ValueReader {
    const QString& Text;
    Kind Is;

    void operator()(bool& target) const { target = numberOf(Text) != 0; }
    void operator()(int& target) const {
        target = Is == Kind::Width ? std::clamp(numberOf(Text), 0, widestLine) : numberOf(Text);
    }
    void operator()(float& target) const { mdTips::Narrow(mdTips::Val(Text), target); }
    void operator()(ColorRef& target) const {
        const bool asNumber = Is == Kind::ColorFromNumber;
        target = mdTips::ParseColor(asNumber ? NumberFormat::Shortest(mdTips::Val(Text)) : Text);
    }
    void operator()(QString& face) const {
        if (!Text.isEmpty())
            face = Text.left(longestFace);
    }
    void operator()(double& points) const {
        if (const double number = mdTips::Val(Text); number >= 1)
            points = std::min(number, largestFont);
    }
};

QString keyLine(QStringView key, const QString& value) {
    return u"    "_s + key + u'=' + value + u"\r\n"_s;
}

QString scaleBlock(const PlotScale& scale) {
    QString block;
    for (const ScaleKey& key : scaleKeys) {
        const auto add = [&](const auto& value) { block += keyLine(key.Written, ValueText()(value)); };
        const auto addField = [&]<class Record, class T>(T Record::*field) {
            if constexpr (std::is_same_v<Record, PlotScale>)
                add(scale.*field);
            else if (scale.ScaleFont)
                add((*scale.ScaleFont).*field);
        };
        std::visit(addField, key.What);
    }
    return block + u"\r\n"_s;
}

void readScaleKey(PlotScale& scale, const QString& name, const QString& text) {
    const auto* const key = std::ranges::find(scaleKeys, QStringView(name), &ScaleKey::Read);
    if (key == std::end(scaleKeys))
        return;
    const auto read = [&]<class Record, class T>(T Record::*field) {
        const ValueReader reader{text, key->Is};
        if constexpr (std::is_same_v<Record, PlotScale>) {
            reader(scale.*field);
        } else {
            if (!scale.ScaleFont)
                scale.ScaleFont = std::make_shared<FontObject>(FontObject{.Name = u"ＭＳ ゴシック"_s});
            reader((*scale.ScaleFont).*field);
        }
    };
    std::visit(read, key->What);
}

void savePicture(const QImage& picture, const QString& path) {
    WholeFile file(path);
    if (picture.save(&file, "BMP"))
        file.Commit();
}

/// False, and `picture` stays, for what is no picture or a huge one. A pipe, which might never end, isn't opened.
bool loadPicture(const QString& path, QImage& picture) {
    static const QList<QByteArray> formats{"bmp", "gif", "jpeg", "png"};
    QFile file;
    if (!mdApplication::FileExists(path) || NativePath::OpenToRead(path, file))
        return false;
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    const QSize size = formats.contains(reader.format()) ? reader.size() : QSize();
    if (size.isEmpty() || qint64(size.width()) * size.height() > mostPixels)
        return false;
    const QImage read = reader.read();
    if (read.isNull())
        return false;
    picture = read;
    return true;
}

} // namespace

void clsPlot::StyleSave(const QString& path) const {
    const ValueText textOf;
    QString text = u"CPS10#\r\n#         - Graph Style - \r\n#           for cPlot version "_s + Version() +
                   u"\r\n#\r\n[GENERAL]\r\n"_s + keyLine(u"orientation", textOf(Orientation)) +
                   keyLine(u"background", textOf(BackStyle)) + keyLine(u"backcolor", textOf(BackColor));
    if (BackStyle >= 2 && BackStyle <= 4) {
        const QString picturePath = mdTips::AddTrailingChar(PictureFolder) + u"_back.bmp"_s;
        savePicture(Picture, picturePath);
        text += keyLine(u"picture", picturePath);
    }
    text += u"\r\n[SCALE_BASE]\r\n"_s + scaleBlock(scales[ScaleBase]) + u"[SCALE_PLOT]\r\n"_s +
            scaleBlock(scales[ScalePlot]);
    mdTips::WriteTextFile(path, text);
}

void clsPlot::StyleLoad(const QString& path) {
    const QString text = mdTips::ReadTextFile(path, largestFile);
    QStringView rest = text;
    KeyValue record;
    PlotScale* scale = nullptr;
    QStringList pictures;
    while (mdTips::ReadKeyValueLine(rest, record)) {
        const QString key = record.Key.toLower();
        if (key == u"[general]")
            scale = nullptr;
        else if (key == u"[scale_base]")
            scale = &scales[ScaleBase];
        else if (key == u"[scale_plot]")
            scale = &scales[ScalePlot];
        else if (key == u"orientation")
            Orientation = numberOf(record.Value);
        else if (key == u"background")
            BackStyle = numberOf(record.Value);
        else if (key == u"backcolor")
            BackColor = mdTips::ParseColor(record.Value);
        else if (key == u"picture")
            pictures.prepend(record.Value);
        else if (scale)
            readScaleKey(*scale, key, record.Value);
    }
    // The last picture that can be had counts; those before it aren't read, lest a small file keep the program busy.
    pictures.removeDuplicates();
    for (const QString& picture : pictures)
        if (loadPicture(picture, Picture))
            break;
}
