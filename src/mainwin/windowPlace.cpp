#include "mainwin/windowPlace.h"

#include <algorithm>

std::optional<QRect> windowPlace::Restored(const std::array<int, 4>& twips, QSize least, QSize frame,
                                           std::span<const QRect> screens) {
    const QRect place(twips[0] / TwipsPerPixel, twips[1] / TwipsPerPixel, twips[2] / TwipsPerPixel,
                      twips[3] / TwipsPerPixel);
    if (screens.empty() || place.width() < least.width() || place.height() < least.height())
        return std::nullopt;
    const auto shared = [&place](const QRect& screen) {
        const QRect both = screen & place;
        return qint64(both.width()) * both.height();
    };
    const QRect& screen = *std::ranges::max_element(screens, {}, shared);
    const QSize size = place.size().boundedTo(screen.size() - frame);
    const QSize room = screen.size() - frame - size;
    return QRect(QPoint(std::clamp(place.left(), screen.left(), screen.left() + room.width()),
                        std::clamp(place.top(), screen.top(), screen.top() + room.height())),
                 size);
}
