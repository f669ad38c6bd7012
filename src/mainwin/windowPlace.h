// Where a window comes back: the place that it was left at, held within the screens that there are now.
#pragma once

#include <QRect>
#include <array>
#include <optional>
#include <span>

namespace windowPlace {

/// Window places are kept in twentieths of a point, of which there are 15 in a pixel at 96 dots an inch.
constexpr int TwipsPerPixel = 15;

/// The window's corner and size out of left, top, width and height in twips, moved and made smaller as far as it takes
/// to have all of it, with `frame` more for its frame, on the screen of `screens` that it lies on most, or else on the
/// first one. Nothing for a size below `least`, which was never stored.
std::optional<QRect> Restored(const std::array<int, 4>& twips, QSize least, QSize frame,
                              std::span<const QRect> screens);

} // namespace windowPlace
