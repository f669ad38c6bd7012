// Writing: what the caller has becomes a model, whose source asks the caller's functions.
#include "library/library.h"

#include "platform/base/Lists.h"
#include "platform/base/NativePath.h"
#include "result/VrfWriter.h"

#include <cmath>
#include <mutex>

using library::Failure;
using library::guarded;

namespace {

/// Asks the caller for whole steps and hands them out in pieces. Throws when the caller says no.
class CallerSteps final : public StepSource {
public:
    explicit CallerSteps(const velorin_content& content)
        : StepSource({content.step_count, content.item_count, content.element_count}), caller(content),
          types(listOf<std::int32_t>(content.element_count)),
          values(listOf<float>(std::max(content.node_count, content.element_count))) {}

private:
    void takeTypes(std::int32_t step) const {
        if (step == typesOf || !caller.types)
            return;
        goOn(caller.types(caller.context, step, ownData(types)));
        typesOf = step;
    }
    /// Values of elements as the file has them: packed, those of the item's type alone.
    void takeValues(std::int32_t step, std::int32_t item) const {
        if (valuesOf == std::pair(step, item))
            return;
        float* all = ownData(values);
        goOn(caller.values(caller.context, step, item, all));
        valuesOf = {step, item};
        const std::int32_t type = caller.items[item].type;
        if (type < 0)
            return;
        takeTypes(step);
        float* next = all;
        for (std::int32_t e = 0; e < caller.element_count; ++e)
            if (types.at(e) == type)
                *next++ = all[e];
    }
    static void goOn(int answer) {
        if (answer == 0)
            throw Failure{VELORIN_STOPPED, u"stopped"_s};
    }

    qint64 typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> target) const override {
        const std::lock_guard lock(asking);
        takeTypes(step);
        std::copy_n(types.constData() + first, target.size(), target.begin());
        return qint64(target.size());
    }
    std::int32_t countOf(std::int32_t step, std::int32_t item) const override {
        if (caller.items[item].type < 0)
            return caller.node_count;
        const std::lock_guard lock(asking);
        takeTypes(step);
        return std::int32_t(std::ranges::count(types, caller.items[item].type));
    }
    qint64 valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> target) const override {
        const std::lock_guard lock(asking);
        takeValues(step, item);
        std::copy_n(values.constData() + first, target.size(), target.begin());
        return qint64(target.size());
    }

    const velorin_content caller;
    mutable std::mutex asking;
    mutable QList<std::int32_t> types;
    mutable QList<float> values;
    mutable std::int32_t typesOf = -1;
    mutable std::pair<std::int32_t, std::int32_t> valuesOf{-1, -1};
};

void refuse(const QString& why) {
    throw Failure{VELORIN_WRONG, why};
}

void check(const velorin_content& content) {
    if (content.size != sizeof(velorin_content))
        refuse(u"the size of velorin_content is of another version"_s);
    if (content.node_count < 1 || content.element_count < 1 || content.item_count < 1 || content.step_count < 0)
        refuse(u"a result has at least one node, one element and one item"_s);
    if (content.starts[0] != 0)
        refuse(u"the first element's nodes are not the first"_s);
    for (std::int32_t e = 0; e < content.element_count; ++e)
        if (content.starts[e + 1] < content.starts[e])
            refuse(u"element %1 ends before it starts"_s.arg(e));
    for (std::int32_t i = 0; i < content.starts[content.element_count]; ++i)
        if (content.nodes[i] < -1 || content.nodes[i] >= content.node_count)
            refuse(u"node %1 is not one of %2"_s.arg(content.nodes[i]).arg(content.node_count));
    for (std::int32_t i = 0; i < content.node_count; ++i)
        if (!std::isfinite(content.x[i]) || !std::isfinite(content.y[i]))
            refuse(u"node %1 is nowhere"_s.arg(i));
}

template<class T>
QList<T> columnOf(const T* first, qsizetype count) {
    QList<T> column = listOf<T>(count);
    std::copy_n(first, count, column.begin());
    return column;
}

ResultModel modelOf(const velorin_content& content) {
    ResultModel model;
    model.Title = QString::fromUtf8(content.title);
    model.StepCount = content.step_count;
    for (std::int32_t step = 0; step < content.step_count; ++step)
        model.Steps.append({QString::fromUtf8(content.steps[step].name), float(content.steps[step].time)});
    model.ItemCount = content.item_count;
    for (std::int32_t item = 0; item < content.item_count; ++item)
        model.Items.append(
            {QString::fromUtf8(content.items[item].name), content.items[item].type, content.items[item].flags});
    MeshData& mesh = model.Mesh;
    mesh.NodeCount = content.node_count;
    mesh.Nodes.X = columnOf(content.x, content.node_count);
    mesh.Nodes.Y = columnOf(content.y, content.node_count);
    mesh.ElementCount = content.element_count;
    mesh.Elements.FirstCorner = columnOf(content.starts, content.element_count + 1);
    mesh.Elements.NodeIndex = columnOf(content.nodes, content.starts[content.element_count]);
    model.Source = std::make_shared<CallerSteps>(content);
    return model;
}

} // namespace

int velorin_write(const char* path, const velorin_content* content) {
    return guarded([&] {
        check(*content);
        if (const auto why = VrfWriter::Write(modelOf(*content), NativePath::Text(path)))
            throw Failure{VELORIN_NOT_WRITTEN, *why};
    });
}
