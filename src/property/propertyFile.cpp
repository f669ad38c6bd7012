#include "property/propertyFile.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "app/mdTips.h"
#include "app/settingsStore.h"
#include "platform/base/Codepage.h"
#include "platform/base/NativePath.h"
#include "platform/base/Rounding.h"
#include "platform/base/WholeFile.h"
#include "property/clsXML.h"
#include "property/drawingElementTable.h"
#include "property/drawingElements.h"

namespace propertyFile {

namespace {

using drawingElements::Element;
using drawingElements::Elements;
using drawingElements::Held;

/// Hands `use` the value of an element.
template<class Use>
void withValue(const Element& element, ApplicationSettings& settings, ResultModel& model, const Use& use) {
    const auto pass = [&](auto field) {
        if constexpr (std::is_member_pointer_v<decltype(field)>)
            use(model.*field);
        else
            use(field(settings));
    };
    std::visit(pass, element.Value);
}

void readNumber(const QString& text, const Held& held, int shift, int& target) {
    const double number = std::clamp(mdTips::Val(text), held.Lowest, held.Highest) - shift;
    if (number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max())
        target = Round(number);
}

VectorItemSet itemSetOf(const clsXMLNode& node) {
    VectorItemSet set{{}, 0, 0};
    for (int i = 0; i < node.childNodes.Length(); ++i) {
        const clsXMLNode& child = *node.childNodes.Item(i);
        const QString name = child.nodeName.toLower();
        if (name == u"name")
            set.Name = child.Text;
        else if (name == u"horz")
            readNumber(child.Text, {}, 0, set.Horz);
        else if (name == u"vert")
            readNumber(child.Text, {}, 0, set.Vert);
    }
    return set;
}

/// Reads an element's node leniently, by the kind of what it is read into.
struct Reader {
    const Element& What;
    const clsXMLNode& Node;

    void operator()(int& target) const { readNumber(Node.Text, What.InFile, What.Shift, target); }
    void operator()(bool& target) const {
        if (What.IsDigit)
            target = mdTips::Val(Node.Text) != 0;
        else
            drawingElements::ReadBoolean(Node.Text, target);
    }
    void operator()(float& target) const { mdTips::Narrow(mdTips::Val(Node.Text), target); }
    void operator()(ColorRef& target) const { target = mdTips::ParseColor(Node.Text); }
    void operator()(VectorSettings& vector) const {
        const int count = Node.childNodes.Length();
        vector.ItemSetCount = count;
        vector.DefaultItemSet = -1;
        vector.ItemSets = QList<VectorItemSet>(count, {{}, 0, 0});
        for (int i = 0; i < count; ++i) {
            const clsXMLNode& child = *Node.childNodes.Item(i);
            if (child.nodeName.toLower() != u"itemset")
                continue;
            vector.ItemSets[i] = itemSetOf(child);
            // Any attribute marks the set, whatever its name and value.
            if (child.Attributes.Length() > 0)
                vector.DefaultItemSet = i;
        }
    }
};

/// Reads all that stands beneath `section`, whose path is `prefix`. It goes only as deep as the table's paths do.
void readSection(const clsXMLNode& section, const QString& prefix, ApplicationSettings& settings, ResultModel& model) {
    for (int i = 0; i < section.childNodes.Length(); ++i) {
        const clsXMLNode& node = *section.childNodes.Item(i);
        if (node.nodeName.contains(u'/'))
            continue;
        const QString path = prefix + node.nodeName.toLower();
        const QString asSection = path + u'/';
        for (const Element& element : Elements()) {
            const QStringView known = element.Path;
            if (known == path) {
                withValue(element, settings, model, Reader{element, node});
                break;
            }
            if (known.startsWith(asSection)) {
                readSection(node, asSection, settings, model);
                break;
            }
        }
    }
}

/// The lines of the file, indented by the sections that are open.
class Lines {
public:
    void Add(const QString& line) { text += QString(depth * 2, u' ') + line + u"\r\n"_s; }
    void Add(const QString& name, const QString& value) { Add(u'<' + name + u'>' + value + u"</"_s + name + u'>'); }
    void Open(const QString& name, const QString& attribute = {}) {
        Add(u'<' + name + attribute + u'>');
        ++depth;
    }
    void Close(const QString& name) {
        --depth;
        Add(u"</"_s + name + u'>');
    }
    QString Text() const { return text; }

private:
    QString text;
    int depth = 0;
};

/// Writes an element under its last name.
struct Writer {
    const Element& What;
    const QString& Name;
    Lines& To;

