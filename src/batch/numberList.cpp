#include "batch/numberList.h"

#include <QRegularExpression>

namespace batch {

std::vector<NumberRange> ParseNumberList(const QString& option, const QString& text) {
    static const QRegularExpression form(u"^([0-9]+)(?:-([0-9]+))?$"_s);
    std::vector<NumberRange> list;
    const QStringList parts = text.split(u',');
    for (const QString& part : parts) {
        const QRegularExpressionMatch match = form.match(part);
        const QString first = match.captured(1);
        const QString last = match.hasCaptured(2) ? match.captured(2) : first;
        // Neither 0 nor what is beyond an integer is the number of anything; both read as 0.
        list.push_back({first.toInt(), last.toInt()});
        if (list.back().First < 1 || list.back().Last < 1)
            throw Stop{WrongUsage,
                       u"--%1 wants numbers from 1 and ranges such as 1,5,10-20, not \"%2\""_s.arg(option, part)};
    }
    return list;
}

std::vector<std::int32_t> IndexesOf(const std::vector<NumberRange>& list, const QString& kind, std::int32_t count,
                                    const QString& path) {
    for (const NumberRange& range : list)
        if (const std::int32_t largest = std::max(range.First, range.Last); largest > count)
            RefuseNumber(path, kind + u's', kind, largest, count);
    std::vector<std::int32_t> indexes;
    std::vector<bool> taken(std::size_t(count), false);
    for (const NumberRange& range : list) {
        const std::int32_t direction = range.First <= range.Last ? 1 : -1;
        for (std::int32_t number = range.First; number != range.Last + direction; number += direction) {
            const std::size_t index = std::size_t(number - 1);
            if (!taken[index])
                indexes.push_back(number - 1);
            taken[index] = true;
        }
    }
    return indexes;
}

} // namespace batch
