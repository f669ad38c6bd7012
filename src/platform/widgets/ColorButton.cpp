#include "platform/widgets/ColorButton.h"

#include "platform/widgets/Dialogs.h"

#include <cmath>

namespace {

QString nameOf(ColorRef color) {
    return QColor(redOf(color), greenOf(color), blueOf(color)).name();
}

/// The light that a colour gives off, from 0 for black to 1 for white, weighted as the eye sees it.
double luminance(ColorRef color) {
    const auto light = [](int channel) {
        const double share = channel / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * light(redOf(color)) + 0.7152 * light(greenOf(color)) + 0.0722 * light(blueOf(color));
}

} // namespace

ColorRef ColorButton::CaptionColor(ColorRef ground) {
    // Contrast is the quotient of two luminances, each with a little stray light; here both captions have the same.
    constexpr double strayLight = 0.05;
    const double light = luminance(ground) + strayLight;
    return light * light > strayLight * (1 + strayLight) ? makeColor(0, 0, 0) : makeColor(255, 255, 255);
}

ColorButton::ColorButton(const QString& caption, QWidget* parent) : QPushButton(caption, parent) {
    SetColor(color);
    connect(this, &QPushButton::clicked, this, [this] {
        if (const std::optional<ColorRef> chosen = Dialogs::ChooseColor(window(), u"色の設定"_s, color)) {
            SetColor(*chosen);
            emit ColorChosen();
        }
    });
}

void ColorButton::SetColor(ColorRef value) {
    color = value;
    setStyleSheet(u"QPushButton { background-color: "_s + nameOf(color) + u"; color: "_s + nameOf(CaptionColor(color)) +
                  u"; border: 1px solid #808080; border-radius: 3px; padding: 5px 16px; }"_s
                  u"QPushButton:focus { border: 2px solid palette(highlight); padding: 4px 15px; }"_s);
}
