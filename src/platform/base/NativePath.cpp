#include "platform/base/NativePath.h"

#include "platform/base/Literals.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>
#include <QUrl>
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

/// Shows what stands in a folder to `see`, as far as it can be read and as long as that answers true.
void walk(const QString& folder, const std::function<bool(const std::filesystem::directory_entry&)>& see) {
    std::error_code problem;
    std::filesystem::directory_iterator entry(NativePath::Of(folder), problem);
    while (!problem && entry != std::filesystem::directory_iterator() && see(*entry))
        entry.increment(problem);
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
    return QDir::cleanPath(path.startsWith(u'/') ? path : CurrentFolder() + u'/' + path);
}

QString NativePath::ProgramFolder() {
    std::error_code none;
    return Text(std::filesystem::read_symlink("/proc/self/exe", none).parent_path().native());
}

QString NativePath::CurrentFolder() {
    std::error_code none;
    return Text(std::filesystem::current_path(none).native());
}

QStringList NativePath::Files(const QString& folder, const QStringList& patterns) {
    QStringList names;
    walk(folder, [&](const std::filesystem::directory_entry& entry) {
        if (std::error_code none; !entry.is_directory(none))
            names += Text(entry.path().filename().native());
        return true;
    });
    // A surrogate without its other half would fit nothing.
    names.removeIf([&](const QString& name) { return !QDir::match(patterns, Shown(name)); });
    names.sort();
    return names;
}

QStringList NativePath::Folders(const QString& folder) {
    QStringList names;
    walk(folder, [&](const std::filesystem::directory_entry& entry) {
        if (std::error_code none; entry.is_directory(none))
            names += Text(entry.path().filename().native());
        return true;
    });
    names.sort(Qt::CaseInsensitive);
    return names;
}

bool NativePath::HasFolders(const QString& folder) {
    bool found = false;
    walk(folder, [&](const std::filesystem::directory_entry& entry) {
        std::error_code none;
        return !(found = entry.is_directory(none));
    });
    return found;
}

bool NativePath::IsFolder(const QString& path) {
    std::error_code none;
    return std::filesystem::is_directory(Of(path), none);
}

QString NativePath::Environment(const char* name) {
    return Text(qgetenv(name));
}

QString NativePath::ConfigurationFolder() {
    const QString named = Environment("XDG_CONFIG_HOME");
    return named.startsWith(u'/') ? named : Environment("HOME") + u"/.config"_s;
}

QString NativePath::TemporaryFolder() {
    const QString named = Environment("TMPDIR");
    return QDir::cleanPath(named.isEmpty() ? u"/tmp"_s : named);
}

QUrl NativePath::Url(const QString& path) {
    const QByteArray bytes = QByteArray::fromStdString(Of(path).native());
    return QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/"));
}

QString NativePath::OfUrl(const QUrl& local) {
    // The toolkit's own way to a path knows no name that is not UTF-8.
    if (!local.host().isEmpty())
        return local.toLocalFile();
    return Text(QByteArray::fromPercentEncoding(local.path(QUrl::FullyEncoded).toLatin1()));
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
