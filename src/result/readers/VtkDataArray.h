// One array of a VTK XML file: where its numbers stand and how they are packed, and the reading of them.
#pragma once

#include "result/readers/FileScanner.h"
#include "result/readers/numberTypes.h"

struct VtkDataArray {
    enum Packing : std::uint8_t { Text, Base64, Raw };
    enum Compression : std::uint8_t { None, Zlib, Lz4 };

    QString Name;
    std::int32_t Components = 1;
    QStringList ComponentNames;
    NumberType Type = NumberType::Float32;
    Packing Packed = Text;
    Compression Compressed = None;
    bool BigEndian = false;
    bool HasWideHeader = false; ///< sizes before the numbers are of 64 bits, not of 32
    qint64 Offset = -1;         ///< in the file, negative for an array that isn't there
    qint64 End = -1;            ///< the array ends before it

    /// Whether so many numbers could stand there at all.
    bool CanHold(qint64 count) const;
    /// Where its first number stands in the file, when `count` of them follow as they are.
    std::optional<qint64> PlainOffset(const ReadHandle& file, qint64 count) const;
};

/// Reads the first `count` numbers of an array in pieces and hands each on, `take(numbers)`. False when there are
/// fewer. All sizes that the file gives are checked before they are used.
template<class T>
bool ReadNumbers(const ReadHandle& file, const VtkDataArray& array, qint64 count,
                 const std::function<void(std::span<const T>)>& take);

/// Whether two arrays stand in their files in the same bytes.
bool HaveSameBytes(const ReadHandle& fileA, const VtkDataArray& a, const ReadHandle& fileB, const VtkDataArray& b);
