// A file that is written wholly or not at all. For files that a user keeps; logs and streams are not its business.
#pragma once

#include <QIODevice>
#include <QString>
#include <optional>

/// What is written goes into a file without a name, or where the file system knows none into one beside the file; only
/// `Commit` puts it in its place. Until then, and when anything fails, what was there stays as it was, and nothing is
/// left behind when the program is killed (the file beside it is, on such a file system).
///
/// An earlier file hands on its permissions and, as far as the user may, its owner; one that must not be written is not
/// replaced. A link stays a link: the file that it leads to is written. What is there and no regular file, such as a
/// folder, a pipe or a device, is never replaced.
class WholeFile final : public QIODevice {
public:
    /// Opens for writing. A failure is kept for `Commit`.
    explicit WholeFile(const QString& path);
    /// Drops what has not been committed.
    ~WholeFile() override;

    /// Writes over bytes that were written before, as formats want it that begin with their own length. False when
    /// these are fewer, and when it fails, which is kept for `Commit`.
    bool Rewrite(qint64 position, const char* bytes, qint64 count);

    /// Ends the writing. Nothing when the file is in its place, else why it isn't, in the system's words.
    std::optional<QString> Commit();

    /// The same in one go.
    static std::optional<QString> Write(const QString& path, const QByteArray& bytes);

    /// Why nothing that is written now could come into the file; nothing while all is well.
    const std::optional<QString>& Problem() const { return problem; }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* bytes, qint64 count) override;

private:
    void open(const QString& path);
    void fail(int error);
    bool put(qint64 position, const char* bytes, qint64 count);
    bool append(const char* bytes, qint64 count);
    bool flush();
    bool putInPlace();
    void drop();

    QByteArray target; ///< with all links followed
    QByteArray beside; ///< the name that the new file has so far; empty when it has none
    QByteArray waiting;
    std::optional<QString> problem;
    qint64 length = 0; ///< of what is no longer waiting
    int handle = -1;
    bool replaces = false; ///< there is an earlier file
};
