// A sorted table of node pairs, each with a number that the caller gives. Order of the two nodes of a pair is of no
// matter.
#pragma once

#include <QString>
#include <cstdint>
#include <vector>

struct LineEntry {
    std::int32_t Node1 = 0;
    std::int32_t Node2 = 0; ///< never smaller than `Node1`
    std::int32_t LineNumber = 0;
};

class clsLineIndexer {
public:
    /// Enters a pair unless it stands there; its position. A pair that stands there keeps its number.
    int Add(std::int32_t node1, std::int32_t node2, std::int32_t lineNumber);
    int Count() const { return int(entries.size()); }
    /// Writes the table to "line.info.txt" in the program's folder, a line per entry; nothing when that cannot be
    /// written.
    void dumpLineInfo() const;
    /// Number of the entry at `position`; -1 for a position that is not there.
    std::int32_t GetIndexByNumber(int position) const;
    /// Number of the pair; -1 if absent.
    std::int32_t Index(std::int32_t node1, std::int32_t node2) const;
    /// Position of the pair; -1 if absent. Logarithmic.
    int SearchLine(std::int32_t node1, std::int32_t node2) const;

private:
    std::vector<LineEntry> entries; ///< ascending by `Node1`, then `Node2`
};

/// -1 when `entry` sorts before `key`, 0 for the same pair, +1 when it sorts after.
int CompareLine(const LineEntry& key, const LineEntry& entry);
