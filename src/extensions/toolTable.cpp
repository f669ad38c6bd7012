#include "extensions/toolTable.h"

#include "app/clsRegEdit.h"
#include "app/mdApplication.h"
#include "app/settingsStore.h"
#include "platform/base/DetachedProcess.h"

namespace {

constexpr quint32 root = Registry::HKEY_CURRENT_USER;

QString tableKey() {
    return settingsStore::RootKey + u"\\Tools"_s;
}

void takeValue(const QString& name, const QVariant& value, ToolEntry& tool) {
    if (name == u"name")
        tool.Name = value.toString();
    else if (name == u"description")
        tool.Description = value.toString();
    else if (name == u"module")
        tool.Module = value.toString();
    else if (name == u"icon")
        tool.Icon = int(mdTips::Val(value.toString()));
    else if (name == u"args")
        tool.Args = value.toString();
    else if (name == u"wait")
        tool.Wait = mdTips::Val(value.toString()) != 0;
}

bool readToolEntry(const QString& subKey, ToolEntry& tool) {
    clsRegEdit key;
    if (!key.OpenRegKey(root, tableKey() + u'\\' + subKey))
        return false;
    QString name;
    int type = 0, size = 0;
    QVariant value;
    for (int i = 0; key.EnumRegValue(i, name, type, value, size); ++i)
        takeValue(name.toLower(), value, tool);
    tool.Missing = !mdApplication::FileExists(toolTable::ProgramOf(tool));
    return true;
}

bool writeToolEntry(const QString& subKey, const ToolEntry& tool) {
    clsRegEdit key;
    if (!key.OpenRegKey(root, tableKey() + u'\\' + subKey))
        return false;
    const auto text = [&](const QString& name, const QString& value) {
        return key.SetRegValue(name, Registry::REG_SZ, value);
    };
    return text(u"Name"_s, tool.Name) && text(u"Description"_s, tool.Description) && text(u"Module"_s, tool.Module) &&
           key.SetRegValue(u"Icon"_s, Registry::REG_DWORD, tool.Icon) && text(u"Args"_s, tool.Args) &&
           key.SetRegValue(u"Wait"_s, Registry::REG_DWORD, int(tool.Wait));
}

/// Takes a command line apart, character by character.
class Splitter {
public:
    void Take(QChar c) {
        if (escaped)
            takeEscaped(c);
        else if (c == u'\\' && quote != u'\'')
            escaped = true;
        else if (!quote.isNull())
            c == quote ? void(quote = {}) : put(c);
        else if (c == u'"' || c == u'\'')
            begin(c);
        else if (c.isSpace())
            end();
        else
            put(c);
    }

    QStringList Result() {
        if (escaped)
            put(u'\\');
        end();
        return arguments;
    }

private:
    void takeEscaped(QChar c) {
        escaped = false;
        if (!quote.isNull() && c != quote && c != u'\\')
            put(u'\\');
        put(c);
    }
    void begin(QChar c) {
        quote = c;
        inside = true;
    }
    void put(QChar c) {
        argument += c;
        inside = true;
    }
    void end() {
        if (inside)
            arguments += argument;
        argument.clear();
        inside = false;
    }

    QStringList arguments;
    QString argument;
    bool inside = false; ///< an argument, which may be empty yet
    bool escaped = false;
    QChar quote; ///< that is open; null outside
};

} // namespace

std::vector<ToolEntry> toolTable::LoadTools() {
    std::vector<ToolEntry> tools;
    const Registry::Transaction oneState(Registry::Access::Read);
    clsRegEdit table;
    // Opening would make the key.
    if (!table.CheckRegKey(root, tableKey()) || !table.OpenRegKey(root, tableKey()))
        return tools;
    QString name;
    for (int i = 0; table.EnumRegSubKey(i, name); ++i)
        if (ToolEntry tool; readToolEntry(name, tool))
            tools.push_back(tool);
    return tools;
}

bool toolTable::SaveTools(const std::vector<ToolEntry>& tools) {
    Registry::Transaction together;
    Registry::DeleteTree(root, tableKey());
    clsRegEdit table;
    if (!table.OpenRegKey(root, tableKey()))
        return false;
    for (std::size_t i = 0; i < tools.size(); ++i)
        if (!writeToolEntry(u"%1"_s.arg(i + 1, 4, 10, QChar(u'0')), tools[i]))
            return false;
    return together.Commit();
}

QString toolTable::ProgramOf(const ToolEntry& tool) {
    const QString& path = tool.Module;
    const bool quoted = path.size() >= 2 && path.front() == u'"' && path.back() == u'"';
    return quoted ? path.sliced(1, path.size() - 2) : path;
}

LabelMacros toolTable::BuildToolMacros(const QString& fileName, const QString& programFolder) {
    return {{u"%f"_s, fileName},
            {u"%p"_s, mdApplication::PathPart(fileName, mdApplication::Folder)},
            {u"%a"_s, programFolder + u'/'},
            {u"%r"_s, settingsStore::RootKey.toString()},
            {u"%t"_s, tableKey()}};
}

QStringList toolTable::SplitArguments(const QString& text) {
    Splitter splitter;
    for (const QChar c : text)
        splitter.Take(c);
    return splitter.Result();
}

std::optional<QString> toolTable::RunTool(const ToolEntry& tool, const LabelMacros& macros) {
    const QString refusal = u"このモジュールを実行することはできません。"_s;
    if (tool.Missing)
        return refusal;
    QStringList arguments = SplitArguments(tool.Args);
    for (QString& argument : arguments)
        argument = mdTips::ExpandLabelMacros(argument, macros);
    if (const auto problem = DetachedProcess::Start(ProgramOf(tool), arguments))
        return QString(refusal + u"\r\n"_s + ProgramOf(tool) + u"\r\n"_s + *problem);
    return {};
}
