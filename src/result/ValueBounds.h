// Running bounds over values, from the fixed start of every search. NaN moves no bound.
#pragma once

#include "result/ResultModel.h"

#include <span>

struct ValueBounds {
    float Max = -BoundStart;
    float Min = BoundStart;

    void Take(float value) {
        if (value > Max)
            Max = value;
        if (value < Min)
            Min = value;
    }
    /// As if the other's values had been taken after this one's.
    void Take(const ValueBounds& later) {
        if (later.Max > Max)
            Max = later.Max;
        if (later.Min < Min)
            Min = later.Min;
    }
    /// The bounds of `values` taken in order, bit for bit, found several values at a time.
    static ValueBounds Of(std::span<const float> values);

    void StoreIn(ItemValues& values) const {
        values.MaxValue = Max;
        values.MinValue = Min;
    }
    /// No value moved the bounds, so both count as 0.
    void StoreCorrectedIn(ItemValues& values) const {
        values.MaxValue = Min > Max ? 0 : Max;
        values.MinValue = Min > Max ? 0 : Min;
    }
};
