#include "result/readers/VtkDataArray.h"

#include "result/readers/TextNumbers.h"

#include <libdeflate.h>
#include <lz4.h>

namespace {

constexpr qint64 mostAtOnce = 1 << 16; ///< bytes
/// No packed byte unfolds to more than so many.
constexpr qint64 zlibRatio = 1032, lz4Ratio = 255;

/// What each character stands for, -1 for none.
constexpr auto sextets = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t i = 0; i < digits.size(); ++i)
        values[std::uint8_t(digits[i])] = std::int8_t(i);
    return values;
}();

int sextetOf(char c) {
    return sextets[std::uint8_t(c)];
}

/// An array's bytes from front to back, as they are or out of base 64. Padding ends no more than its own group: sizes
/// and numbers may be packed one by one.
class PackedBytes {
public:
    PackedBytes(const ReadHandle& file, const VtkDataArray& array)
        : in(file, array.Offset, array.End), isRaw(array.Packed == VtkDataArray::Raw) {}

    /// What is left at most.
    qint64 Most() const { return isRaw ? in.Remaining() : in.Remaining() / 4 * 3 + 3; }
    /// The number of bytes read, less than `count` only at the end.
    qint64 Read(char* target, qint64 count) {
        if (isRaw) {
            const qint64 got = std::min(count, in.Remaining());
            return in.ReadBytes(target, got) ? got : 0;
        }
        qint64 done = 0;
        while (done < count) {
            if (nextOfGroup == groupSize && count - done >= 3)
                done += readWholeGroups(target + done, (count - done) / 3);
            if (done == count || (nextOfGroup == groupSize && !readGroup()))
                break;
            target[done++] = group[nextOfGroup++];
        }
        return done;
    }

private:
    /// As many groups of four digits as stand together, `most` or fewer; the number of bytes that they gave.
    qint64 readWholeGroups(char* target, qint64 most) {
        const std::string_view ahead = in.Ahead();
        const auto groups = std::min(most, qint64(ahead.size()) / 4);
        qint64 done = 0;
        for (; done < groups; ++done) {
            const char* const digits = ahead.data() + done * 4;
            const int first = sextetOf(digits[0]), second = sextetOf(digits[1]), third = sextetOf(digits[2]),
                      fourth = sextetOf(digits[3]);
            if ((first | second | third | fourth) < 0)
                break;
            *target++ = char(first << 2 | second >> 4);
            *target++ = char(second << 4 | third >> 2);
            *target++ = char(third << 6 | fourth);
        }
        in.Pass(done * 4);
        return done * 3;
    }

    /// One group, with whatever stands between its digits.
    bool readGroup() {
        std::uint32_t bits = 0;
        int digits = 0, padding = 0;
        while (digits + padding < 4) {
            const auto c = in.Byte();
            if (!c)
                return false;
            const int sextet = sextetOf(*c);
            if (sextet >= 0 && padding == 0) {
                bits = bits << 6 | std::uint32_t(sextet);
                ++digits;
            } else if (*c == '=') {
                bits <<= 6;
                ++padding;
            } else if (static_cast<unsigned char>(*c) > ' ') {
                return false;
            }
        }
        group = {char(bits >> 16), char(bits >> 8), char(bits)};
        groupSize = std::max(digits - 1, 0);
        nextOfGroup = 0;
        return groupSize > 0;
    }

    FileScanner in;
    bool isRaw;
    std::array<char, 3> group{};
    int groupSize = 0, nextOfGroup = 0;
};

/// A size as the file gives it; nothing for one that isn't there or that nothing can have.
std::optional<qint64> readSize(PackedBytes& in, const VtkDataArray& array) {
    char bytes[8];
    const qint64 width = array.HasWideHeader ? 8 : 4;
    if (in.Read(bytes, width) < width)
        return {};
    qint64 size = 0;
    ConvertNumbers(bytes, 1, array.HasWideHeader ? NumberType::UInt64 : NumberType::UInt32, array.BigEndian, &size);
    return size < 0 ? std::nullopt : std::optional(size);
}

