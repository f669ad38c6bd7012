// The open result file in memory: mesh, items, directory of steps, and the values of one loaded and one reference step.
// Plain records; the procedures that fill and read them stand in mdVelorinResultModel.
//
// All columns are implicitly shared lists: a copy of a model costs a few pointers and shares every column until one
// side changes it. Indexes count from 0, -1 means none. Reals are single precision.
#pragma once

#include "result/FileLook.h"
#include "result/readers/derivedItems.h"

#include <span>

/// The running bounds of every value search start here.
constexpr float BoundStart = 1.0E+20f;

/// Result values as they travel through the system.
struct ItemValues {
    std::int32_t Count = 0;
    QList<float> Values; ///< `Count` entries, empty when `Count` is below 1
    float MaxValue = 0;
    float MinValue = 0;
};

/// One node, put together for reading; the spans point into the table that it came from.
struct NodeRecord {
    float X, Y;
    float Value;                                ///< of the current item in the loaded step
    float ReferenceValue;                       ///< `Value` as it stood when the reference step was kept
    std::int32_t ElementCount;                  ///< number of entries of the next two
    std::span<const std::int32_t> ElementIndex; ///< the elements that use this node, ascending
    std::span<const std::int32_t> CornerIndex;  ///< for each, the node's position in that element's node list
    bool Active;                                ///< at least one of its elements exists in the loaded step
};

/// One element, put together for reading.
struct ElementRecord {
    std::int32_t ElementType; ///< in the loaded step; negative when the element does not exist there
    std::int32_t NodeCount;
    std::span<const std::int32_t> NodeIndex; ///< -1 for a missing node; may name nodes that the mesh does not have
    std::span<const std::int32_t> Neighbour; ///< per edge k (corner k to k + 1) the element across it, -1 none
    float CentreX, CentreY;                  ///< mean of the node coordinates
};

/// The nodes, a column per field. `FirstEntry` has one entry more than there are nodes: the entries of node i in
/// `ElementIndex` and `CornerIndex` are those from FirstEntry[i] up to before FirstEntry[i + 1].
struct NodeTable {
    QList<float> X, Y, Value, ReferenceValue;
    QList<std::uint8_t> Active;
    QList<std::int32_t> FirstEntry, ElementIndex, CornerIndex;

    NodeRecord operator[](qsizetype index) const;
};

/// The elements, a column per field; corners of element e from FirstCorner[e] up to before FirstCorner[e + 1].
struct ElementTable {
    QList<std::int32_t> ElementType;
    QList<std::int32_t> FirstCorner, NodeIndex, Neighbour;
    QList<float> CentreX, CentreY;

    ElementRecord operator[](qsizetype index) const;
    std::int32_t NodeCount(qsizetype index) const { return FirstCorner[index + 1] - FirstCorner[index]; }
};

struct MeshData {
    std::int32_t NodeCount = 0;
    NodeTable Nodes;
    std::int32_t ElementCount = 0;
    ElementTable Elements;
    float MaxValue = 0; ///< of the current item on the nodes
    float MinValue = 0;

    /// Which elements existed when `Neighbour` was built, a bit each; empty before the first time.
    QList<std::uint64_t> NeighbourBasis;
};

struct ResultModel {
    QString FileName; ///< full path, empty when none
    QString Magic;
    std::int32_t Version = 0; ///< times 100
    ReadHandle FileHandle;    ///< shared by the copies of a model; closed for what is read from no single file
    DerivedItems Derived;     ///< asked for when it was opened
    FileLook Look;            ///< of the file when it was opened
    std::int32_t FirstStepOffset = 0;
    std::shared_ptr<const StepSource> Source; ///< gives the values of the steps; shared too, null when no file is open
    QString Title;
    QString Note; ///< a line for people: what of the file was left out, or of a refused one why; mostly empty
    std::int32_t StepCount = 0;
    QList<StepInfo> Steps;
    std::int32_t CurrentStep = -1;
    std::int32_t ItemCount = 0;
    QList<ItemInfo> Items;
    std::int32_t DisplacementItemX = -1;
    std::int32_t DisplacementItemY = -1;
    std::int32_t CurrentItem = -1;
    MeshData Mesh;
    QList<ItemValues> ItemData;
    std::int32_t ReferenceStep = -1;
    std::int32_t ReferenceItem = -1; ///< whose values stand in `ReferenceValue`
    QList<ItemValues> ReferenceItemData;
    bool LineElementsOnly = false;
    bool NoDisplacement = false;
};

inline NodeRecord NodeTable::operator[](qsizetype index) const {
    const std::int32_t first = FirstEntry[index];
    const std::int32_t count = FirstEntry[index + 1] - first;
    return {X[index],
            Y[index],
            Value[index],
            ReferenceValue[index],
            count,
            {ElementIndex.constData() + first, std::size_t(count)},
            {CornerIndex.constData() + first, std::size_t(count)},
            Active[index] != 0};
}

inline ElementRecord ElementTable::operator[](qsizetype index) const {
    const std::int32_t first = FirstCorner[index];
    const std::int32_t count = NodeCount(index);
    return {ElementType[index],
            count,
            {NodeIndex.constData() + first, std::size_t(count)},
            {Neighbour.constData() + first, std::size_t(count)},
            CentreX[index],
            CentreY[index]};
}
