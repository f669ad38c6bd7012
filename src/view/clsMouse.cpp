#include "view/clsMouse.h"

void clsMouse::Add(std::int32_t id, int objectType) {
    if (objectKind != PickedKind::Nothing && objectKind != objectType)
        return;
    objectKind = objectType;
    ids.push_back(id);
}

void clsMouse::Clear() {
    ids.clear();
    objectKind = PickedKind::Nothing;
}

void clsMouse::Remove(std::int32_t index) {
    if (index < 0 || index >= Count())
        return;
    ids.erase(ids.begin() + index);
    if (ids.empty())
        objectKind = PickedKind::Nothing;
}

std::int32_t clsMouse::Item(std::int32_t index) const {
    return index >= 0 && index < Count() ? ids[std::size_t(index)] : -1;
}
