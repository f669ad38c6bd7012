// Between which indexes the nodes of a block of elements lie. Numbers that follow each other mostly lie together, so
// one look at a span of nodes tells of a whole block that it cannot be seen. Knows no positions.
#pragma once

#include "result/ResultModel.h"

#include <span>
#include <vector>

class NodeSpans {
public:
    static constexpr std::int32_t ElementsPerBlock = 512;
    /// Without nodes the first stands behind the last.
    struct Span {
        std::int32_t First, Last;
    };

    /// One for each block, the last of which may be shorter; worked out when the elements are others than the last
    /// time.
    std::span<const Span> Of(const ElementTable& elements);

private:
    QList<std::int32_t> firstCorner, nodeIndex; ///< shared with the elements, which thus cannot change unseen
    std::vector<Span> spans;
};
