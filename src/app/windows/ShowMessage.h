// The program's message box.
#pragma once

#include "platform/base/MessageStyle.h"

#include <QString>

namespace mdApplication {
/// The program's message box, under its title and over the window in front, for which the graph windows make way;
/// `flags` are of `MessageStyle` and the result is of `MessageAnswer`.
int ShowMessage(const QString& text, int flags);
} // namespace mdApplication
