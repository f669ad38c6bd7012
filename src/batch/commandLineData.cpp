// The commands that print what a result file holds.
#include "app/NumberFormat.h"
#include "batch/JsonWriter.h"
#include "batch/commandSupport.h"
#include "result/mdVelorinResultModel.h"

namespace batch {

namespace {

void writeItems(JsonWriter& json, const ResultModel& model) {
    json.Key("items");
    json.BeginArray();
    for (std::int32_t i = 0; i < model.ItemCount; ++i) {
        const ItemInfo& item = model.Items.at(i);
        json.BeginObject();
        json.Member("number", i + 1);
        json.Member("name", item.Name);
        json.Member("elementType", item.ElementType);
        json.Member("flags", item.Flags);
        json.EndObject();
    }
    json.EndArray();
}

void writeSteps(JsonWriter& json, const ResultModel& model) {
    json.Key("steps");
    json.BeginArray();
    for (std::int32_t i = 0; i < model.StepCount; ++i) {
        const StepInfo& step = model.Steps.at(i);
        json.BeginObject();
        json.Member("number", i + 1);
        json.Member("name", step.Name);
        json.Member("time", step.Time);
        json.Member("offset", step.FileOffset);
        json.EndObject();
    }
    json.EndArray();
}

void writePoint(JsonWriter& json, float x, float y) {
    json.BeginArray();
    json.Value(x);
    json.Value(y);
    json.EndArray();
}

void writeNumbers(JsonWriter& json, const char* key, std::span<const std::int32_t> indexes) {
    json.Key(key);
    json.BeginArray();
    for (const std::int32_t index : indexes)
        json.NumberOf(index);
    json.EndArray();
}

void writeMesh(JsonWriter& json, const MeshData& mesh) {
    json.Key("nodes");
    json.BeginArray();
    for (std::int32_t i = 0; i < mesh.NodeCount; ++i)
        writePoint(json, mesh.Nodes.X.at(i), mesh.Nodes.Y.at(i));
    json.EndArray();
    json.Key("active");
    json.BeginArray();
    for (std::int32_t i = 0; i < mesh.NodeCount; ++i)
        json.Value(mesh.Nodes.Active.at(i) != 0);
    json.EndArray();
    json.Key("elements");
    json.BeginArray();
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        const ElementRecord element = mesh.Elements[e];
        json.BeginObject();
        json.Member("type", element.ElementType);
        writeNumbers(json, "nodes", element.NodeIndex);
        writeNumbers(json, "neighbours", element.Neighbour);
        json.Key("centre");
        writePoint(json, element.CentreX, element.CentreY);
        json.EndObject();
    }
    json.EndArray();
}

constexpr const char16_t* queryKinds[] = {u"item", u"node", u"element", u"displacement-x", u"displacement-y"};

/// `kind` is one of `queryKinds`.
ItemValues query(const QString& kind, std::int32_t item, const ResultModel& model, bool difference) {
    using namespace mdVelorinResultModel;
    if (kind == u"item")
        return GetItemValues(item, model, difference);
    if (kind == u"node")
        return GetNodeValues(difference, model.Mesh);
    if (kind == u"displacement-x")
        return GetDisplacementX(model, difference);
    if (kind == u"displacement-y")
        return GetDisplacementY(model, difference);
    const ItemValues& values = model.ItemData.at(item);
    return ExpandItemValues(model.Items.at(item).ElementType, model.Mesh,
                            difference ? SubtractValues(values, model.ReferenceItemData.at(item)) : values);
}

void writeCsv(QIODevice& device, const ItemValues& values) {
    QByteArray text = "number,value\n";
    for (qsizetype i = 0; i < values.Values.size(); ++i) {
        text += QByteArray::number(i + 1) + ',' + NumberFormat::Shortest(values.Values.at(i)).toLatin1() + '\n';
        if (text.size() > (1 << 20)) {
            device.write(text);
            text.clear();
        }
    }
    device.write(text);
}

void writeValuesJson(QIODevice& device, const ItemValues& values) {
    JsonWriter json(device);
    json.BeginObject();
    json.Member("count", values.Count);
    json.Member("max", values.MaxValue);
    json.Member("min", values.MinValue);
    json.Key("values");
    json.BeginArray();
    for (const float value : values.Values)
        json.Value(value);
    json.EndArray();
    json.EndObject();
}

} // namespace

