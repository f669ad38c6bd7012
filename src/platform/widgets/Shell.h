// Opens a file or an address the way the desktop does.
#pragma once

#include <QString>

namespace Shell {
/// False when the desktop knows no program for it.
bool Open(const QString& path);
} // namespace Shell
