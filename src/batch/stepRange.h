// The steps that `--steps A:B[:S]` names, for the commands that draw several.
#pragma once

#include "batch/commandSupport.h"

namespace batch {

struct StepRange {
    std::int64_t first = 1, last = 1, stride = 1; ///< counted from 1

    int Count() const { return int((last - first) / stride + 1); }
    std::int64_t At(int index) const { return first + index * stride; }
};

/// Declares `--steps`.
void DeclareStepRange(Options& options, const QString& purpose);

/// Nothing when the option is not given; stops the command when it makes no sense.
std::optional<StepRange> StepRangeFrom(const Options& options);

} // namespace batch
