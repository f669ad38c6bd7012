// Path data of SVG, as short as it can be written. Knows no device.
#pragma once

#include "platform/base/Geometry.h"

#include <QByteArray>
#include <charconv>
#include <cstdlib>

/// The data of one path, written to the end of a text step by step, mostly as ways from the last point: in a mesh they
/// are shorter than positions.
class SvgPath {
public:
    void Move(QByteArray& text, DevicePoint to) { step(text, letter == 0 ? 'M' : 'm', to); }
    void Line(QByteArray& text, DevicePoint to) { step(text, to.Y == at.Y ? 'h' : to.X == at.X ? 'v' : 'l', to); }
    /// Back to `start`, where the ring was begun.
    void Close(QByteArray& text, DevicePoint start) {
        text += letter = 'z';
        at = start;
    }
    /// Where the last step led.
    DevicePoint At() const { return at; }

private:
    /// Viewers that reckon in single precision add up ways between such points exactly; others are written as
    /// positions.
    static bool isNear(DevicePoint point) {
        constexpr std::int64_t reach = 1 << 22;
        return std::abs(std::int64_t(point.X)) <= reach && std::abs(std::int64_t(point.Y)) <= reach;
    }

    void step(QByteArray& text, char wanted, DevicePoint to) {
        const bool moves = wanted == 'm' || wanted == 'M';
        const bool absolute = wanted == 'M' || !isNear(at) || !isNear(to);
        if (absolute)
            wanted = moves ? 'M' : 'L';
        // A letter holds until the next one, but what follows a move is a line.
        if (wanted != letter || moves)
            text += letter = wanted;
        if (wanted != 'v')
            coordinate(text, absolute ? to.X : std::int64_t(to.X) - at.X);
        if (wanted != 'h')
            coordinate(text, absolute ? to.Y : std::int64_t(to.Y) - at.Y);
        at = to;
    }

    static void coordinate(QByteArray& text, std::int64_t value) {
        char digits[24];
        digits[0] = ' ';
        const char* const end = std::to_chars(digits + 1, std::end(digits), value).ptr;
        // A minus and a letter set a number apart by themselves.
        const bool apart = value < 0 || text.back() < '0' || text.back() > '9';
        text.append(digits + apart, end - digits - apart);
    }

    DevicePoint at;
    char letter = 0; ///< the last one written
};
