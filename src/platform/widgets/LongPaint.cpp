#include "platform/widgets/LongPaint.h"

#include "platform/base/Literals.h"
#include "platform/base/Parallel.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/PictureBox.h"

LongPaint::Outcome LongPaint::Paint(const std::function<void(DeviceContext&)>& draw,
                                    const std::function<void()>& beside) {
    // Only a new size can ask for a paint while one goes on, and it wants the last word.
    again = true;
    if (painting)
        return Outcome::Later;
    painting = true;
    bool whole = true;
    auto once = beside;
    while (whole && std::exchange(again, false))
        whole = paintSheet(draw, std::exchange(once, {}));
    painting = again = false;
    if (!whole)
        return gaveWay ? Outcome::GaveWay : Outcome::Stopped;
    box.ShowSheet();
    return Outcome::Shown;
}

LongPaint::Outcome LongPaint::PaintAtRest(const std::function<void(DeviceContext&)>& draw) {
    givesWay = !painting;
    const Outcome outcome = Paint(draw);
    givesWay = false;
    return outcome;
}

/// False, with `whyStopped`, when the sheet is not whole.
bool LongPaint::paintSheet(const std::function<void(DeviceContext&)>& draw, const std::function<void()>& beside) {
    try {
        gaveWay = false;
        whyStopped = u"描画を中止しました。"_s;
        return drawSheet(draw, beside);
    } catch (const std::bad_alloc&) {
        whyStopped = u"メモリが足りないため、描画を中止しました。"_s;
        return false;
    }
}

bool LongPaint::drawSheet(const std::function<void(DeviceContext&)>& draw, const std::function<void()>& beside) {
    LongWork work(u"描画中... (Esc で中止)"_s, show);
    QImage& sheet = box.BlankSheet();
    if (sheet.isNull() && !box.size().isEmpty())
        throw std::bad_alloc();
    RasterDevice device(sheet, box.DotsPerInch());
    work.SetGivesWay(givesWay);
    const bool whole = work.Run([&](const LongWork::Progress& progress) {
        device.GoesOn = [&progress] { return progress(0, 0); };
        parallelFor(beside ? 2 : 1, [&](int piece) {
            try {
                piece == 0 ? draw(device) : beside();
            } catch (const DrawingStopped&) {
                // Run tells.
            }
        });
    });
    gaveWay = work.GaveWay();
    return whole;
}
