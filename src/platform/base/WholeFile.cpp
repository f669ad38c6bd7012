#include "platform/base/WholeFile.h"

#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"

#include <QRandomGenerator>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace {
/// Enough that the system is not asked for every line.
constexpr qsizetype bufferSize = 1 << 16;
constexpr int mostLinks = 40;

QByteArray folderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.left(std::max<qsizetype>(slash, 1));
}

/// Where a path leads, be there a file or not; empty for links that go round in a circle.
QByteArray linksFollowed(QByteArray path) {
    for (int i = 0; i < mostLinks; ++i) {
        QByteArray there(PATH_MAX, Qt::Uninitialized);
        const ssize_t length = ::readlink(path.constData(), there.data(), std::size_t(there.size()));
        if (length < 0)
            return path;
        there.truncate(length);
        path = there.startsWith('/') ? there : folderOf(path) + '/' + there;
    }
    return {};
}

QByteArray processPath(int handle) {
    return "/proc/self/fd/" + QByteArray::number(handle);
}

QByteArray freshName(const QByteArray& target) {
    return folderOf(target) + "/.velorin-" + QByteArray::number(QRandomGenerator::global()->generate64(), 36);
}
} // namespace

WholeFile::WholeFile(const QString& path) {
    QIODevice::open(QIODevice::WriteOnly);
    open(path);
}

WholeFile::~WholeFile() {
    drop();
}

void WholeFile::drop() {
    if (handle >= 0)
        ::close(handle);
    handle = -1;
    if (!beside.isEmpty())
        ::unlink(beside.constData());
    beside.clear();
}

void WholeFile::fail(int error) {
    if (!problem)
        problem = QString::fromLocal8Bit(std::generic_category().message(error).c_str());
    drop();
}

void WholeFile::open(const QString& path) {
    if (path.isEmpty() || path.contains(QChar(0)))
        return fail(path.isEmpty() ? ENOENT : EINVAL);
    target = linksFollowed(NativePath::Of(path).c_str());
    if (target.isEmpty())
        return fail(ELOOP);
    struct stat earlier {};
    replaces = ::stat(target.constData(), &earlier) == 0;
    if (!replaces && errno != ENOENT)
        return fail(errno);
    if (replaces && !S_ISREG(earlier.st_mode)) {
        problem = u"not a regular file"_s;
        return;
    }
    if (replaces && ::access(target.constData(), W_OK) != 0)
        return fail(errno);

    // A name comes to such a file by way of /proc alone.
    handle = ::open(folderOf(target).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (handle >= 0 && ::access(processPath(handle).constData(), F_OK) != 0)
        drop();
    if (handle < 0) {
        beside = freshName(target);
        handle = ::open(beside.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    }
    if (handle < 0) {
        beside.clear();
        return fail(errno);
    }
    if (replaces) {
        // The owner first, since with another one the system takes some permissions away. Who is no administrator can't
        // hand a file on to others.
        const bool handedOn = ::fchown(handle, earlier.st_uid, earlier.st_gid) == 0;
        const mode_t others = handedOn ? 07777 : 0777;
        // Some file systems know no permissions, and so none to lose.
        if (::fchmod(handle, earlier.st_mode & others) != 0 && errno != EPERM && errno != ENOTSUP)
            fail(errno);
    }
}

qint64 WholeFile::writeData(const char* bytes, qint64 count) {
    if (waiting.size() + count > bufferSize)
        return flush() && append(bytes, count) ? count : -1;
    waiting.append(bytes, count);
    return problem ? -1 : count;
}

bool WholeFile::flush() {
    const QByteArray bytes = std::exchange(waiting, {});
    return append(bytes.constData(), bytes.size());
}

bool WholeFile::append(const char* bytes, qint64 count) {
    const qint64 end = std::exchange(length, length + count);
    return put(end, bytes, count);
}

bool WholeFile::put(qint64 position, const char* bytes, qint64 count) {
    for (qint64 done = 0; done != count && !problem;) {
        const ssize_t written = ::pwrite(handle, bytes + done, std::size_t(count - done), position + done);
        if (written > 0)
            done += written;
        else if (errno != EINTR || written == 0)
            fail(written == 0 ? ENOSPC : errno);
    }
    return !problem;
}

bool WholeFile::Rewrite(qint64 position, const char* bytes, qint64 count) {
    return flush() && position >= 0 && count >= 0 && position <= length - count && put(position, bytes, count);
}

bool WholeFile::putInPlace() {
    // Some file systems find room only now. Others have nothing to sync.
    if (::fsync(handle) != 0 && errno != EINVAL && errno != ENOTSUP)
        return false;
    if (beside.isEmpty()) {
        const auto nameIt = [this](const QByteArray& name) {
            return ::linkat(AT_FDCWD, processPath(handle).constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) ==
                   0;
        };
        if (!replaces && nameIt(target))
            return true;
        // A name of its own first: a link never takes another's place.
        const QByteArray name = freshName(target);
        if (!nameIt(name))
            return false;
        beside = name;
    }
    if (::rename(beside.constData(), target.constData()) != 0)
        return false;
    beside.clear();
    return true;
}

std::optional<QString> WholeFile::Commit() {
    if (flush() && !putInPlace())
        fail(errno);
    // A failure to close comes too late to undo anything, and what is synced has no room left to ask for.
    drop();
    return problem;
}

std::optional<QString> WholeFile::Write(const QString& path, const QByteArray& bytes) {
    WholeFile file(path);
    file.write(bytes);
    return file.Commit();
}
