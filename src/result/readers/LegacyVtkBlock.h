// Numbers of one kind in a row in a legacy VTK file: where they stand, what they are, and the reading of them.
#pragma once

#include "result/readers/TextNumbers.h"
#include "result/readers/numberTypes.h"

struct LegacyVtkBlock {
    qint64 Offset = 0;
    qint64 Count = 0;
    NumberType Type = NumberType::Float64;
    bool IsText = true;

    /// By a type's name in the file.
    static std::optional<NumberType> TypeOf(std::string_view name);

    /// Whether the file can hold the block whole, from where the scanner stands.
    bool HasRoom(FileScanner& in) const { return in.CanGive(IsText ? Count * 2 - 1 : Count * BytesOf(Type)); }
    /// Goes past the block, before which the scanner stands. False when it is cut short.
    bool Skip(FileScanner& in) const;
    /// Reads the numbers in pieces, `take(numbers)` each. False when they end too early.
    template<class T, class Take>
    bool Read(FileScanner& in, const Take& take) const {
        in.Seek(Offset);
        if (IsText)
            return TextNumbers<T>(in, Count).Hand(Count, take);
        constexpr qint64 mostAtOnce = 8192;
        const bool isWhole = HasRoom(in);
        const qint64 there = std::min(Count, in.Remaining() / BytesOf(Type));
        std::vector<T> numbers(std::size_t(std::clamp<qint64>(there, 1, mostAtOnce)));
        std::vector<char> bytes(numbers.size() * std::size_t(BytesOf(Type)));
        for (qint64 left = there; left > 0; left -= mostAtOnce) {
            const qint64 here = std::min(left, mostAtOnce);
            if (!in.ReadBytes(bytes.data(), here * BytesOf(Type)))
                return false;
            ConvertNumbers(bytes.data(), here, Type, true, numbers.data());
            take(std::span<const T>(numbers).first(std::size_t(here)));
        }
        return isWhole;
    }
};
