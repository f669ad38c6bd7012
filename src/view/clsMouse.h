// The selection: the nodes or the elements that the user has picked, by index, one kind at a time. A plain list that
// knows no model and removes no duplicates.
#pragma once

#include <cstdint>
#include <vector>

/// What a selection holds.
namespace PickedKind {
enum : int { Nothing = 0, Nodes = 1, Elements = 2 };
}

class clsMouse {
public:
    /// Appends `id`; ignored while the list holds objects of another kind.
    void Add(std::int32_t id, int objectType);
    /// Empties the list and keeps its room.
    void Clear();
    /// Closes the gap; nothing for an index outside the list.
    void Remove(std::int32_t index);

    std::int32_t Count() const { return std::int32_t(ids.size()); }
    /// Index of a node or an element, from 0; -1 outside the list.
    std::int32_t Item(std::int32_t index) const;
    int ObjectType() const { return objectKind; }

private:
    std::vector<std::int32_t> ids;
    int objectKind = PickedKind::Nothing;
};
