// What a reader finds in a result file when it is opened, before anything is worked out of it. Plain records; the model
// takes them over as they are.
//
// Indexes count from 0. Reals are single precision.
#pragma once

#include "platform/base/ReadHandle.h"
#include "result/readers/StepSource.h"

#include <QList>
#include <QString>
#include <optional>

struct StepInfo {
    QString Name;
    float Time = 0;
    std::int32_t FileOffset = 0;
};

struct ItemInfo {
    QString Name;
    std::int32_t ElementType = -1; ///< negative: one value per node; otherwise the type of the elements that have one
    std::int32_t Flags = 0;        ///< bit 0 displacement X, bit 1 displacement Y
};

struct ResultContent {
    // Information about the file, for formats that have such a thing.
    QString Magic;
    std::int32_t Version = 0; ///< times 100
    ReadHandle FileHandle;
    std::int32_t FirstStepOffset = 0;
    /// The other files that belong to it, as they were when they were read.
    std::vector<NamedStamp> Parts;

    /// A line for people: what of the file was left out, or why it was refused. Empty when there is nothing to say.
    QString Note;

    std::optional<QString> Title; ///< nothing: that of the file before stays
    QList<ItemInfo> Items;
    QList<float> NodeX, NodeY;
    /// The nodes of element e stand in `NodeIndex` from FirstCorner[e] up to before FirstCorner[e + 1]. -1 is a missing
    /// node; indexes may be of nodes that aren't there.
    QList<std::int32_t> FirstCorner, NodeIndex;
    QList<StepInfo> Steps;
    std::shared_ptr<const StepSource> Source; ///< of the values of as many steps, items and elements
};
