// Which element lies across which edge. Edges are met at the smaller of their two nodes: there a handful of edges lie
// in wait for their partner, and no table of all edges is needed. Each edge of each element is met at exactly one node,
// so the nodes can be shared out over the cores.
#include "result/mdVelorinResultModel.h"

#include "platform/base/Lists.h"
#include "platform/base/Parallel.h"

#include <algorithm>

namespace mdVelorinResultModel {

namespace {

/// An edge as one element uses it: edge `corner` of `element`, from the node in question to `otherNode`.
struct EdgeUse {
    std::int32_t otherNode;
    std::int32_t element;
    std::int32_t corner;
};

struct NodePair {
    std::int32_t low = 0;
    std::int32_t high = 0;
    bool operator==(const NodePair&) const = default;
};

/// The columns that the search reads and writes, as plain pointers.
struct Topology {
    std::int32_t nodeCount;
    const std::int32_t* types;
    const std::int32_t* firstCorner;
    const std::int32_t* nodeIndex;
    const std::int32_t* firstEntry;
    const std::int32_t* elementIndex;
    const std::int32_t* cornerIndex;
    std::int32_t* neighbour;
    NodePair unmatched; ///< the pair whose elements stay without each other
    bool hasUnmatched;

    NodePair pairAt(std::int32_t element, std::int32_t corner) const {
        const std::int32_t first = firstCorner[element];
        const std::int32_t count = firstCorner[element + 1] - first;
        const std::int32_t a = nodeIndex[first + corner];
        const std::int32_t b = nodeIndex[first + (corner + 1 < count ? corner + 1 : 0)];
        return {std::min(a, b), std::max(a, b)};
    }
    std::int32_t& neighbourOf(const EdgeUse& use) const { return neighbour[firstCorner[use.element] + use.corner]; }
};

/// Joins the users of one edge, given in element order: the first with each further one, and the first ends at the
/// last.
void joinUsers(const Topology& mesh, EdgeUse* first, EdgeUse* last) {
    for (EdgeUse* use = first + 1; use < last; ++use) {
        mesh.neighbourOf(*first) = use->element;
        mesh.neighbourOf(*use) = first->element;
    }
}

/// The edges of existing elements whose smaller node is `node`, by element and corner.
void gatherEdgesAt(const Topology& mesh, std::int32_t node, std::vector<EdgeUse>& uses) {
    uses.clear();
    for (std::int32_t entry = mesh.firstEntry[node]; entry < mesh.firstEntry[node + 1]; ++entry) {
        const std::int32_t element = mesh.elementIndex[entry];
        if (mesh.types[element] < 0)
            continue;
        const std::int32_t first = mesh.firstCorner[element];
        const std::int32_t count = mesh.firstCorner[element + 1] - first;
        const std::int32_t corner = mesh.cornerIndex[entry];
        const std::int32_t previous = corner > 0 ? corner - 1 : count - 1;
        const std::int32_t after = mesh.nodeIndex[first + (corner + 1 < count ? corner + 1 : 0)];
        const std::int32_t before = mesh.nodeIndex[first + previous];
        // An edge from a node to itself is met at both of its ends and taken at the first.
        if (after >= node)
            uses.push_back({after, element, corner});
        if (before > node)
            uses.push_back({before, element, previous});
    }
}

void joinEdgesAt(const Topology& mesh, std::int32_t node, std::vector<EdgeUse>& uses) {
    gatherEdgesAt(mesh, node, uses);
    // Few edges meet at a node, so that a plain insertion sort is the fastest way to bring partners together in order.
    const auto before = [](const EdgeUse& a, const EdgeUse& b) {
        if (a.otherNode != b.otherNode)
            return a.otherNode < b.otherNode;
        return a.element != b.element ? a.element < b.element : a.corner < b.corner;
    };
    constexpr std::size_t fewEdges = 32;
    if (uses.size() > fewEdges) {
        std::sort(uses.begin(), uses.end(), before);
    } else {
        for (std::size_t i = 1; i < uses.size(); ++i) {
            const EdgeUse use = uses[i];
            std::size_t place = i;
            for (; place > 0 && before(use, uses[place - 1]); --place)
                uses[place] = uses[place - 1];
            uses[place] = use;
        }
    }
    EdgeUse* const end = uses.data() + uses.size();
    for (EdgeUse* group = uses.data(); group < end;) {
        EdgeUse* groupEnd = group + 1;
        while (groupEnd < end && groupEnd->otherNode == group->otherNode)
            ++groupEnd;
        if (!(mesh.hasUnmatched && mesh.unmatched == NodePair{node, group->otherNode}))
            joinUsers(mesh, group, groupEnd);
        group = groupEnd;
    }
}

/// Edges with an end that the mesh does not have are met at no node; they are joined by a sort of their own.
void joinEdgesWithoutNode(const Topology& mesh, std::int32_t elementCount) {
    struct LooseEdge {
        NodePair pair;
        EdgeUse use;
    };
    std::vector<LooseEdge> edges;
    for (std::int32_t element = 0; element < elementCount; ++element) {
        if (mesh.types[element] < 0)
            continue;
        const std::int32_t count = mesh.firstCorner[element + 1] - mesh.firstCorner[element];
        for (std::int32_t corner = 0; corner < count; ++corner) {
            const NodePair pair = mesh.pairAt(element, corner);
            const bool metAtNode = pair.low >= 0 && pair.low < mesh.nodeCount;
            if (!metAtNode && !(mesh.hasUnmatched && mesh.unmatched == pair))
                edges.push_back({pair, {pair.high, element, corner}});
        }
    }
    std::stable_sort(edges.begin(), edges.end(), [](const LooseEdge& a, const LooseEdge& b) {
        return a.pair.low != b.pair.low ? a.pair.low < b.pair.low : a.pair.high < b.pair.high;
    });
    for (std::size_t first = 0; first < edges.size();) {
        std::vector<EdgeUse> users;
        std::size_t next = first;
        for (; next < edges.size() && edges[next].pair == edges[first].pair; ++next)
            users.push_back(edges[next].use);
        joinUsers(mesh, users.data(), users.data() + users.size());
        first = next;
    }
}

QList<std::uint64_t> existenceOf(const MeshData& mesh) {
    QList<std::uint64_t> bits = listOf<std::uint64_t>((mesh.ElementCount + 63) / 64);
    const std::int32_t* types = mesh.Elements.ElementType.constData();
    std::uint64_t* target = bits.data();
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e)
        target[e / 64] |= std::uint64_t(types[e] >= 0) << (e % 64);
    return bits;
}

} // namespace

