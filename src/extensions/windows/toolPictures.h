// The pictures of external programs for menus: from the desktop's entry of the program, and from picture files that
// stand beside it under its name.
#pragma once

#include "extensions/toolTable.h"

#include <QIcon>

namespace toolPictures {
/// The picture of the number that the entry asks for; none when the program is missing or has not so many.
QIcon PictureOf(const ToolEntry& tool);
} // namespace toolPictures
