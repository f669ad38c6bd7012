#include "property/drawingElements.h"

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
    const QStringList fields = text.split(u',');
    VectorItemSet set;
    if (fields.size() != 3 || !readInt(fields[1], {0}, set.Horz) || !readInt(fields[2], {0}, set.Vert))
        return false;
    set.Name = fields[0];
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
