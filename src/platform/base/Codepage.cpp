#include "platform/base/Codepage.h"

#include <algorithm>
#include <cerrno>
#include <iconv.h>

namespace Codepage {
namespace {
constexpr char16_t replacement = 0xfffd;

/// One direction of conversion; opening one costs far more than a short text, so each thread keeps its own.
class Converter {
public:
    Converter(const char* to, const char* from) : handle(iconv_open(to, from)) {}
    ~Converter() {
        if (IsOpen())
            iconv_close(handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return handle != iconv_t(-1); }

    /// Converts up to the end or the first bad place; `in` and `out` move on. True at the end.
    bool Run(const char*& in, const char* inEnd, char*& out, char* outEnd) {
        if (!IsOpen())
            return in == inEnd;
        // iconv's interface lacks the const; it never writes to its input.
        char* from = const_cast<char*>(in);
        std::size_t inLeft = std::size_t(inEnd - in), outLeft = std::size_t(outEnd - out);
        const bool done = iconv(handle, &from, &inLeft, &out, &outLeft) != std::size_t(-1);
        in = from;
        return done;
    }

private:
    iconv_t handle;
};

constexpr const char* utf16 = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "UTF-16LE" : "UTF-16BE";

bool isAscii(QByteArrayView bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

/// Length of the bad piece at `at`: a pair is bad as a whole only when its second byte could not stand for itself.
int badLength(const char* at, const char* end) {
    const auto byte = [&](int i) { return static_cast<unsigned char>(at[i]); };
    const bool lead = (byte(0) >= 0x81 && byte(0) <= 0x9f) || (byte(0) >= 0xe0 && byte(0) <= 0xfc);
    return lead && end - at > 1 && byte(1) >= 0x80 && byte(1) <= 0xfc ? 2 : 1;
}
} // namespace

QString Decode(QByteArrayView bytes) {
    if (isAscii(bytes))
        return QString::fromLatin1(bytes);
    thread_local Converter converter(utf16, "CP932");
    QString text(bytes.size(), Qt::Uninitialized);
    char* const start = reinterpret_cast<char*>(text.data());
    char *out = start, *outEnd = start + text.size() * 2;
    const char *in = bytes.data(), *end = in + bytes.size();
    while (!converter.Run(in, end, out, outEnd)) {
        // Without a converter ASCII still passes.
        const bool ascii = static_cast<unsigned char>(*in) < 0x80;
        const char16_t unit = ascii ? char16_t(*in) : replacement;
        in += ascii ? 1 : badLength(in, end);
        out = std::copy_n(reinterpret_cast<const char*>(&unit), 2, out);
    }
    text.truncate((out - start) / 2);
    return text;
}

QByteArray Encode(QStringView text) {
    if (isAscii(text))
        return text.toLatin1();
    thread_local Converter converter("CP932", utf16);
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    char *out = bytes.data(), *outEnd = out + bytes.size();
    const char *in = reinterpret_cast<const char*>(text.data()), *end = in + text.size() * 2;
    while (!converter.Run(in, end, out, outEnd)) {
        const QStringView rest = text.last((end - in) / 2);
        const bool pair = rest.size() > 1 && rest[0].isHighSurrogate() && rest[1].isLowSurrogate();
        *out++ = rest[0].unicode() < 0x80 ? char(rest[0].unicode()) : '?';
        in += pair ? 4 : 2;
    }
    bytes.truncate(out - bytes.data());
    return bytes;
}

int ByteLength(QStringView text) {
    return isAscii(text) ? int(text.size()) : int(Encode(text).size());
}
} // namespace Codepage
