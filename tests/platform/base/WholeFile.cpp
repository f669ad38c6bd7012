#include "platform/base/WholeFile.h"

#include "FullDisk.h"
#include "TestFolder.h"

#include <QDir>
#include <QFileInfo>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
const QByteArray before = "before", after(300000, 'x');

class WholeFileTest : public testing::Test {
protected:
    QByteArray path(const char* name) const { return QFile::encodeName(folder.Path(QString::fromLatin1(name))); }
    QStringList names() const {
        return QDir(folder.Path({})).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    }
    /// Writes to what is called `name` there; on failure everything is as it was, and the reason ends in `reason`.
    void expectRefused(const char* name, const char* reason) {
        const QStringList namesBefore = names();
        const auto problem = WholeFile::Write(folder.Path(QString::fromLatin1(name)), after);
        EXPECT_TRUE(problem && problem->endsWith(QLatin1StringView(reason)))
            << name << ": " << problem.value_or(u"no problem"_s).toStdString();
        EXPECT_EQ(names(), namesBefore);
        const QFileInfo there(folder.Path(QString::fromLatin1(name)));
        EXPECT_TRUE(!there.isFile() || TestFolder::Read(there.filePath()) == before) << name;
    }
    TestFolder folder;
};
} // namespace

TEST_F(WholeFileTest, TakesTheEarlierFilesPlace) {
    folder.Write(before, u"old"_s);
    ASSERT_EQ(::chmod(path("old"), 0751), 0);
    ASSERT_EQ(::symlink("old", path("link")) | ::symlink("fresh", path("dangling")), 0);
    for (const char* name : {"old", "link", "dangling", "new"}) {
        WholeFile file(folder.Path(QString::fromLatin1(name)));
        file.write(after.left(10)); // by pieces, some of which wait
        file.write(after);
        EXPECT_TRUE(file.Rewrite(9, "ab", 2) && file.Rewrite(after.size() + 9, "c", 1));
        EXPECT_FALSE(file.Rewrite(after.size() + 9, "de", 2)) << "beyond the end";
        EXPECT_EQ(file.Commit(), std::nullopt) << name;
        EXPECT_EQ(TestFolder::Read(folder.Path(QString::fromLatin1(name))),
                  after.left(9) + "ab" + after.left(after.size() - 2) + 'c')
            << name;
        EXPECT_EQ(WholeFile::Write(folder.Path(u"old"_s), before), std::nullopt);
    }
    struct stat there {};
    EXPECT_TRUE(::stat(path("old"), &there) == 0 && (there.st_mode & 07777) == 0751);
    EXPECT_TRUE(::lstat(path("link"), &there) == 0 && S_ISLNK(there.st_mode));
    EXPECT_EQ(names(), (QStringList{u"."_s, u".."_s, u"dangling"_s, u"fresh"_s, u"link"_s, u"new"_s, u"old"_s}));
}

TEST_F(WholeFileTest, ReplacesNothingElse) {
    ASSERT_EQ(::mkfifo(path("pipe"), 0600) | ::mkdir(path("folder"), 0700), 0);
    ASSERT_EQ(::symlink("circle", path("circle")) | ::symlink("pipe", path("link")), 0);
    for (const char* name : {"pipe", "folder", "link"})
        expectRefused(name, "not a regular file");
    // One of its own: an administrator's test that fails must not cost the system its devices.
    constexpr dev_t likeNull = 0x103;
    if (::mknod(path("device"), S_IFCHR | 0600, likeNull) == 0)
        expectRefused("device", "not a regular file");
    expectRefused("circle", "symbolic links");
    expectRefused("none/file", "No such file or directory");
    expectRefused("", "not a regular file");
}

TEST_F(WholeFileTest, AFullDiskLeavesWhatWasThere) {
    folder.Write(before, u"old"_s);
    {
        const FullDisk full(64);
        expectRefused("old", "File too large");
    }
    ASSERT_EQ(::mkdir(path("disk"), 0700), 0);
    if (::mount("none", path("disk"), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "only an administrator may mount a small disk";
    folder.Write(before, u"disk/old"_s);
    for (const char* name : {"disk/old", "disk/new"})
        expectRefused(name, "No space left on device");
    ::umount(path("disk"));
}

TEST_F(WholeFileTest, AKilledWriterLeavesNothing) {
    if (const int probe = ::open(path(""), O_TMPFILE | O_WRONLY); probe < 0 || ::close(probe) != 0)
        GTEST_SKIP() << "a file system without nameless files";
    folder.Write(before, u"old"_s);
    const pid_t child = ::fork();
    if (child == 0) {
        WholeFile file(folder.Path(u"old"_s));
        file.write(after);
        std::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_TRUE(child > 0 && ::waitpid(child, &status, 0) == child && WIFSIGNALED(status));
    EXPECT_EQ(names(), (QStringList{u"."_s, u".."_s, u"old"_s}));
    EXPECT_EQ(TestFolder::Read(folder.Path(u"old"_s)), before);
}
