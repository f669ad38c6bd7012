// The numbers that a Gmsh file is made of, as text or binary. Knows no nodes and no elements.
#pragma once

#include "result/readers/TextNumbers.h"
#include "result/readers/numberTypes.h"

/// The numbers of the file one after the other, as text or binary.
class GmshNumbers {
public:
    explicit GmshNumbers(FileScanner& scanner) : in(scanner) {}

    bool IsText = true;
    bool IsBigEndian = false;

    /// While it lives nothing but numbers comes, about `count` of them: texts are parsed on all cores. Among reals,
    /// whole numbers of more than 53 bits are no numbers; among whole ones, reals aren't.
    class Run {
    public:
        enum Kind : std::uint8_t { OfReals, OfWholes };
        Run(GmshNumbers& numbers, std::int64_t count, Kind kind) : of(numbers) {
            of.room = of.in.Remaining();
            if (of.IsText && kind == OfReals)
                of.reals.emplace(of.in, count);
            else if (of.IsText)
                of.wholes.emplace(of.in, count, TextNumbers<std::int64_t>::Marked);
            of.isInRun = of.IsText;
        }
        ~Run() {
            of.reals.reset();
            of.wholes.reset();
            of.isInRun = false;
        }
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

    private:
        GmshNumbers& of;
    };

    bool Int(std::int64_t& value) { return Wholes({&value, 1}, NumberType::Int32); }
    bool Size(std::int64_t& value) { return Wholes({&value, 1}, NumberType::UInt64); }
    bool Real(double& value) { return Reals({&value, 1}); }
    /// Numbers of one width in a row, at most `MostInRow`.
    bool Wholes(std::span<std::int64_t> values, NumberType type) { return read(values, type); }
    bool Reals(std::span<double> values) { return read(values, NumberType::Float64); }
    static constexpr std::size_t MostInRow = TextNumbers<double>::MostInRow;
    /// Past so many of them.
    bool Skip(std::int64_t count, NumberType type) {
        std::array<std::int64_t, MostInRow> some;
        for (std::int64_t here = 0; count > 0; count -= here) {
            here = std::min(count, std::int64_t(MostInRow));
            if (!Wholes(std::span(some).first(std::size_t(here)), type))
                return false;
        }
        return true;
    }
    /// Whether so many numbers of that width could still come.
    bool CanHold(std::int64_t count, NumberType type) {
        const qint64 width = IsText ? 2 : BytesOf(type);
        if (count < 0 || isInRun)
            return count >= 0 && count <= (room + 1) / width;
        return in.CanGive(std::min<qint64>(count, in.Remaining() + 2) * width - 1); // the last has no blank behind it
    }
    /// In a run of whole numbers as text: to the end of the line.
    void SkipLine() {
        if (wholes)
            wholes->SkipLine();
    }
    FileScanner& Scanner() { return in; }

private:
    template<class T>
    bool read(std::span<T> values, NumberType type) {
        if (wholes)
            return take(*wholes, values);
        if (reals)
            return take(*reals, values);
        if (IsText)
            return std::ranges::all_of(values, [this](T& value) { return in.Number(value); });
        std::array<char, MostInRow * sizeof(double)> bytes;
        if (!in.ReadBytes(bytes.data(), std::ssize(values) * BytesOf(type)))
            return false;
        ConvertNumbers(bytes.data(), std::ssize(values), type, IsBigEndian, values.data());
        return true;
    }

    template<class T, class Numbers>
    static bool take(Numbers& numbers, std::span<T> values) {
        const auto* number = values.empty() ? nullptr : numbers.Row(values.size());
        for (T& value : values) {
            if (!number)
                return false;
            value = NumberAs<T>(*number);
            if (std::is_integral_v<T> && double(value) != double(*number))
                return false;
            ++number;
        }
        return true;
    }

    FileScanner& in;
    std::optional<TextNumbers<double>> reals;
    std::optional<TextNumbers<std::int64_t>> wholes;
    bool isInRun = false;
    qint64 room = 0; ///< bytes that there were before the run
};
