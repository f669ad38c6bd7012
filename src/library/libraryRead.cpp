// Opening, and all that is read of an open result.
#include "library/library.h"

#include "platform/base/Lists.h"
#include "platform/base/NativePath.h"
#include "result/StepSampler.h"
#include "result/mdVelorinResultModel.h"

#include <unistd.h>

using library::Failure;
using library::guarded;
using library::require;

namespace {

constexpr float none = std::numeric_limits<float>::quiet_NaN();

/// Packed values of the elements of one type, each moved to the place of its element.
void spread(std::span<const float> packed, std::span<const std::int32_t> types, std::int32_t type, float* values) {
    std::size_t next = 0;
    for (std::size_t e = 0; e < types.size(); ++e)
        values[e] = types[e] == type && next < packed.size() ? packed[next++] : none;
}

void readValues(const ResultModel& model, std::int32_t step, std::int32_t item, float* values) {
    const StepSource& source = *model.Source;
    const std::int32_t type = model.Items.at(item).ElementType;
    const std::int32_t objects = type < 0 ? model.Mesh.NodeCount : model.Mesh.ElementCount;
    const std::int32_t count = std::clamp(source.ValueCount(step, item), 0, objects);
    if (type < 0) {
        source.ReadValues(step, item, 0, std::span(values, std::size_t(count)));
        std::fill(values + count, values + objects, none);
        return;
    }
    QList<std::int32_t> types = listOf<std::int32_t>(objects);
    source.ReadTypes(step, 0, std::span(types.data(), std::size_t(objects)));
    QList<float> packed = listOf<float>(count);
    source.ReadValues(step, item, 0, std::span(packed.data(), std::size_t(count)));
    spread(std::span(packed), std::span(types), type, values);
}

/// In the system's words, for a file that could not be opened.
QString whyUnreadable(const QString& name) {
    std::error_code problem;
    const std::filesystem::path path = NativePath::Of(name);
    const bool isRegular = std::filesystem::is_regular_file(path, problem);
    if (isRegular && ::access(path.c_str(), R_OK) != 0)
        problem = std::error_code(errno, std::generic_category());
    return problem ? QString::fromLocal8Bit(problem.message()) : u"no regular file that can be opened"_s;
}

/// Which of some elements have the type of an item, and so a value. All places of an item per node do.
class TypesOf {
public:
    TypesOf(const ResultModel& model, std::int32_t item, std::span<const std::int32_t> elements)
        : source(*model.Source), type(model.Items.at(item).ElementType), places(elements) {
        if (type < 0 || places.empty())
            return;
        const auto [lowest, highest] = std::ranges::minmax(places);
        first = lowest;
        count = highest - lowest + 1;
    }
    std::vector<bool> Fit(std::int32_t step) const {
        std::vector<bool> fit(places.size(), true);
        std::vector<std::int32_t> types(std::size_t(count), 0);
        if (count > 0)
            source.ReadTypes(step, first, std::span(types));
        for (std::size_t i = 0; i < places.size() && count > 0; ++i)
            fit[i] = types[std::size_t(places[i] - first)] == type;
        return fit;
    }

private:
    const StepSource& source;
    const std::int32_t type;
    const std::span<const std::int32_t> places;
    std::int32_t first = 0, count = 0;
};

} // namespace

int velorin_open(const char* path, velorin_progress progress, void* context, velorin_result** result) {
    return guarded([&] {
        const QString name = NativePath::Text(path);
        if (!ReadHandle::Open(name).IsOpen())
            throw Failure{VELORIN_UNREADABLE, whyUnreadable(name)};
        auto opened = std::make_unique<velorin_result>();
        bool stopped = false;
        const auto ask = library::progressOf(progress, context);
        const auto told = [&](qint64 done, qint64 total) {
            stopped = stopped || (ask && !ask(done, total));
            return !stopped;
        };
        if (!mdVelorinResultModel::LoadResultFile(NativePath::Absolute(name), opened->Model, told))
            throw stopped ? Failure{VELORIN_STOPPED, u"stopped"_s}
                          : Failure{VELORIN_OTHER,
                                    QString(u"not a result file that can be used "_s + opened->Model.Note).trimmed()};
        opened->Title = opened->Model.Title.toUtf8();
        for (const ItemInfo& item : std::as_const(opened->Model.Items))
            opened->ItemNames.append(item.Name.toUtf8());
        for (const StepInfo& step : std::as_const(opened->Model.Steps))
            opened->StepNames.append(step.Name.toUtf8());
        *result = opened.release();
    });
}

