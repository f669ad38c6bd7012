#include "property/drawingElements.h"

#include "app/NumberFormat.h"
#include "app/mdTips.h"
#include "property/drawingElementTable.h"

namespace drawingElements {

namespace {

bool readInt(const QString& text, const Held& held, int& target) {
    constexpr double lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();
    bool ok = false;
    const qlonglong number = text.trimmed().toLongLong(&ok);
    if (ok)
        target = int(std::clamp<qlonglong>(number, qlonglong(std::max(held.Lowest, lowest)),
                                           qlonglong(std::min(held.Highest, highest))));
    return ok;
}

bool addItemSet(const QString& text, VectorSettings& vector) {
    VectorItemSet set;
    if (text.count(u',') < 2 || !readInt(text.section(u',', -2, -2), {0}, set.Horz) ||
        !readInt(text.section(u',', -1), {0}, set.Vert))
        return false;
    set.Name = text.section(u',', 0, -3);
    if (set.Name.contains(u',')) {
        if (!set.Name.startsWith(u'"') || !set.Name.endsWith(u'"'))
            return false;
        set.Name = set.Name.sliced(1).chopped(1);
    }
    --set.Horz;
    --set.Vert;
    vector.ItemSets.append(set);
    vector.ItemSetCount = int(vector.ItemSets.size());
    vector.DefaultItemSet = vector.ItemSetCount - 1;
    return true;
}

/// Reads the text strictly, by the kind of what it is read into.
struct Reader {
    const Element& What;
    const QString& Text;

    bool operator()(int& target) const {
        int number = 0;
        const bool ok = readInt(Text, What.OnCommandLine, number);
        if (ok)
            target = number - What.Shift;
        return ok;
    }
    bool operator()(bool& target) const { return ReadBoolean(Text, target); }
    bool operator()(float& target) const {
        bool ok = false;
        const double number = Text.trimmed().toDouble(&ok);
        return ok && mdTips::Narrow(number, target);
    }
    bool operator()(ColorRef& target) const {
        const QString digits = Text.trimmed();
        const bool hexadecimal = digits.startsWith(u"0x", Qt::CaseInsensitive);
        bool ok = false;
        const ColorRef color = digits.mid(hexadecimal ? 2 : 0).toUInt(&ok, hexadecimal ? 16 : 10);
        constexpr ColorRef white = 0xffffff;
        if (!ok || color > white)
            return false;
        target = color;
        return true;
    }
    bool operator()(VectorSettings& vector) const { return addItemSet(Text, vector); }
};

/// The text that `Reader` makes the value of.
struct Writer {
    const Element& What;

    QString operator()(int value) const { return QString::number(value + What.Shift); }
    QString operator()(bool value) const { return value ? u"True"_s : u"False"_s; }
    QString operator()(float value) const { return NumberFormat::Shortest(value); }
    QString operator()(ColorRef value) const { return u"0x"_s + QString::number(value, 16); }
    QString operator()(const VectorSettings& vector) const {
        if (vector.DefaultItemSet < 0 || vector.DefaultItemSet >= vector.ItemSets.size())
            return {};
        const auto& [name, horz, vert] = vector.ItemSets.at(vector.DefaultItemSet);
        const QString quote = name.contains(u',') ? u"\""_s : QString();
        return quote + name + quote + u',' + QString::number(horz + 1) + u',' + QString::number(vert + 1);
    }
};

bool isOfModel(const Element& element) {
    return std::holds_alternative<std::int32_t ResultModel::*>(element.Value);
}

/// Where the file has the list, the command line has one entry of it.
QString pathOf(const Element& element) {
    const QString path = QStringView(element.Path).toString();
    const bool isList = std::holds_alternative<VectorSettings& (*)(ApplicationSettings&)>(element.Value);
    return isList ? path + u"/itemset"_s : path;
}

} // namespace

bool Set(const QString& path, const QString& text, ApplicationSettings& settings) {
    for (const Element& element : Elements()) {
        if (path.compare(pathOf(element), Qt::CaseInsensitive) != 0)
            continue;
        const auto read = [&](auto field) {
            if constexpr (std::is_member_pointer_v<decltype(field)>)
                return false;
            else
                return Reader{element, text}(field(settings));
        };
        return std::visit(read, element.Value);
    }
    return false;
}

QStringList Assignments(const ApplicationSettings& settings) {
    ApplicationSettings from, to = settings;
    QStringList assignments;
    for (const Element& element : Elements()) {
        const auto text = [&](ApplicationSettings& record) {
            return std::visit(
                [&](auto field) {
                    if constexpr (std::is_member_pointer_v<decltype(field)>)
                        return QString();
                    else
                        return Writer{element}(field(record));
                },
                element.Value);
        };
        if (const QString value = text(to); value != text(from))
            assignments += pathOf(element) + u'=' + value;
    }
    return assignments;
}

QStringList Paths() {
    QStringList paths;
    for (const Element& element : Elements())
        if (!isOfModel(element))
            paths.append(pathOf(element));
    return paths;
}

bool ReadBoolean(const QString& text, bool& target) {
    const QString word = text.trimmed().toLower();
    int number = 0;
    if (word == u"true" || word == u"false")
        target = word == u"true";
    else if (readInt(word, {}, number))
        target = number != 0;
    else
        return false;
    return true;
}

} // namespace drawingElements
