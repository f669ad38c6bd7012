// The program's message box.
#pragma once

#include "platform/base/MessageStyle.h"

#include <QString>
#include <functional>

namespace mdApplication {
/// Called with true before `ShowMessage` shows its box and with false after, when set. The graph windows, which stay
/// above all others, make way for the box this way.
extern std::function<void(bool lower)> MessageBoxHook;

/// The program's message box, under its title; `flags` are of `MessageStyle` and the result is of `MessageAnswer`.
int ShowMessage(const QString& text, int flags);
} // namespace mdApplication
