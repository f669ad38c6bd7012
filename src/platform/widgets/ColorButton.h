// A button that shows a colour as its ground and asks for another one when it is pressed. What the colour is for is its
// owner's business.
#pragma once

#include "platform/base/Geometry.h"

#include <QPushButton>

class ColorButton : public QPushButton {
    Q_OBJECT

public:
    explicit ColorButton(const QString& caption, QWidget* parent = nullptr);

    ColorRef Color() const { return color; }
    /// Tells nobody.
    void SetColor(ColorRef value);

    /// Black or white, whichever stands out more from `ground`.
    static ColorRef CaptionColor(ColorRef ground);

signals:
    /// The user has chosen a colour.
    void ColorChosen();

private:
    ColorRef color = 0;
};