void velorin_close(velorin_result* result) {
    delete result;
}

const char* velorin_title(const velorin_result* result) {
    return result->Title.constData();
}

int32_t velorin_node_count(const velorin_result* result) {
    return result->Model.Mesh.NodeCount;
}

int32_t velorin_element_count(const velorin_result* result) {
    return result->Model.Mesh.ElementCount;
}

int32_t velorin_item_count(const velorin_result* result) {
    return result->Model.ItemCount;
}

int32_t velorin_step_count(const velorin_result* result) {
    return result->Model.StepCount;
}

const float* velorin_node_x(const velorin_result* result) {
    return result->Model.Mesh.Nodes.X.constData();
}

const float* velorin_node_y(const velorin_result* result) {
    return result->Model.Mesh.Nodes.Y.constData();
}

const int32_t* velorin_element_starts(const velorin_result* result) {
    return result->Model.Mesh.Elements.FirstCorner.constData();
}

const int32_t* velorin_element_nodes(const velorin_result* result) {
    return result->Model.Mesh.Elements.NodeIndex.constData();
}

const char* velorin_item_name(const velorin_result* result, int32_t item) {
    return result->ItemNames.value(item).constData();
}

int32_t velorin_item_type(const velorin_result* result, int32_t item) {
    return item >= 0 && item < result->Model.ItemCount ? result->Model.Items.at(item).ElementType : 0;
}

int32_t velorin_item_flags(const velorin_result* result, int32_t item) {
    return item >= 0 && item < result->Model.ItemCount ? result->Model.Items.at(item).Flags : 0;
}

const char* velorin_step_name(const velorin_result* result, int32_t step) {
    return result->StepNames.value(step).constData();
}

float velorin_step_time(const velorin_result* result, int32_t step) {
    return step >= 0 && step < result->Model.StepCount ? result->Model.Steps.at(step).Time : 0;
}

int velorin_types(const velorin_result* result, int32_t step, int32_t* types) {
    return guarded([&] {
        const ResultModel& model = result->Model;
        require("step", step, model.StepCount);
        model.Source->ReadTypes(step, 0, std::span(types, std::size_t(model.Mesh.ElementCount)));
    });
}

int velorin_values(const velorin_result* result, int32_t step, int32_t item, float* values) {
    return guarded([&] {
        require("step", step, result->Model.StepCount);
        require("item", item, result->Model.ItemCount);
        readValues(result->Model, step, item, values);
    });
}

int velorin_history(const velorin_result* result, int32_t item, int32_t count, const int32_t* objects,
                    velorin_progress progress, void* context, float* values) {
    return guarded([&] {
        const ResultModel& model = result->Model;
        require("item", item, model.ItemCount);
        const bool onNodes = model.Items.at(item).ElementType < 0;
        for (std::int32_t i = 0; i < count; ++i)
            require(onNodes ? "node" : "element", objects[i], onNodes ? model.Mesh.NodeCount : model.Mesh.ElementCount);
        const std::span places(objects, std::size_t(std::max(count, 0)));
        const StepSampler sampler(model, item, places, -1);
        const TypesOf types(model, item, places);
        const auto goesOn = library::progressOf(progress, context);
        for (std::int32_t step = 0; step < model.StepCount; ++step) {
            const std::vector<std::optional<float>> row = sampler.Read(step);
            const std::vector<bool> has = types.Fit(step);
            for (std::size_t i = 0; i < row.size(); ++i)
                *values++ = has[i] ? row[i].value_or(none) : none;
            if (goesOn && !goesOn(step + 1, model.StepCount))
                throw Failure{VELORIN_STOPPED, u"stopped"_s};
        }
    });
}
