#include "library/library.h"

#include <QByteArray>
#include <new>

namespace {
thread_local QByteArray lastError;

int fail(int problem, const QString& text) {
    lastError = text.toUtf8();
    return problem;
}
} // namespace

int library::guarded(const std::function<void()>& work) {
    try {
        try {
            work();
            return VELORIN_GOOD;
        } catch (const Failure& failure) {
            return fail(failure.Problem, failure.Text);
        } catch (const std::bad_alloc&) {
            return fail(VELORIN_NO_MEMORY, u"out of memory"_s);
        } catch (const std::exception& problem) {
            return fail(VELORIN_FAILED, QString::fromUtf8(problem.what()));
        }
    } catch (...) {
        // Not even for the text is there memory, or what was thrown is of no kind known.
        return VELORIN_FAILED;
    }
}

void library::require(const char* what, std::int32_t index, std::int32_t count) {
    if (index < 0 || index >= count)
        throw Failure{VELORIN_WRONG, u"%1 %2 is not one of %3"_s.arg(QLatin1StringView(what)).arg(index).arg(count)};
}

std::function<bool(qint64, qint64)> library::progressOf(velorin_progress progress, void* context) {
    if (!progress)
        return {};
    return [progress, context](qint64 done, qint64 total) { return progress(context, done, total) != 0; };
}

int32_t velorin_interface() {
    return VELORIN_INTERFACE;
}

const char* velorin_error() {
    return lastError.constData();
}