Status RunInfo(const QStringList& arguments, const Streams& streams) {
    Options options(u"info"_s, u"Prints what a result file holds, as JSON."_s, u"FILE"_s);
    DeclareDerivedItems(options);
    options.Parse(arguments, streams);
    const ResultModel model = OpenFile(options.Operand(), DerivedItemsFrom(options), streams);
    JsonWriter json(streams.Output);
    json.BeginObject();
    json.Member("file", model.FileName);
    json.Member("magic", model.Magic);
    json.Member("version", model.Version);
    json.Member("title", model.Title);
    json.Member("nodes", model.Mesh.NodeCount);
    json.Member("elements", model.Mesh.ElementCount);
    json.Member("lineElementsOnly", model.LineElementsOnly);
    json.Member("noDisplacement", model.NoDisplacement);
    json.Key("displacementItemX");
    json.NumberOf(model.DisplacementItemX);
    json.Key("displacementItemY");
    json.NumberOf(model.DisplacementItemY);
    json.Member("firstStepOffset", model.FirstStepOffset);
    writeItems(json, model);
    writeSteps(json, model);
    json.EndObject();
    return Done;
}

Status RunMesh(const QStringList& arguments, const Streams& streams) {
    Options options(u"mesh"_s, u"Prints nodes and elements as JSON."_s, u"FILE"_s);
    options.Value(u"step"_s, u"N"_s, u"Step that decides which elements exist; the first by default."_s);
    options.Parse(arguments, streams);
    const std::optional<int> step = options.Integer(u"step"_s, 1);
    ResultModel model = OpenFile(options.Operand(), {}, streams);
    if (step)
        RequireStep(model, options.Operand(), u"step"_s, *step);
    mdVelorinResultModel::LoadStep(step.value_or(1) - 1, 0, model, false, -1);
    JsonWriter json(streams.Output);
    json.BeginObject();
    writeMesh(json, model.Mesh);
    json.EndObject();
    return Done;
}

Status RunValues(const QStringList& arguments, const Streams& streams) {
    Options options(u"values"_s, u"Prints the values of one item at one step, as CSV."_s, u"FILE"_s);
    options.Value(u"step"_s, u"N"_s, u"The step."_s);
    options.Value(u"item"_s, u"K"_s, u"The item, by number or name."_s);
    DeclareDerivedItems(options);
    options.Value(u"reference"_s, u"R"_s, u"Give the difference from this step."_s);
    options.Value(u"query"_s, u"KIND"_s, u"item (default), node, element, displacement-x or displacement-y."_s);
    options.Flag(u"json"_s, u"Print JSON with count and bounds instead."_s);
    options.Parse(arguments, streams);
    const std::optional<int> step = options.Integer(u"step"_s, 1);
    const std::optional<int> reference = options.Integer(u"reference"_s, 1);
    if (!step || !options.IsSet(u"item"_s))
        throw Stop{WrongUsage, u"--step and --item are needed"_s};
    const QString kind = options.IsSet(u"query"_s) ? options.Text(u"query"_s) : u"item"_s;
    if (std::none_of(std::begin(queryKinds), std::end(queryKinds),
                     [&kind](const char16_t* known) { return kind == QStringView(known); }))
        throw Stop{WrongUsage,
                   u"--query wants item, node, element, displacement-x or displacement-y, not \"%1\""_s.arg(kind)};

    ResultModel model = OpenFile(options.Operand(), DerivedItemsFrom(options), streams);
    const std::int32_t item = FindItem(options.Text(u"item"_s), model, options.Operand());
    RequireStep(model, options.Operand(), u"step"_s, *step);
    if (reference)
        RequireStep(model, options.Operand(), u"reference"_s, *reference);
    mdVelorinResultModel::LoadStep(*step - 1, item, model, false, reference.value_or(0) - 1);
    const ItemValues values = query(kind, item, model, reference.has_value());
    if (options.IsSet(u"json"_s))
        writeValuesJson(streams.Output, values);
    else
        writeCsv(streams.Output, values);
    return Done;
}

} // namespace batch