    void operator()(int value) const { To.Add(Name, QString::number(qint64(value) + What.Shift)); }
    void operator()(bool value) const {
        To.Add(Name, What.IsDigit ? (value ? u"1"_s : u"0"_s) : (value ? u"True"_s : u"False"_s));
    }
    void operator()(float value) const { To.Add(Name, NumberFormat::Format(value, u"0.00000e-0")); }
    void operator()(ColorRef value) const { To.Add(Name, mdTips::FormatColor(value, u"0x"_s)); }
    void operator()(const VectorSettings& vector) const {
        To.Open(Name);
        for (int i = 0; i < vector.ItemSetCount && i < vector.ItemSets.size(); ++i) {
            const VectorItemSet& set = vector.ItemSets[i];
            To.Open(u"itemset"_s, i == vector.DefaultItemSet ? u" default=\"true\""_s : QString());
            To.Add(u"name"_s, set.Name);
            To.Add(u"horz"_s, QString::number(set.Horz));
            To.Add(u"vert"_s, QString::number(set.Vert));
            To.Close(u"itemset"_s);
        }
        To.Close(Name);
    }
};

/// Calls `use` with an element's value and with what the program starts with in its place.
template<class Use>
void withDefault(const Element& element, ApplicationSettings& settings, ResultModel& model, const Use& use) {
    ApplicationSettings defaults;
    withValue(element, settings, model, [&](auto& value) {
        withValue(element, defaults, model, [&](auto& start) {
            if constexpr (std::is_same_v<decltype(value), decltype(start)>)
                use(value, start);
        });
    });
}

/// The whole file. The records come as copies of their own: the table reaches into what may be changed.
QString textOf(ApplicationSettings settings, ResultModel model) {
    Lines lines;
    lines.Add(u"<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>"_s);
    QStringList open;
    const auto closeTo = [&](qsizetype depth) {
        while (open.size() > depth)
            lines.Close(open.takeLast());
    };
    for (const Element& element : Elements()) {
        bool isDefault = false;
        withDefault(element, settings, model,
                    [&](const auto& value, const auto& start) { isDefault = value == start; });
        if (element.Optional && isDefault)
            continue;
        const QStringList path = QString(u"VRFPROPERTY/"_s + QStringView(element.Path)).split(u'/');
        const auto [differs, _] = std::mismatch(open.cbegin(), open.cend(), path.cbegin(), path.cend() - 1);
        closeTo(differs - open.cbegin());
        while (open.size() < path.size() - 1) {
            open.append(path[open.size()]);
            lines.Open(open.back());
        }
        withValue(element, settings, model, Writer{element, path.back(), lines});
    }
    closeTo(0);
    return lines.Text();
}

bool hasItsRoot(const clsXML& document) {
    return document.lastChild() && document.lastChild()->nodeName.toUpper() == u"VRFPROPERTY";
}

/// Whether what stands at `path` may be written over. Under its own name that is what a save is for; at the end of a
/// link it may be anything.
bool isOursToWrite(const QString& path) {
    std::error_code none;
    const std::filesystem::path file = NativePath::Of(path);
    const bool isFile = std::filesystem::is_regular_file(file, none);
    if (!std::filesystem::is_symlink(file, none) || !std::filesystem::exists(file, none) ||
        (isFile && std::filesystem::file_size(file, none) == 0))
        return true;
    clsXML document;
    return isFile && document.Load(path) && hasItsRoot(document);
}

} // namespace

QString PathFor(const QString& resultFile) {
    return resultFile + u".property"_s;
}

void ResetDrawingSettings(ApplicationSettings& settings, ResultModel& model) {
    model.CurrentStep = -1;
    model.CurrentItem = -1;
    settings.Vector.ItemSetCount = 0;
    settings.Vector.DefaultItemSet = -1;
    settings.Vector.ItemSets.clear();
    settings.Difference = {};
    settings.ValueDisplay = settings.HeaderDisplay = false;
    settingsStore::LoadDisplacementDefaults(settings.Displacement);
    settingsStore::LoadVectorDefaults(settings.Vector);
    settingsStore::LoadContourDefaults(settings.Contour);
}

bool LoadPropertyFile(ApplicationSettings& settings, ResultModel& model) {
    ResetDrawingSettings(settings, model);
    const QString path = PathFor(model.FileName);
    clsXML document;
    if (!mdApplication::FileExists(model.FileName) || !mdApplication::FileExists(path) || !document.Load(path))
        return false;
    if (!hasItsRoot(document))
        return true;
    for (const Element& element : Elements())
        if (element.Optional)
            withDefault(element, settings, model, [](auto& value, const auto& start) { value = start; });
    readSection(*document.lastChild(), {}, settings, model);
    return true;
}

QString SavePropertyFile(const ApplicationSettings& settings, const ResultModel& model) {
    const QString path = PathFor(model.FileName);
    if (!mdApplication::FileExists(model.FileName))
        return {};
    if (!isOursToWrite(path))
        return u"描画設定ファイルではないファイルへのリンクのため、保存しません。"_s + path;
    const auto problem = WholeFile::Write(path, Codepage::Encode(textOf(settings, model)));
    return problem ? u"描画設定を保存できません。"_s + *problem + u": "_s + path : QString();
}

} // namespace propertyFile
