#include "property/drawingElements.h"

#include <cmath>
#include <limits>

namespace drawingElements {

namespace {

using Setter = bool (*)(ApplicationSettings&, const QString&);

struct Row {
    const char16_t* path;
    Setter set;
};

bool readInt(const QString& text, int lowest, int highest, int& target) {
    bool ok = false;
    const qlonglong number = text.trimmed().toLongLong(&ok);
    if (ok)
        target = int(std::clamp<qlonglong>(number, lowest, highest));
    return ok;
}

bool readReal(const QString& text, float& target) {
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    const bool fits = ok && std::abs(number) <= double(std::numeric_limits<float>::max());
    if (fits)
        target = float(number);
    return fits;
}

/// The words "True" and "False" in any case, or a number, true when not 0.
bool readBool(const QString& text, bool& target) {
    const QString word = text.trimmed().toLower();
    int number = 0;
    if (word == u"true" || word == u"false")
        target = word == u"true";
    else if (readInt(word, -1, 1, number))
        target = number != 0;
    else
        return false;
    return true;
}

bool readColour(const QString& text, Colour& target) {
    const QString digits = text.trimmed();
    const bool hexadecimal = digits.startsWith(u"0x", Qt::CaseInsensitive);
    bool ok = false;
    const Colour colour = (hexadecimal ? digits.mid(2) : digits).toUInt(&ok, hexadecimal ? 16 : 10);
    constexpr Colour white = 0xffffff;
    if (!ok || colour > white)
        return false;
    target = colour;
    return true;
}

bool addItemSet(const QString& text, VectorSettings& vector) {
    const QStringList fields = text.split(u',');
    VectorItemSet set;
    int horz = 0, vert = 0;
    constexpr int most = std::numeric_limits<int>::max();
    if (fields.size() != 3 || !readInt(fields[1], 0, most, horz) || !readInt(fields[2], 0, most, vert))
        return false;
    set.Name = fields[0];
    set.Horz = horz - 1;
    set.Vert = vert - 1;
    vector.ItemSets.append(set);
    vector.ItemSetCount = int(vector.ItemSets.size());
    vector.DefaultItemSet = vector.ItemSetCount - 1;
    return true;
}

constexpr int noLimit = std::numeric_limits<int>::max();

constexpr Row rows[] = {
    {u"difference/std",
     [](ApplicationSettings& s, const QString& text) {
         int number = 0;
         const bool ok = readInt(text, 0, noLimit, number);
         if (ok)
             s.Difference.StandardStep = number - 1;
         return ok;
     }},
    {u"difference/dsp", [](auto& s, const QString& t) { return readBool(t, s.Difference.ApplyDisplacement); }},
    {u"difference/vct", [](auto& s, const QString& t) { return readBool(t, s.Difference.ApplyVector); }},
    {u"difference/cnt", [](auto& s, const QString& t) { return readBool(t, s.Difference.ApplyContour); }},
    {u"difference/val", [](auto& s, const QString& t) { return readBool(t, s.Difference.ApplyValue); }},
    {u"value/disp", [](auto& s, const QString& t) { return readBool(t, s.ValueDisplay); }},
    {u"displacement/legend", [](auto& s, const QString& t) { return readBool(t, s.Displacement.Legend); }},
    {u"displacement/orgmesh", [](auto& s, const QString& t) { return readBool(t, s.Displacement.Original); }},
    {u"displacement/fid", [](auto& s, const QString& t) { return readInt(t, 0, 3, s.Displacement.Fiducial); }},
    {u"displacement/scale", [](auto& s, const QString& t) { return readInt(t, 0, noLimit, s.Displacement.Scale); }},
    {u"vector/legend", [](auto& s, const QString& t) { return readBool(t, s.Vector.Legend); }},
    {u"vector/fid", [](auto& s, const QString& t) { return readInt(t, 0, 2, s.Vector.Fiducial); }},
    {u"vector/scale", [](auto& s, const QString& t) { return readInt(t, 0, noLimit, s.Vector.Scale); }},
    {u"vector/items/itemset", [](auto& s, const QString& t) { return addItemSet(t, s.Vector); }},
    {u"contour/legend", [](auto& s, const QString& t) { return readBool(t, s.Contour.Legend); }},
    {u"contour/reverse", [](auto& s, const QString& t) { return readBool(t, s.Contour.Reverse); }},
    {u"contour/values/automatic", [](auto& s, const QString& t) { return readBool(t, s.Contour.Automatic); }},
    {u"contour/values/max", [](auto& s, const QString& t) { return readReal(t, s.Contour.MaxValue); }},
    {u"contour/values/min", [](auto& s, const QString& t) { return readReal(t, s.Contour.MinValue); }},
    {u"contour/values/div", [](auto& s, const QString& t) { return readInt(t, 0, noLimit, s.Contour.Divide); }},
    {u"contour/colors/index", [](auto& s, const QString& t) { return readInt(t, 0, 5, s.Contour.ColorIndex); }},
    {u"contour/colors/min", [](auto& s, const QString& t) { return readColour(t, s.Contour.Colors[0]); }},
    {u"contour/colors/mid", [](auto& s, const QString& t) { return readColour(t, s.Contour.Colors[1]); }},
    {u"contour/colors/max", [](auto& s, const QString& t) { return readColour(t, s.Contour.Colors[2]); }},
};

} // namespace

bool Set(const QString& path, const QString& text, ApplicationSettings& settings) {
    for (const Row& row : rows)
        if (path.compare(QStringView(row.path), Qt::CaseInsensitive) == 0)
            return row.set(settings, text);
    return false;
}

QStringList Paths() {
    QStringList paths;
    for (const Row& row : rows)
        paths.append(QStringView(row.path).toString());
    return paths;
}

} // namespace drawingElements
