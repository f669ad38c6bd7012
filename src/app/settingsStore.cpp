#include "app/settingsStore.h"

#include "app/clsRegEdit.h"
#include "app/mdTips.h"
#include "app/settingsTable.h"

#include <QLocale>
#include <QtEndian>

namespace settingsStore {
namespace {
using namespace settingsTable;

bool open(clsRegEdit& key, QStringView section) {
    return key.OpenRegKey(Registry::HKEY_CURRENT_USER, RootKey + section);
}

/// Nothing when the value has no text to read a number from.
std::optional<double> numberFrom(const QVariant& value) {
    if (value.typeId() != QMetaType::QString && value.typeId() != QMetaType::Int)
        return {};
    return mdTips::Val(value.toString());
}

std::optional<int> integerFrom(const QVariant& value) {
    const auto number = numberFrom(value);
    const double whole = std::nearbyint(number.value_or(0));
    if (!number || whole < INT_MIN || whole > INT_MAX)
        return {};
    return int(whole);
}

QByteArray bytesOf(const Words& words) {
    QByteArray bytes(words.Count * 4, Qt::Uninitialized);
    for (int i = 0; i < words.Count; ++i)
        qToLittleEndian(*words.At[i], bytes.data() + i * 4);
    return bytes;
}

void fillFront(const Words& words, const QByteArray& front) {
    QByteArray bytes = bytesOf(words);
    std::copy_n(front.begin(), std::min(front.size(), bytes.size()), bytes.begin());
    for (int i = 0; i < words.Count; ++i)
        *words.At[i] = qFromLittleEndian<quint32>(bytes.constData() + i * 4);
}

/// Puts a value from the registry into its field; one that doesn't fit leaves the field.
struct Taker {
    const QVariant& Value;
    int Least = INT_MIN;
    int Most = INT_MAX;

    void operator()(bool* field) const { *field = numberFrom(Value).value_or(*field) != 0; }
    void operator()(std::int32_t* field) const {
        if (const auto number = integerFrom(Value))
            *field = std::clamp(*number, Least, Most);
    }
    void operator()(double* field) const {
        if (const auto number = numberFrom(Value))
            *field = std::clamp<double>(*number, Least, Most);
    }
    void operator()(ColorRef* field) const { *field = ColorRef(integerFrom(Value).value_or(int(*field))); }
    void operator()(QString* field) const {
        if (Value.typeId() == QMetaType::QString || Value.typeId() == QMetaType::Int)
            *field = Value.toString();
    }
    void operator()(const Words& field) const {
        if (Value.typeId() == QMetaType::QByteArray)
            fillFront(field, Value.toByteArray());
    }
    void operator()(std::int32_t) const {}
};

/// Writes a field as the named value of the open key.
struct Writer {
    clsRegEdit& Key;
    const QString& Name;
    int True = 1;

