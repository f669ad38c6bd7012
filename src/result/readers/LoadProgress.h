// How long work tells what it has done, and learns whether it is to go on. Knows neither the work nor who is told.
#pragma once

#include <QtGlobal>
#include <atomic>
#include <functional>

/// Told how much of the work is done, for a file its bytes; false ends the work. Empty: nobody is told.
using LoadProgress = std::function<bool(qint64 done, qint64 total)>;

/// The work is the part of a larger one from one percentage to another.
inline LoadProgress PartOf(const LoadProgress& whole, int fromPercent, int toPercent) {
    if (!whole)
        return {};
    return [whole, fromPercent, toPercent](qint64 done, qint64 total) {
        return whole(total * fromPercent + done * (toPercent - fromPercent), total * 100);
    };
}

/// For work in pieces that several threads share.
class SharedProgress {
public:
    SharedProgress(const LoadProgress& told, qint64 pieceCount) : progress(told), pieces(pieceCount) {}

    /// One more piece begins; false when it need not be done.
    bool GoesOn() {
        if (!stopped && progress && !progress(begun++, pieces))
            stopped = true;
        return !stopped;
    }
    bool IsStopped() const { return stopped; }

private:
    const LoadProgress& progress;
    const qint64 pieces;
    std::atomic<qint64> begun = 0;
    std::atomic<bool> stopped = false;
};
