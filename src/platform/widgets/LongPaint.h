// Pictures of a box that may take long to paint: each is painted on a sheet by another thread and takes the place of
// the one before when it is whole. Knows nothing of what is painted.
#pragma once

#include "platform/widgets/LongWork.h"

class DeviceContext;
class PictureBox;

class LongPaint {
public:
    enum class Outcome {
        Shown,
        Stopped, ///< by the user or for want of memory; the picture is still the one before
        GaveWay, ///< stopped by input; the picture is still the one before
        Later    ///< one goes on already, and paints once more at its end
    };

    /// `show` is told the progress as by `LongWork`.
    LongPaint(PictureBox& pictureBox, std::function<void(const QString&)> showProgress)
        : box(pictureBox), show(std::move(showProgress)) {}

    /// Paints a picture of the box's size by `draw`, which is called on another thread, and again when the size changes
    /// meanwhile. `beside` runs on yet another thread, once.
    Outcome Paint(const std::function<void(DeviceContext&)>& draw, const std::function<void()>& beside = {});
    /// Likewise, but gives way to input.
    Outcome PaintAtRest(const std::function<void(DeviceContext&)>& draw);
    bool IsRunning() const { return painting; }
    /// What to tell the user of the last one that was stopped.
    const QString& WhyStopped() const { return whyStopped; }

private:
    bool paintSheet(const std::function<void(DeviceContext&)>& draw, const std::function<void()>& beside);
    bool drawSheet(const std::function<void(DeviceContext&)>& draw, const std::function<void()>& beside);

    PictureBox& box;
    std::function<void(const QString&)> show;
    QString whyStopped;
    bool painting = false, again = false;
    bool givesWay = false, gaveWay = false;
};
