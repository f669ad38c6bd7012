// Numbers as other programs store them: how wide, of which kind, in which order of bytes; and what they are here.
#pragma once

#include <QtEndian>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

enum class NumberType : std::uint8_t { Int8, UInt8, Int16, UInt16, Int32, UInt32, Int64, UInt64, Float32, Float64 };

constexpr qint64 BytesOf(NumberType type) {
    constexpr qint64 bytes[] = {1, 1, 2, 2, 4, 4, 8, 8, 4, 8};
    return bytes[std::size_t(type)];
}

/// A stored number as a T. Where T is whole, what lies beyond it or is no number gives the least T, which is no index.
template<class T, class Stored>
T NumberAs(Stored value) {
    if constexpr (std::is_floating_point_v<T>) {
        return T(value);
    } else if constexpr (std::is_floating_point_v<Stored>) {
        return std::abs(value) < Stored(std::numeric_limits<T>::max()) ? T(value) : std::numeric_limits<T>::min();
    } else {
        return std::in_range<T>(value) ? T(value) : std::numeric_limits<T>::min();
    }
}

/// The same for `count` of them in a row; `bytes` need not be aligned.
template<class T>
void ConvertNumbers(const char* bytes, qint64 count, NumberType type, bool bigEndian, T* target) {
    const auto convert = [&]<class Stored>(Stored value) {
        for (qint64 i = 0; i < count; ++i) {
            std::memcpy(&value, bytes + i * qint64(sizeof value), sizeof value);
            target[i] = NumberAs<T>(bigEndian ? qFromBigEndian(value) : qFromLittleEndian(value));
        }
    };
    switch (type) {
    case NumberType::Int8:
        return convert(std::int8_t());
    case NumberType::UInt8:
        return convert(std::uint8_t());
    case NumberType::Int16:
        return convert(std::int16_t());
    case NumberType::UInt16:
        return convert(std::uint16_t());
    case NumberType::Int32:
        return convert(std::int32_t());
    case NumberType::UInt32:
        return convert(std::uint32_t());
    case NumberType::Int64:
        return convert(std::int64_t());
    case NumberType::UInt64:
        return convert(std::uint64_t());
    case NumberType::Float32:
        return convert(float());
    case NumberType::Float64:
        return convert(double());
    }
}
