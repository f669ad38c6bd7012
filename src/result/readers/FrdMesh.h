// The nodes and elements of a CalculiX file.
#pragma once

#include "result/readers/CellTable.h"
#include "result/readers/FrdBlock.h"
#include "result/readers/IdIndex.h"

namespace frd {

struct Mesh {
    std::vector<double> Points; ///< x, y, z of each
    std::vector<std::int64_t> PointIds;
    IdIndex Nodes;   ///< positions by numbers
    CellTable Cells; ///< its nodes by their positions, -1 for numbers that aren't there

    /// What stands behind the first line of the block, which is `header`. False when it can't be understood.
    bool ReadNodes(FileScanner& in, std::string_view header);
    bool ReadElements(FileScanner& in, std::string_view header);

private:
    bool readTextElements(FileScanner& in, std::int64_t count, Form form);
    void addCell(std::int64_t type, std::span<const std::int64_t> nodes);
};

} // namespace frd
