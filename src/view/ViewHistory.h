// The views seen of a file, so that one can go back and forth among them. Which of them count is its owner's business.
#pragma once

#include "view/ViewState.h"

class ViewHistory {
public:
    void Forget() { *this = {}; }
    /// What is in view counts as seen, behind the view where the history stands and in place of all that came behind
    /// it. The oldest are forgotten. False, and nothing happens, when it is that view still.
    bool Note(const ViewState& view);
    /// Whether there is a view `by` places on, or back below 0.
    bool CanGo(int by) const { return at + by >= 0 && at + by < int(seen.size()); }
    /// Brings that view back; false when there is none.
    bool Go(int by, ViewState& view);

private:
    struct Seen {
        PlotRect Whole, Shown;
        int Zoom;
        bool operator==(const Seen&) const = default;
    };
    std::vector<Seen> seen;
    int at = -1;
};
