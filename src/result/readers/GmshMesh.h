// The nodes and elements of a Gmsh file, in the forms of its versions 2 and 4.1; and the numbers that it is made of.
#pragma once

#include "result/readers/ForeignResult.h"
#include "result/readers/IdIndex.h"
#include "result/readers/TextStretches.h"

/// The numbers of the file one after the other, as text or binary.
class GmshNumbers {
public:
    explicit GmshNumbers(FileScanner& scanner) : in(scanner) {}

    bool IsText = true;
    bool IsBigEndian = false;

    /// While it lives nothing but numbers comes, about `count` of them: texts are parsed on all cores. Whole numbers
    /// of more than 53 bits are then no numbers.
    class Run {
    public:
        Run(GmshNumbers& numbers, std::int64_t count) : of(numbers) {
            if (of.IsText) {
                of.room = of.in.Remaining();
                of.ahead.emplace(of.in, count, TextNumbers::Marked);
            }
        }
        ~Run() { of.ahead.reset(); }
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

    private:
        GmshNumbers& of;
    };

    bool Whole(std::int64_t& value, NumberType type) { return read(value, type); }
    bool Int(std::int64_t& value) { return read(value, NumberType::Int32); }
    bool Size(std::int64_t& value) { return read(value, NumberType::UInt64); }
    bool Real(double& value) { return read(value, NumberType::Float64); }
    /// Whether so many numbers of that width could still come.
    bool CanHold(std::int64_t count, NumberType type) const {
        return count >= 0 && count <= ((ahead ? room : in.Remaining()) + 1) / (IsText ? 2 : BytesOf(type));
    }
    /// In a run of text: to the end of the line.
    void SkipLine() {
        for (double number = 0; ahead && number != LineEnd && ahead->Next(number);)
            ;
    }
    FileScanner& Scanner() { return in; }

private:
    template<class T>
    bool read(T& value, NumberType type) {
        if (ahead)
            return next(value);
        if (IsText)
            return in.Number(value);
        char bytes[8];
        if (!in.ReadBytes(bytes, BytesOf(type)))
            return false;
        ConvertNumbers(bytes, 1, type, IsBigEndian, &value);
        return true;
    }

    template<class T>
    bool next(T& value) {
        double number = 0;
        while (ahead->Next(number))
            if (number != LineEnd) {
                value = NumberAs<T>(number);
                return std::is_floating_point_v<T> || double(value) == number;
            }
        return false;
    }

    FileScanner& in;
    std::optional<TextNumbers> ahead;
    qint64 room = 0; ///< bytes that there were before the run
};

struct GmshMesh {
    std::vector<double> Points;
    std::vector<std::int64_t> PointIds, CellIds;
    CellTable Cells; ///< its nodes by their numbers' positions, -1 for numbers that aren't there
    IdIndex PointIndex;

    /// What stands behind the first line of the section. False when it can't be understood.
    bool ReadNodes(GmshNumbers& in, bool isVersion4);
    bool ReadElements(GmshNumbers& in, bool isVersion4);

private:
    bool readNodes2(GmshNumbers& in);
    bool readNodes4(GmshNumbers& in);
    bool readElements2(GmshNumbers& in);
    bool readElements4(GmshNumbers& in);
    bool readCell(GmshNumbers& in, std::int64_t id, std::int64_t type, NumberType nodeType);
};