    void operator()(const bool* field) const { number(*field ? True : 0); }
    void operator()(const std::int32_t* field) const { number(*field); }
    void operator()(const ColorRef* field) const { number(int(*field)); }
    void operator()(const double* field) const {
        Key.SetRegValue(Name, Registry::REG_SZ, QString::number(*field, 'g', QLocale::FloatingPointShortest));
    }
    void operator()(const QString* field) const { Key.SetRegValue(Name, Registry::REG_SZ, *field); }
    void operator()(const Words& field) const { Key.SetRegValue(Name, Registry::REG_BINARY, bytesOf(field)); }
    void operator()(std::int32_t value) const { number(value); }
    void number(int value) const { Key.SetRegValue(Name, Registry::REG_DWORD, value); }
};

/// Calls `take(lower-case name, value)` for every value of the open key, in the registry's order.
template<class Take>
void eachValue(const clsRegEdit& key, const Take& take) {
    QString name;
    QVariant value;
    int type = 0, size = 0;
    for (int i = 0; i < key.NumberOfValues(); ++i)
        if (key.EnumRegValue(i, name, type, value, size))
            take(name.toLower(), value);
}

/// False when the table has no such name.
template<class Record>
bool take(std::span<const Row<Record>> rows, Record& record, const QString& name, const QVariant& value) {
    for (const Row<Record>& row : rows)
        if (row.Name.compare(name, Qt::CaseInsensitive) == 0) {
            std::visit(Taker{value, row.Least, row.Most}, row.Of(record));
            return true;
        }
    return false;
}

template<class Record>
void setAbsent(std::span<const Row<Record>> rows, Record& record) {
    for (const Row<Record>& row : rows)
        if (row.Absent)
            std::visit(Taker{*row.Absent}, row.Of(record));
}

template<class Record>
void load(QStringView section, std::span<const Row<Record>> rows, Record& record) {
    setAbsent(rows, record);
    clsRegEdit key;
    if (open(key, section))
        eachValue(key, [&](const QString& name, const QVariant& value) { take(rows, record, name, value); });
}

bool isSame(const Field& one, const Field& other) {
    const auto compare = [&other]<class Kind>(Kind field) {
        if constexpr (std::is_pointer_v<Kind>)
            return *field == *std::get<Kind>(other);
        else if constexpr (std::is_same_v<Kind, Words>)
            return bytesOf(field) == bytesOf(std::get<Kind>(other));
        else
            return field == std::get<Kind>(other);
    };
    return std::visit(compare, one);
}

/// By value, since the tables speak of fields that can be changed.
template<class Record>
void write(clsRegEdit& key, std::span<const Row<Record>> rows, Record record) {
    Record fresh;
    for (const Row<Record>& row : rows) {
        const Field field = row.Written ? row.Written(record) : row.Of(record);
        if (row.Optional && isSame(field, row.Of(fresh)))
            Registry::DeleteValue(key.hCurrentKey(), row.Name.toString());
        else
            std::visit(Writer{key, row.Name.toString(), row.True}, field);
    }
}

template<class Record>
void save(QStringView section, std::span<const Row<Record>> rows, const Record& record) {
    clsRegEdit key;
    if (open(key, section))
        write(key, rows, record);
}

/// A name that no row has can still mean a line or a font: the number is what stands from the sixth letter on.
void takeGeneral(ApplicationSettings& settings, const QString& name, const QVariant& value) {
    if (take(General(), settings, name, value))
        return;
    const QString kind = name.left(4);
    const auto number = integerFrom(name.mid(5));
    if (number && (kind == u"line" || kind == u"font"))
        take(General(), settings, kind + u'-' + QString::number(*number), value);
}

/// Likewise; here the first three letters tell, and the number stands behind the "-". A legend's number isn't used:
/// legends count how many there have been.
void takeGraph(GraphDefaults& graph, const QString& name, const QVariant& value, int& legends) {
    if (take(Graph(), graph, name, value))
        return;
    const qsizetype dash = name.indexOf(u'-');
    if (dash < 0)
        return;
    const auto number = integerFrom(name.mid(dash + 1));
    const QString kind = name.left(3);
    if (number && kind == u"fon")
        take(Graph(), graph, u"Font-"_s + QString::number(*number), value);
    if (number && kind == u"lab")
        take(Graph(), graph, u"Label-"_s + QString::number(*number), value);
    if (kind == u"leg" && value.typeId() == QMetaType::QByteArray) {
        if (legends == graph.LegendStyles.size())
            graph.LegendStyles.append(LegendStyle());
        std::visit(Taker{value}, FieldOf(graph.LegendStyles[legends++]));
    }
}

QString labelSection(int number) {
    return u"\\Settings\\Labels\\Item-"_s + QString::number(number);
}

/// All or nothing: false when the store isn't to be had in this way. Opening makes what is missing.
bool loadWhole(ApplicationSettings& settings, const QString& programFolder, Registry::Access access) {
    Registry::Transaction transaction(access);
    if (!transaction.IsOpen())
        return false;
    clsRegEdit key;
    if (open(key, u"\\Settings"))
        eachValue(key, [&](const QString& name, const QVariant& value) { takeGeneral(settings, name, value); });
    if (open(key, {}))
        key.SetRegValue({}, Registry::REG_SZ, programFolder);
    LoadGraphSettings(settings.Graph);
    LoadPageLabels(settings.Page);
    return transaction.Commit();
}
} // namespace

void LoadSettings(ApplicationSettings& settings, const QString& programFolder, const QString& defaultPrinter) {
    // What can't be written, as on a full disk, may still be read.
    for (const auto access : {Registry::Access::Write, Registry::Access::Read}) {
        SetDefaults(settings, programFolder, defaultPrinter);
        if (loadWhole(settings, programFolder, access))
            return;
    }
    SetDefaults(settings, programFolder, defaultPrinter);
}

QString Notice() {
    return Registry::IsStoreHeld() ? u"設定が他のプログラムに使われていて読めないため、既定値を使います。"_s
                                   : QString();
}

void SaveSettings(const ApplicationSettings& settings) {
    Registry::Transaction transaction;
    if (!transaction.IsOpen())
        return;
    save(u"\\Settings", General(), settings);
    SaveGraphSettings(settings.Graph);
    SavePageLabels(settings.Page);
    transaction.Commit();
}

void LoadGraphSettings(GraphDefaults& graph) {
    clsRegEdit key;
    if (!open(key, u"\\Settings\\Graph"))
        return;
    int legends = 0;
    eachValue(key, [&](const QString& name, const QVariant& value) { takeGraph(graph, name, value, legends); });
    if (legends > 0)
        graph.LegendStyles.resize(legends);
}

void SaveGraphSettings(const GraphDefaults& graph) {
    Registry::Transaction transaction;
    if (!transaction.IsOpen())
        return;
    clsRegEdit key;
    key.DeleteRegKey(Registry::HKEY_CURRENT_USER, RootKey + u"\\Settings\\Graph");
    if (!open(key, u"\\Settings\\Graph"))
        return;
    write(key, Graph(), graph);
    for (int i = 0; i < graph.LegendStyles.size(); ++i) {
        LegendStyle style = graph.LegendStyles.at(i);
        std::visit(Writer{key, u"Legend-"_s + QString::number(i)}, FieldOf(style));
    }
    transaction.Commit();
}

void LoadPageLabels(PageSettings& page) {
    page.LabelCount = 0;
    page.Labels.clear();
    clsRegEdit key;
    if (!open(key, u"\\Settings\\Labels"))
        return;
    page.LabelCount = key.NumberOfSubKeys();
    page.Labels.resize(page.LabelCount);
    for (int i = 0; i < page.LabelCount; ++i)
        load(labelSection(i + 1), Label(), page.Labels[i]);
}

void SavePageLabels(const PageSettings& page) {
    Registry::Transaction transaction;
    clsRegEdit key;
    if (!transaction.IsOpen() || !open(key, u"\\Settings\\Labels"))
        return;
    const int stored = key.NumberOfSubKeys();
    key.CloseRegKey();
    for (int n = 1; n <= stored; ++n)
        key.DeleteRegKey(Registry::HKEY_CURRENT_USER, RootKey + labelSection(n));
    for (int i = 0; i < std::min<qsizetype>(page.LabelCount, page.Labels.size()); ++i)
        save(labelSection(i + 1), Label(), page.Labels.at(i));
    transaction.Commit();
}

void LoadContourDefaults(ContourSettings& contour) {
    load(u"\\Settings\\Contour", Contour(), contour);
    contour.Automatic = true;
    contour.Range = ContourRange::AsStands;
}

void LoadDisplacementDefaults(DisplacementSettings& displacement) {
    load(u"\\Settings\\Displacement", Displacement(), displacement);
}

void LoadVectorDefaults(VectorSettings& vector) {
    load(u"\\Settings\\Vector", Vector(), vector);
    vector.ItemSetCount = 0;
    vector.DefaultItemSet = -1;
    vector.ItemSets.clear();
}

bool SaveDrawingDefaults(const ApplicationSettings& settings) {
    Registry::Transaction transaction;
    if (!transaction.IsOpen())
        return false;
    save(u"\\Settings\\Contour", Contour(), settings.Contour);
    save(u"\\Settings\\Displacement", Displacement(), settings.Displacement);
    save(u"\\Settings\\Vector", Vector(), settings.Vector);
    return transaction.Commit();
}
} // namespace settingsStore
