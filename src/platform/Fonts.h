// Font names and their stand-ins, and the way from a device font to Qt's.
#pragma once

#include "platform/DeviceContext.h"

#include <QFont>

namespace Fonts {
/// Teaches Qt the stand-ins for faces that a system may lack (Japanese faces above all). Needs an application object;
/// calls after the first do nothing.
void InstallSubstitutions();

/// The Qt font whose cell height (ascent plus descent) comes nearest to `font.Height` device units. Cached.
QFont ToQFont(const Font& font);
} // namespace Fonts
