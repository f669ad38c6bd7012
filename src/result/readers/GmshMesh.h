// The nodes and elements of a Gmsh file, in the forms of its versions 2 and 4.1.
#pragma once

#include "result/readers/CellTable.h"
#include "result/readers/GmshNumbers.h"
#include "result/readers/IdIndex.h"

struct GmshMesh {
    std::vector<double> Points;
    std::vector<std::int64_t> PointIds, CellIds;
    CellTable Cells; ///< its nodes by their numbers' positions, -1 for numbers that aren't there
    IdIndex PointIndex;

    /// What stands behind the first line of the section. False when it can't be understood.
    bool ReadNodes(GmshNumbers& in, bool isVersion4);
    bool ReadElements(GmshNumbers& in, bool isVersion4);

private:
    bool readNodes2(GmshNumbers& in);
    bool readNodes4(GmshNumbers& in);
    bool readElements2(GmshNumbers& in);
    bool readElements4(GmshNumbers& in);
    void addCell(std::int64_t id, std::int64_t type, std::span<const std::int64_t> nodes);
};
