// What the functions of the C interface share: the open result behind its handle, and the way from exceptions to
// numbers and a text. Their contracts stand in the interface's header.
#pragma once

#include "result/ResultModel.h"

#include <QByteArray>
#include <functional>
#include <velorin.h>

/// Never changed once it is open; pictures are drawn of copies of the model, which share all.
struct velorin_result {
    ResultModel Model;
    QByteArray Title;
    QList<QByteArray> ItemNames, StepNames;
};

namespace library {

/// Ends a function of the interface.
struct Failure {
    int Problem;
    QString Text;
};

/// Runs the inside of a function of the interface: what it throws becomes its answer.
int guarded(const std::function<void()>& work);

/// Throws unless `index` is below `count`.
void require(const char* what, std::int32_t index, std::int32_t count);

/// `progress` as our procedures take it. It is null where there is none.
std::function<bool(qint64, qint64)> progressOf(velorin_progress progress, void* context);

} // namespace library
