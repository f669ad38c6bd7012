#include "view/NodeSpans.h"

#include "platform/base/Parallel.h"

std::span<const NodeSpans::Span> NodeSpans::Of(const ElementTable& elements) {
    if (firstCorner.isSharedWith(elements.FirstCorner) && nodeIndex.isSharedWith(elements.NodeIndex))
        return spans;
    firstCorner = elements.FirstCorner;
    nodeIndex = elements.NodeIndex;
    const auto count = std::int32_t(std::max<qsizetype>(firstCorner.size() - 1, 0));
    spans.resize(std::size_t((count + ElementsPerBlock - 1) / ElementsPerBlock));
    parallelStretches(std::int32_t(spans.size()), [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t block = first; block < last; ++block) {
            const std::int32_t start = block * ElementsPerBlock, end = std::min(count, start + ElementsPerBlock);
            const std::int32_t from = firstCorner.at(start), to = firstCorner.at(end);
            Span span{INT32_MAX, -1};
            for (const std::int32_t node : std::span(nodeIndex.constData() + from, std::size_t(to - from))) {
                span.First = node < 0 ? span.First : std::min(span.First, node);
                span.Last = std::max(span.Last, node);
            }
            spans[std::size_t(block)] = span;
        }
    });
    return spans;
}
