#include "view/ViewHistory.h"

bool ViewHistory::Note(const ViewState& view) {
    const Seen now{view.WholeBounds, view.ViewBounds, view.Zoom};
    if (at >= 0 && seen[std::size_t(at)] == now)
        return false;
    constexpr std::size_t most = 100;
    seen.resize(std::size_t(at + 1));
    seen.push_back(now);
    if (seen.size() > most)
        seen.erase(seen.begin());
    at = int(seen.size()) - 1;
    return true;
}

bool ViewHistory::Go(int by, ViewState& view) {
    if (!CanGo(by))
        return false;
    at += by;
    const Seen& found = seen[std::size_t(at)];
    view.WholeBounds = found.Whole;
    view.ViewBounds = found.Shown;
    view.Zoom = found.Zoom;
    return true;
}
