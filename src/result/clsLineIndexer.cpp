#include "result/clsLineIndexer.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "app/mdTips.h"

namespace {

LineEntry ordered(std::int32_t node1, std::int32_t node2, std::int32_t lineNumber) {
    return {std::min(node1, node2), std::max(node1, node2), lineNumber};
}

} // namespace

int CompareLine(const LineEntry& key, const LineEntry& entry) {
    if (entry.Node1 != key.Node1)
        return entry.Node1 < key.Node1 ? -1 : 1;
    if (entry.Node2 != key.Node2)
        return entry.Node2 < key.Node2 ? -1 : 1;
    return 0;
}

int clsLineIndexer::SearchLine(std::int32_t node1, std::int32_t node2) const {
    const LineEntry key = ordered(node1, node2, 0);
    int low = 0;
    int high = Count() - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        const int order = CompareLine(key, entries[std::size_t(middle)]);
        if (order == 0)
            return middle;
        if (order > 0)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return -1;
}

int clsLineIndexer::Add(std::int32_t node1, std::int32_t node2, std::int32_t lineNumber) {
    const int found = SearchLine(node1, node2);
    if (found >= 0)
        return found;
    const LineEntry entry = ordered(node1, node2, lineNumber);
    const auto place = std::upper_bound(entries.begin(), entries.end(), entry,
                                        [](const auto& key, const auto& other) { return CompareLine(key, other) > 0; });
    const int position = int(place - entries.begin());
    entries.insert(place, entry);
    return position;
}

std::int32_t clsLineIndexer::GetIndexByNumber(int position) const {
    return position < 0 || position >= Count() ? -1 : entries[std::size_t(position)].LineNumber;
}

std::int32_t clsLineIndexer::Index(std::int32_t node1, std::int32_t node2) const {
    return GetIndexByNumber(SearchLine(node1, node2));
}

void clsLineIndexer::dumpLineInfo() const {
    QString text;
    const auto padded = [](std::int32_t number) { return NumberFormat::FormatText(QString::number(number), u"@@@@@"); };
    for (const LineEntry& entry : entries) {
        text +=
            u"[ " + padded(entry.Node1) + u", " + padded(entry.Node2) + u"] --- " + padded(entry.LineNumber) + u"\r\n";
    }
    mdTips::WriteTextFile(mdTips::AddTrailingChar(mdApplication::ProgramFolder()) + u"line.info.txt", text);
}
