#include "platform/base/NativePath.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {
constexpr char16_t firstEscape = 0xdc80, lastEscape = 0xdcff;

bool standsAlone(const QString& text, qsizetype i) {
    if (text[i].isHighSurrogate())
        return i + 1 == text.size() || !text[i + 1].isLowSurrogate();
    return text[i].isLowSurrogate() && (i == 0 || !text[i - 1].isHighSurrogate());
}

/// The bytes of the first character; 0 when there is none that UTF-8 knows.
qsizetype characterLength(QByteArrayView bytes) {
    constexpr qsizetype longest = 4;
    for (qsizetype length = 1; length <= std::min(longest, bytes.size()); ++length)
        if (bytes.first(length).isValidUtf8())
            return length;
    return 0;
}
} // namespace

QString NativePath::Text(QByteArrayView bytes) {
    // A byte order mark is part of a name as any other character.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text;
    while (!bytes.isEmpty()) {
        const qsizetype length = characterLength(bytes);
        if (length > 0)
            text += QString(decoder(bytes.first(length)));
        else
            text += QChar(char16_t(0xdc00 | static_cast<unsigned char>(bytes.front())));
        bytes = bytes.sliced(std::max<qsizetype>(length, 1));
    }
    return text;
}

std::filesystem::path NativePath::Of(const QString& path) {
    if (path.contains(QChar(0)))
        return {};
    QByteArray bytes;
    qsizetype start = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i].unicode();
        if (unit < firstEscape || unit > lastEscape || !standsAlone(path, i))
            continue;
        bytes += QStringView(path).sliced(start, i - start).toUtf8() + char(unit & 0xff);
        start = i + 1;
    }
    bytes += QStringView(path).sliced(start).toUtf8();
    return bytes.toStdString();
}

QString NativePath::Shown(const QString& text) {
    QString shown = text;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (standsAlone(text, i))
            shown[i] = QChar::ReplacementCharacter;
    return shown;
}

QString NativePath::Absolute(const QString& path) {
    std::error_code none;
    const bool fromRoot = path.startsWith(u'/');
    return QDir::cleanPath(fromRoot ? path : Text(std::filesystem::current_path(none).native()) + u'/' + path);
}

std::optional<QString> NativePath::OpenToRead(const QString& path, QFile& file) {
    const int handle = ::open(Of(path).c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    // A folder opens as well, but nothing can be read from it.
    int error = handle < 0 || ::fstat(handle, &status) != 0 ? errno : S_ISDIR(status.st_mode) ? EISDIR : 0;
    if (error == 0 && file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return {};
    if (handle >= 0)
        ::close(handle);
    return QString::fromLocal8Bit(std::generic_category().message(error).c_str());
}