bool unfold(VtkDataArray::Compression how, const std::vector<char>& packed, std::vector<char>& whole) {
    if (how == VtkDataArray::Lz4)
        return packed.size() <= LZ4_MAX_INPUT_SIZE && whole.size() <= LZ4_MAX_INPUT_SIZE &&
               LZ4_decompress_safe(packed.data(), whole.data(), int(packed.size()), int(whole.size())) ==
                   int(whole.size());
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> decompressor(
        libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    return decompressor && libdeflate_zlib_decompress(decompressor.get(), packed.data(), packed.size(), whole.data(),
                                                      whole.size(), nullptr) == LIBDEFLATE_SUCCESS;
}

using TakeBytes = std::function<void(std::span<const char>)>;

/// Blocks of one size but for the last; their number, both sizes and the packed size of each stand before them.
bool readCompressed(PackedBytes& in, const VtkDataArray& array, qint64 wanted, const TakeBytes& take) {
    const auto blocks = readSize(in, array), blockBytes = readSize(in, array), lastBytes = readSize(in, array);
    if (!blocks || !blockBytes || !lastBytes || *blocks > in.Most())
        return false;
    std::vector<qint64> packedBytes;
    for (qint64 b = 0; b < *blocks; ++b) {
        const auto bytes = readSize(in, array);
        if (!bytes)
            return false;
        packedBytes.push_back(*bytes);
    }
    const qint64 ratio = array.Compressed == VtkDataArray::Lz4 ? lz4Ratio : zlibRatio;
    std::vector<char> packed, whole;
    for (qint64 b = 0; b < *blocks && wanted > 0; ++b) {
        const qint64 bytes = packedBytes[std::size_t(b)];
        const qint64 unfolded = b + 1 == *blocks && *lastBytes > 0 ? *lastBytes : *blockBytes;
        if (bytes > in.Most() || unfolded / ratio > bytes)
            return false;
        packed.resize(std::size_t(bytes));
        whole.resize(std::size_t(unfolded));
        if (in.Read(packed.data(), bytes) < bytes || !unfold(array.Compressed, packed, whole))
            return false;
        const qint64 here = std::min(unfolded, wanted);
        take(std::span<const char>(whole).first(std::size_t(here)));
        wanted -= here;
    }
    return wanted == 0;
}

bool readPlain(PackedBytes& in, const VtkDataArray& array, qint64 wanted, const TakeBytes& take) {
    const auto told = readSize(in, array);
    if (!told)
        return false;
    std::vector<char> bytes(std::size_t(std::min(mostAtOnce, wanted)));
    qint64 left = std::min(wanted, *told);
    while (left > 0) {
        const qint64 got = in.Read(bytes.data(), std::min(mostAtOnce, left));
        take(std::span<const char>(bytes).first(std::size_t(got)));
        left -= got;
        if (got < mostAtOnce && left > 0)
            return false;
    }
    return *told >= wanted;
}

} // namespace

bool VtkDataArray::CanHold(qint64 count) const {
    const qint64 room = Offset < 0 ? 0 : End - Offset;
    if (Packed == Text)
        return count <= (room + 1) / 2;
    const qint64 ratio = Compressed == None ? 1 : Compressed == Lz4 ? lz4Ratio : zlibRatio;
    return count <= room * ratio / BytesOf(Type);
}

std::optional<qint64> VtkDataArray::PlainOffset(const ReadHandle& file, qint64 count) const {
    if (Packed != Raw || Compressed != None || Offset < 0)
        return {};
    PackedBytes in(file, *this);
    const auto told = readSize(in, *this);
    const qint64 start = Offset + (HasWideHeader ? 8 : 4);
    return told && count <= std::min(*told, End - start) / BytesOf(Type) ? std::optional(start) : std::nullopt;
}

template<class T>
bool ReadNumbers(const ReadHandle& file, const VtkDataArray& array, qint64 count,
                 const std::function<void(std::span<const T>)>& take) {
    if (count < 1 || !array.CanHold(count))
        return count < 1;
    if (array.Packed == VtkDataArray::Text) {
        FileScanner in(file, array.Offset, array.End);
        return TextNumbers<T>(in, count).Hand(count, take);
    }
    std::vector<T> numbers;
    // Blocks need not end where a number does.
    const qint64 width = BytesOf(array.Type);
    std::vector<char> rest;
    const TakeBytes convert = [&](std::span<const char> bytes) {
        if (!rest.empty() || qint64(bytes.size()) % width != 0) {
            rest.insert(rest.end(), bytes.begin(), bytes.end());
            bytes = rest;
        }
        const qint64 here = qint64(bytes.size()) / width;
        numbers.resize(std::size_t(here));
        ConvertNumbers(bytes.data(), here, array.Type, array.BigEndian, numbers.data());
        take(numbers);
        rest = std::vector<char>(bytes.begin() + here * width, bytes.end());
    };
    PackedBytes in(file, array);
    return array.Compressed == VtkDataArray::None ? readPlain(in, array, count * width, convert)
                                                  : readCompressed(in, array, count * width, convert);
}

template bool ReadNumbers(const ReadHandle&, const VtkDataArray&, qint64,
                          const std::function<void(std::span<const float>)>&);
template bool ReadNumbers(const ReadHandle&, const VtkDataArray&, qint64,
                          const std::function<void(std::span<const double>)>&);
template bool ReadNumbers(const ReadHandle&, const VtkDataArray&, qint64,
                          const std::function<void(std::span<const std::int32_t>)>&);

bool HaveSameBytes(const ReadHandle& fileA, const VtkDataArray& a, const ReadHandle& fileB, const VtkDataArray& b) {
    const qint64 size = a.End - a.Offset;
    if (a.Offset < 0 || b.Offset < 0 || size < 0 || size != b.End - b.Offset || a.Type != b.Type ||
        a.Packed != b.Packed || a.Compressed != b.Compressed || a.BigEndian != b.BigEndian ||
        a.HasWideHeader != b.HasWideHeader)
        return false;
    std::vector<char> bytesA(std::size_t(std::min(mostAtOnce, size))), bytesB(bytesA.size());
    for (qint64 done = 0; done < size; done += mostAtOnce) {
        const qint64 here = std::min(mostAtOnce, size - done);
        if (fileA.ReadAt(a.Offset + done, bytesA.data(), here) < here ||
            fileB.ReadAt(b.Offset + done, bytesB.data(), here) < here || bytesA != bytesB)
            return false;
    }
    return true;
}
