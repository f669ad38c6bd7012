// Lists such as "1,5,10-20" of things that count from 1. A range is kept as its ends until the file says how far it can
// go, so that a wrong one costs no memory.
#pragma once

#include "batch/commandSupport.h"

#include <vector>

namespace batch {

/// From the first to the last, up or down.
struct NumberRange {
    std::int32_t First = 1, Last = 1;
};

/// The ranges in `option`'s text, each number one of a single; stops the command when they make no sense.
std::vector<NumberRange> ParseNumberList(const QString& option, const QString& text);

/// The indexes from 0, in the order of the list, each at its first place alone. Stops the command when the file at
/// `path` has only `count` of a `kind` and not all that are named.
std::vector<std::int32_t> IndexesOf(const std::vector<NumberRange>& list, const QString& kind, std::int32_t count,
                                    const QString& path);

} // namespace batch
