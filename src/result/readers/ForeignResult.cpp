#include "result/readers/ForeignResult.h"

#include "app/mdApplication.h"
#include "result/readers/ArraySteps.h"
#include "result/readers/planeMesh.h"

namespace {

bool isDisplacement(const ForeignArray& array) {
    return !array.OnCells && (array.Components == 2 || array.Components == 3) &&
           QStringList{u"u"_s, u"disp"_s, u"displacement"_s, u"変位"_s}.contains(array.Name.toLower());
}

/// An item per component; the first displacement found is the displacement.
std::vector<ArraySteps::Item> buildItems(const std::vector<ForeignArray>& arrays, const PlaneAxes& plane,
                                         ResultContent& content) {
    std::vector<ArraySteps::Item> items;
    bool displacementFound = false;
    for (std::size_t a = 0; a < arrays.size(); ++a) {
        const ForeignArray& array = arrays[a];
        const QStringList names =
            array.ComponentNames.isEmpty() ? UsualComponentNames(array.Components) : array.ComponentNames;
        const bool displaces = !displacementFound && isDisplacement(array);
        displacementFound |= displaces;
        // Two components lie in the plane, whichever it is.
        const int across = array.Components == 2 ? 0 : plane.Across, up = array.Components == 2 ? 1 : plane.Up;
        for (std::int32_t c = 0; c < array.Components; ++c) {
            ItemInfo item;
            item.Name = array.Name.isEmpty() ? u"Item - "_s + QString::number(a + 1) : array.Name;
            if (!names.value(c).isEmpty())
                item.Name += u' ' + names.value(c);
            item.ElementType = array.OnCells ? 0 : -1;
            item.Flags = displaces ? (c == across ? 1 : 0) | (c == up ? 2 : 0) : 0;
            content.Items.append(item);
            items.push_back({std::int32_t(a), c});
        }
    }
    return items;
}

} // namespace

QStringList UsualComponentNames(std::int32_t components) {
    static const QStringList tensor{u"XX"_s, u"YY"_s, u"ZZ"_s, u"XY"_s, u"YZ"_s, u"XZ"_s};
    switch (components) {
    case 1:
        return {QString()};
    case 2:
        return {u"X"_s, u"Y"_s};
    case 3:
        return {u"X"_s, u"Y"_s, u"Z"_s};
    case 6:
        return tensor;
    case 9:
        return {u"XX"_s, u"XY"_s, u"XZ"_s, u"YX"_s, u"YY"_s, u"YZ"_s, u"ZX"_s, u"ZY"_s, u"ZZ"_s};
    default:
        QStringList numbers;
        for (std::int32_t c = 1; c <= components; ++c)
            numbers.append(QString::number(c));
        return numbers;
    }
}

ReadRecord BinaryRecord(NumberType type, bool bigEndian, const IdIndex* ids) {
    return [=](std::span<const char> record, std::int32_t place, std::int32_t component, float& value) {
        const qint64 idBytes = ids ? qint64(sizeof(std::int32_t)) : 0, width = BytesOf(type);
        const qint64 start = idBytes + component * width;
        value = 0;
        if (start + width > std::ssize(record))
            return ids == nullptr;
        std::int64_t id = 0;
        if (ids)
            ConvertNumbers(record.data(), 1, NumberType::Int32, bigEndian, &id);
        ConvertNumbers(record.data() + start, 1, type, bigEndian, &value);
        return !ids || ids->Of(id) == place;
    };
}

QString WhyRefused(const QString& problem, bool isCut) {
    return problem.isEmpty() && isCut ? u"ファイルが途中で終わっています。"_s : problem;
}

bool BuildContent(ForeignResult&& result, ResultContent& content) {
    content.Magic = result.Magic;
    content.Version = result.Version;
    content.Title = result.Title;
    const std::int32_t cells = result.Cells.Count();
    PlaneMesh mesh = BuildPlaneMesh(std::move(result.Points), std::move(result.Cells), content);
    if (mesh.Problem.isEmpty() && (result.Arrays.empty() || result.Steps.empty()))
        mesh.Problem = u"計算結果の値がありません。"_s;
    if (!mesh.Problem.isEmpty()) {
        content.Note = QString(WhyRefused({}, result.IsCut) + u' ' + mesh.Problem).trimmed();
        return false;
    }
    if (const QStringList leftOut = mesh.LeftOut + result.LeftOut; !leftOut.isEmpty())
        content.Note = u"読まなかったもの: "_s + leftOut.join(u"、");
    std::vector<ArraySteps::Item> items = buildItems(result.Arrays, mesh.Axes, content);
    for (const ForeignStep& step : result.Steps)
        content.Steps.append(
            {u"Time : "_s + mdApplication::FormatAutoNumber(step.Time, 3, false), float(step.Time), 0});
    content.Source = std::make_shared<const ArraySteps>(
        std::move(result), std::move(items), std::move(mesh.CellOfElement), cells, std::int32_t(content.NodeX.size()));
    return true;
}
