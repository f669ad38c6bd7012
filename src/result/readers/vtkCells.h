// The cell types that the two families of VTK files share.
#pragma once

#include "result/readers/CellTable.h"

#include <QString>
#include <string_view>

namespace vtkCells {

/// As these files list cells: the type of each, where its nodes end in the list, and the list.
struct Lists {
    std::vector<std::int32_t> Types, Ends, Nodes;
};

/// The table of them, which takes the lists over; false when they don't fit together.
bool BuildCells(Lists&& lists, CellTable& cells);

/// Names as these files write them: UTF-8, and what could be misread as %20 and the like.
QString NameOf(std::string_view text);

} // namespace vtkCells
