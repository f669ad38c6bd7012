#include "app/mdTips.h"
#include "platform/base/Codepage.h"
#include "platform/base/NativePath.h"
#include "platform/base/WholeFile.h"

#include <QFile>
#include <algorithm>

namespace {
constexpr qint64 largestTextFile = qint64(256) << 20;

bool endsFolder(QChar c) {
    return c == u'/' || c == u'\\';
}

bool endsIn(const QString& text, QChar trailing) {
    return !text.isEmpty() && (text.back() == trailing || (endsFolder(trailing) && endsFolder(text.back())));
}

bool isDrive(QStringView part) {
    return part.size() == 2 && part[1] == u':';
}

bool isAbsolute(QStringView path) {
    return !path.isEmpty() && (endsFolder(path[0]) || isDrive(path.left(2)));
}
} // namespace

QString mdTips::ReadTextFile(const QString& path, qint64 maxBytes) {
    QFile file;
    if (NativePath::OpenToRead(path, file))
        return {};
    const qint64 most = maxBytes > 0 ? std::min(maxBytes, largestTextFile) : largestTextFile;
    // A buffer for all that is asked for comes before the first byte, so a small file mustn't ask for the largest.
    const qint64 length = file.isSequential() ? most : std::min(most, file.size());
    return Codepage::Decode(file.read(length));
}

bool mdTips::WriteTextFile(const QString& path, const QString& text) {
    return !WholeFile::Write(path, Codepage::Encode(text));
}

QString mdTips::AddTrailingChar(const QString& text, QChar trailing) {
    return endsIn(text, trailing) ? text : text + trailing;
}

QString mdTips::RemoveTrailingChar(const QString& text, QChar trailing) {
    return endsIn(text, trailing) ? text.chopped(1) : text;
}

QString mdTips::ResolveRelativePath(const QString& relative, const QString& base, QChar separator) {
    QString path = relative;
    if (!isAbsolute(path))
        path = (base.isEmpty() ? NativePath::CurrentFolder() : base) + u'/' + path;

    QStringList parts;
    for (const QString& part : path.replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts)) {
        if (part == u"..") {
            if (!parts.isEmpty() && !isDrive(parts.back()))
                parts.removeLast();
        } else if (part != u".") {
            parts.append(part);
        }
    }
    const QString root = path.startsWith(u'/') ? QString(separator) : QString();
    return root + parts.join(separator);
}

QString mdTips::ShortenPath(const QString& path, int maxBytes) {
    if (AnsiLength(path) < maxBytes)
        return path;
    for (qsizetype i = 0; i < path.size(); ++i) {
        if (endsFolder(path[i]) && AnsiLength(QStringView(path).mid(i)) <= maxBytes - 3)
            return path.left(3) + u"..."_s + path.mid(i);
    }
    return path;
}

QString mdTips::NormalizePathCase(const QString& path) {
    QString result = path.toLower();
    for (qsizetype i = 1; i < result.size(); ++i) {
        if (endsFolder(result[i - 1]))
            result[i] = result[i].toUpper();
    }
    if (result.size() > 1 && result[1] == u':')
        result[0] = result[0].toUpper();
    return result;
}