bool BuildElementNeighbours(MeshData& mesh, const LoadProgress& progress) {
    const QList<std::uint64_t> existence = existenceOf(mesh);
    if (existence.isEmpty() || existence == mesh.NeighbourBasis)
        return true;
    mesh.NeighbourBasis.clear();
    ElementTable& elements = mesh.Elements;
    elements.Neighbour = listOf(elements.NodeIndex.size(), -1);

    Topology topology = {mesh.NodeCount,
                         elements.ElementType.constData(),
                         elements.FirstCorner.constData(),
                         elements.NodeIndex.constData(),
                         mesh.Nodes.FirstEntry.constData(),
                         mesh.Nodes.ElementIndex.constData(),
                         mesh.Nodes.CornerIndex.constData(),
                         elements.Neighbour.data(),
                         {},
                         false};
    for (std::int32_t e = 0; e < mesh.ElementCount && !topology.hasUnmatched; ++e)
        if (topology.types[e] >= 0 && elements.NodeCount(e) > 0) {
            topology.unmatched = topology.pairAt(e, 0);
            topology.hasUnmatched = true;
        }

    constexpr std::int32_t nodesPerPiece = 16384;
    const std::int32_t pieces = (mesh.NodeCount + nodesPerPiece - 1) / nodesPerPiece;
    SharedProgress shared(progress, pieces);
    parallelFor(pieces, [&](int piece) {
        if (!shared.GoesOn())
            return;
        std::vector<EdgeUse> uses;
        const std::int32_t last = std::min(mesh.NodeCount, (piece + 1) * nodesPerPiece);
        for (std::int32_t node = piece * nodesPerPiece; node < last; ++node)
            joinEdgesAt(topology, node, uses);
    });
    // Every node number that the mesh has stands in a node's list; if any is missing there, some edge was not met
    // above.
    if (mesh.Nodes.ElementIndex.size() != elements.NodeIndex.size())
        joinEdgesWithoutNode(topology, mesh.ElementCount);
    if (!shared.IsStopped())
        mesh.NeighbourBasis = existence;
    return !shared.IsStopped();
}

} // namespace mdVelorinResultModel
