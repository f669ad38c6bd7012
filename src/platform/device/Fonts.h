// Font names and their stand-ins, and the way from a device font to Qt's.
#pragma once

#include "platform/device/DeviceContext.h"

#include <QFont>

namespace Fonts {
/// Teaches Qt the stand-ins for faces that a system may lack (Japanese faces above all). Needs an application object;
/// calls after the first do nothing.
void InstallSubstitutions();

/// The faces that a user can choose, sorted: those of the system and those that have a stand-in.
const QStringList& Faces();

/// What shows a face: its own outlines or bitmaps, or the outlines of its stand-in where the system lacks it.
enum class FaceKind { Outline, Bitmap, StandIn };
FaceKind KindOf(const QString& face);

/// Greater fonts are drawn in this cell height: no page is higher, and what a font takes stays within bounds.
inline constexpr int LargestHeight = 8192;

/// The Qt font whose cell height (ascent plus descent) comes nearest to `font.Height` device units. Cached.
QFont ToQFont(const Font& font);

/// Before a text is measured or drawn: it may have the system's font library load something, which ends the program
/// when it finds no memory. Throws std::bad_alloc when there is little left.
void LeaveRoomFor(const QString& text);

/// The families of `ToQFont`, best first, for a file that another system shows: then comes the face itself, and last
/// what CSS calls its kind, `serif`, `monospace` or `sans-serif`.
QStringList FamiliesFor(const Font& font);
} // namespace Fonts
