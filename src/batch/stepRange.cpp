#include "batch/stepRange.h"

namespace batch {

void DeclareStepRange(Options& options, const QString& purpose) {
    options.Value(u"steps"_s, u"A:B[:S]"_s, purpose);
}

std::optional<StepRange> StepRangeFrom(const Options& options) {
    if (!options.IsSet(u"steps"_s))
        return {};
    const QString text = options.Text(u"steps"_s);
    const QStringList parts = text.split(u':');
    StepRange range;
    bool ok = parts.size() == 2 || parts.size() == 3;
    std::int64_t* const targets[] = {&range.first, &range.last, &range.stride};
    for (qsizetype i = 0; ok && i < parts.size(); ++i) {
        *targets[i] = parts[i].toInt(&ok);
        ok = ok && *targets[i] >= 1;
    }
    if (!ok || range.last < range.first)
        throw Stop{WrongUsage, u"--steps wants FIRST:LAST or FIRST:LAST:STRIDE, not \"%1\""_s.arg(text)};
    return range;
}

} // namespace batch
