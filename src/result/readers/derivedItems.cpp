#include "result/readers/derivedItems.h"

#include <cmath>
#include <numbers>

namespace {

enum Component { XX, YY, ZZ, XY, YZ, XZ };
constexpr std::array<const char16_t*, 6> componentNames{u"XX", u"YY", u"ZZ", u"XY", u"YZ", u"XZ"};
using Tensor = std::array<double, 6>;
using Principals = std::array<double, 3>;

double misesOf(const Tensor& t) {
    const double deviation =
        (t[XX] - t[YY]) * (t[XX] - t[YY]) + (t[YY] - t[ZZ]) * (t[YY] - t[ZZ]) + (t[ZZ] - t[XX]) * (t[ZZ] - t[XX]);
    return std::sqrt(deviation / 2 + 3 * (t[XY] * t[XY] + t[YZ] * t[YZ] + t[XZ] * t[XZ]));
}

Principals inPlane(const Tensor& t) {
    const double middle = (t[XX] + t[YY]) / 2, radius = std::hypot((t[XX] - t[YY]) / 2, t[XY]);
    return {middle + radius, middle - radius, 0};
}

/// The eigenvalues by their angle on the circle about the mean, the largest first.
Principals inSpace(const Tensor& t) {
    const double mean = (t[XX] + t[YY] + t[ZZ]) / 3;
    const double x = t[XX] - mean, y = t[YY] - mean, z = t[ZZ] - mean;
    const double square = (x * x + y * y + z * z + 2 * (t[XY] * t[XY] + t[YZ] * t[YZ] + t[XZ] * t[XZ])) / 6;
    const double radius = std::sqrt(square);
    if (!(radius > 0))
        return {mean, mean, mean};
    const double determinant =
        x * (y * z - t[YZ] * t[YZ]) - t[XY] * (t[XY] * z - t[YZ] * t[XZ]) + t[XZ] * (t[XY] * t[YZ] - y * t[XZ]);
    const double angle = std::acos(std::clamp(determinant / (2 * square * radius), -1.0, 1.0)) / 3;
    const double first = mean + 2 * radius * std::cos(angle);
    const double last = mean + 2 * radius * std::cos(angle + 2 * std::numbers::pi / 3);
    return {first, 3 * mean - first - last, last};
}

struct Group {
    std::array<std::int32_t, 6> Items; ///< of the components; -1 for one that isn't there
};

struct Derived {
    Group Of;
    std::int32_t Principal = -1; ///< which one; -1: the equivalent stress

    float Value(const Tensor& tensor) const {
        if (Principal < 0)
            return float(misesOf(tensor));
        return float((Of.Items[ZZ] < 0 ? inPlane(tensor) : inSpace(tensor))[std::size_t(Principal)]);
    }
};

/// The steps of another source with some items more.
class DerivedSteps final : public StepSource {
public:
    DerivedSteps(std::shared_ptr<const StepSource> given, std::int32_t elements, std::int32_t givenItems,
                 std::vector<Derived> added)
        : StepSource({given->StepCount(), givenItems + std::int32_t(added.size()), elements}), source(std::move(given)),
          elementCount(elements), itemsThere(givenItems), derived(std::move(added)) {}

    std::shared_ptr<const StepSource> Extended(const ReadHandle& longer, QList<StepInfo>& steps,
                                               const LoadProgress& progress) const override {
        std::shared_ptr<const StepSource> more = source->Extended(longer, steps, progress);
        return more ? std::make_shared<const DerivedSteps>(std::move(more), elementCount, itemsThere, derived)
                    : nullptr;
    }

private:
    qint64 typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> types) const override {
        source->ReadTypes(step, first, types);
        return qint64(types.size());
    }
    std::int32_t countOf(std::int32_t step, std::int32_t item) const override {
        return source->ValueCount(step, item < itemsThere ? item : derivedAt(item).Of.Items[XX]);
    }
    qint64 endOf(std::int32_t step) const override { return source->EndOf(step); }
    qint64 valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const override {
        if (item < itemsThere) {
            source->ReadValues(step, item, first, values);
            return qint64(values.size());
        }
        const Derived& wanted = derivedAt(item);
        std::array<std::vector<float>, 6> components;
        for (std::size_t c = 0; c < components.size(); ++c) {
            components[c].resize(values.size());
            source->ReadValues(step, wanted.Of.Items[c], first, components[c]);
        }
        for (std::size_t i = 0; i < values.size(); ++i) {
            Tensor tensor;
            std::ranges::transform(components, tensor.begin(), [i](const auto& component) { return component[i]; });
            values[i] = wanted.Value(tensor);
        }
        return qint64(values.size());
    }
    const Derived& derivedAt(std::int32_t item) const { return derived[std::size_t(item - itemsThere)]; }

    std::shared_ptr<const StepSource> source;
    std::int32_t elementCount, itemsThere;
    std::vector<Derived> derived;
};

bool isStress(const QString& name) {
    return name.compare(u"s", Qt::CaseInsensitive) == 0 ||
           std::ranges::any_of(std::array{u"stress"_s, u"sigma"_s, u"応力"_s},
                               [&name](const QString& word) { return name.contains(word, Qt::CaseInsensitive); });
}

/// The group whose first component is `item`; nothing when it is none.
std::optional<Group> groupOf(const QList<ItemInfo>& items, const ItemInfo& item) {
    if (!item.Name.endsWith(u" XX"))
        return {};
    const QString name = item.Name.chopped(3);
    Group group;
    for (std::size_t c = 0; c < componentNames.size(); ++c) {
        const auto found = std::ranges::find_if(items, [&](const ItemInfo& candidate) {
            return candidate.ElementType == item.ElementType &&
                   candidate.Name == name + u' ' + QStringView(componentNames[c]);
        });
        group.Items[c] = found == items.end() ? -1 : std::int32_t(found - items.begin());
    }
    return isStress(name) && group.Items[YY] >= 0 && group.Items[XY] >= 0 ? std::optional(group) : std::nullopt;
}

} // namespace

void AddDerivedItems(const DerivedItems& wanted, ResultContent& content) {
    const QList<ItemInfo> items = content.Items;
    std::vector<Derived> derived;
    for (const ItemInfo& item : items) {
        const std::optional<Group> group = groupOf(items, item);
        if (!group)
            continue;
        const QString name = item.Name.chopped(2);
        const auto add = [&](const QString& what, std::int32_t principal) {
            content.Items.append({name + what, item.ElementType, 0});
            derived.push_back({*group, principal});
        };
        if (wanted.Mises)
            add(u"Mises"_s, -1);
        for (std::int32_t p = 0; wanted.Principal && p < (group->Items[ZZ] < 0 ? 2 : 3); ++p)
            add(u'P' + QString::number(p + 1), p);
    }
    if (!derived.empty())
        content.Source = std::make_shared<const DerivedSteps>(std::move(content.Source),
                                                              std::int32_t(content.FirstCorner.size()) - 1,
                                                              std::int32_t(items.size()), std::move(derived));
}
