// What lies behind a plot: a colour, an edge, or a picture once, tiled or stretched.
#include "app/mdTipsDrawing.h"
#include "plot/clsPlot.h"

#include <QPainter>

namespace {

/// A picture of the given size with its left top corner at (left, top).
DeviceRect placed(double left, double top, double width, double height) {
    return {Round(left), Round(top), Round(left + width), Round(top + height)};
}

/// Small pictures repeated until they fill a patch of some size: the same background in far fewer calls.
QImage patchOf(const QImage& picture) {
    constexpr int patchSize = 256;
    const int across = std::max(1, patchSize / picture.width()), down = std::max(1, patchSize / picture.height());
    if (across * down == 1)
        return picture;
    QImage patch(picture.width() * across, picture.height() * down, QImage::Format_ARGB32_Premultiplied);
    patch.fill(Qt::transparent);
    QPainter(&patch).fillRect(patch.rect(), QBrush(picture.convertToFormat(patch.format())));
    return patch;
}

} // namespace

void clsPlot::paintBackground(DeviceContext& device) const {
    if (DrawWidth <= 0 || DrawHeight <= 0)
        return;
    const DeviceRect area = placed(DrawLeft, DrawTop, DrawWidth, DrawHeight);
    switch (BackStyle) {
    case 1:
    case 5:
    case 6:
        device.SelectPen(stockPen(Stock::NullPen));
        mdTips::SelectBrush(device, BackColor, -1);
        // One unit more, for the one that a null pen takes off.
        device.Rectangle(placed(DrawLeft, DrawTop, DrawWidth + 1.0, DrawHeight + 1.0));
        if (BackStyle != 1)
            mdTips::DrawEdge(device, area, BackStyle == 5);
        return;
    case 2:
        // In the middle of an area of this size at the device's origin, wherever the draw area lies.
        if (!Picture.isNull())
            device.DrawPicture(placed(Round((DrawWidth - Picture.width()) / 2.0),
                                      Round((DrawHeight - Picture.height()) / 2.0), Picture.width(), Picture.height()),
                               Picture);
        return;
    case 3:
        return tilePicture(device, area);
    case 4:
        if (!Picture.isNull())
            device.DrawPicture(area, Picture);
        return;
    default:
        return;
    }
}

void clsPlot::tilePicture(DeviceContext& device, const DeviceRect& area) const {
    if (Picture.isNull())
        return;
    // More single tiles than this nobody reads in a trace either.
    constexpr std::int64_t mostTiles = 1'000'000;
    const std::int64_t tiles =
        (std::int64_t(DrawWidth) / Picture.width() + 1) * (std::int64_t(DrawHeight) / Picture.height() + 1);
    const QImage tile = device.ShowsEveryCall() && tiles <= mostTiles ? Picture : patchOf(Picture);
    for (std::int64_t y = area.Top; y <= area.Bottom; y += tile.height())
        for (std::int64_t x = area.Left; x <= area.Right; x += tile.width())
            device.DrawPicture(placed(double(x), double(y), tile.width(), tile.height()), tile);
}
