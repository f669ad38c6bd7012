// Where the values of a Gmsh file stand, and the reading of them. Knows nothing of how a file is gone through.
#pragma once

#include "result/readers/ForeignResult.h"

struct GmshData {
    static constexpr std::int32_t MostComponents = 99;

    enum class Place : std::uint8_t { Nodes, Elements, ElementNodes };

    /// A section of values: one array in one step, or a part of that.
    struct Section {
        std::size_t Array = 0;
        std::int64_t Step = 0;
        std::int64_t Entries = 0;
        qint64 Offset = 0;
    };

    ReadHandle File;
    bool IsText = true, IsBigEndian = false;
    std::vector<Place> Places; ///< of each array
    std::vector<Section> Sections;
    std::vector<std::int64_t> Steps; ///< their numbers in the file
    IdIndex PointIndex, CellIndex;
    std::size_t Points = 0, Cells = 0;
    CellTable NodesOfCells; ///< only where values stand at the nodes of each element

    /// As `ReadArray` and `FindArray` have it.
    std::vector<float> Read(std::int32_t step, const ForeignArray& info, std::int32_t array) const;
    std::optional<DirectArray> Find(std::int32_t step, const ForeignArray& info, std::int32_t array) const;

private:
    void readSection(const Section& section, std::size_t components, Place place, std::vector<float>& values,
                     std::vector<std::int32_t>& counts) const;
};
