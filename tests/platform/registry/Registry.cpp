#include "platform/registry/Registry.h"

#include "ConfigurationFolder.h"
#include "OtherProgram.h"
#include "TestFolder.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QThread>
#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Registry;

namespace {
bool set(const QString& path, const QString& name, const QByteArray& data) {
    return SetValue(CreateKey(HKEY_CURRENT_USER, path), {name, REG_BINARY, data});
}

QByteArray get(const QString& path, const QString& name) {
    const auto value = GetValue(OpenKey(HKEY_CURRENT_USER, path), name);
    return value ? value->Data : QByteArray("(none)");
}

void overwrite(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size());
}

void saveAll(qint64 generation) {
    Transaction transaction;
    for (int i = 0; i < 120; ++i)
        set(u"Save"_s, u"v"_s + QString::number(i), QByteArray::number(generation).rightJustified(200));
    transaction.Commit();
}

/// Another process, which ends when `task` does, well if it is true. It mustn't inherit a connection to the store.
pid_t inChild(const std::function<bool()>& task) {
    {
        const ConfigurationFolder elsewhere;
        OpenKey(HKEY_CURRENT_USER, {});
    }
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(task() ? 0 : 1);
    return child;
}
int statusOf(pid_t child) {
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}
} // namespace

TEST(Registry, KeepsCaseAndOrderAndMeetsAnyCase) {
    const ConfigurationFolder folder;
    set(u"Software\\Ärger"_s, u"Zulu"_s, "1");
    set(u"software\\äRGER\\"_s, u"Ωmega"_s, "2");
    set(u"SOFTWARE\\ärger"_s, u"ZULU"_s, "4");
    const Key key = OpenKey(HKEY_CURRENT_USER, u"Software"_s);
    EXPECT_TRUE(SubKeyAt(key, 0) == u"Ärger"_s && !SubKeyAt(key, 1) && !SubKeyAt(key, -1));
    EXPECT_TRUE(CloseKey(key) && !CloseKey(key));
    const Key inner = OpenKey(HKEY_CURRENT_USER, u"software\\ärger"_s);
    EXPECT_EQ(ValueNames(inner), (QStringList{u"Zulu"_s, u"Ωmega"_s}));
    EXPECT_EQ(GetValue(inner, u"zulu"_s)->Data, "4");
    EXPECT_EQ(ValueAt(inner, 1), (Value{u"Ωmega"_s, REG_BINARY, "2"}));
    EXPECT_TRUE(!ValueAt(inner, 2) && !ValueAt(inner, -1));
    EXPECT_TRUE(DeleteValue(inner, u"ZuLu"_s) && !DeleteValue(inner, u"ZuLu"_s));
    EXPECT_TRUE(DeleteKey(HKEY_CURRENT_USER, u"Software\\Ärger"_s));
    EXPECT_FALSE(SetValue(inner, {u"a"_s, REG_NONE, {}})) << "the key has gone";
}

TEST(Registry, StandsInAFolderOfAnyName) {
    const ConfigurationFolder folder;
    const QByteArray place = folder.Path().toUtf8() + "/\xe9\n";
    qputenv("XDG_CONFIG_HOME", place);
    EXPECT_TRUE(set(u"k"_s, {}, "1"));
    std::error_code none;
    EXPECT_EQ(std::filesystem::file_size(place.toStdString() + "/Ordvane/registry.db", none) % 4096, 0);
}

TEST(Registry, RefusesWhatIsBeyondItsLimits) {
    const ConfigurationFolder folder;
    for (const int over : {0, 1}) {
        EXPECT_EQ(set(u"k"_s, u"large"_s, QByteArray(MaxDataBytes + over, 'x')), over == 0);
        EXPECT_EQ(set(u"k"_s, QString(MaxValueName + over, u'n'), {}), over == 0);
        EXPECT_EQ(set(QString(MaxKeyName + over, u'n'), {}, {}), over == 0);
        EXPECT_EQ(set(u"d\\"_s.repeated(MaxDepth + over), {}, {}), over == 0);
    }
    EXPECT_EQ(get(u"k"_s, u"large"_s).size(), MaxDataBytes);
    EXPECT_FALSE(set(u"k"_s, u"a\nb"_s, {}) || set(u"k"_s, QString(QChar(0xd800)), {}));
    EXPECT_FALSE(DeleteKey(HKEY_CURRENT_USER, u"d"_s)) << "it has a subkey";
    EXPECT_TRUE(DeleteTree(HKEY_CURRENT_USER, u"d"_s));
    EXPECT_FALSE(DeleteTree(HKEY_CURRENT_USER, u"\\"_s)) << "the root stays";
    EXPECT_EQ(OpenKey(HKEY_CURRENT_USER, u"d"_s), 0);
}

TEST(Registry, TransactionsKeepAllOrNothing) {
    const ConfigurationFolder folder;
    set(u"k"_s, u"a"_s, "old");
    {
        Transaction outer;
        EXPECT_TRUE(set(u"k\\new"_s, u"a"_s, "x") && set(u"k"_s, u"a"_s, "outer"));
        { const Transaction abandoned; }
        EXPECT_FALSE(set(u"k"_s, u"a"_s, "later")) << "the inner one has spoilt it";
        EXPECT_FALSE(outer.Commit());
    }
    EXPECT_EQ(get(u"k"_s, u"a"_s), "old");
    EXPECT_EQ(OpenKey(HKEY_CURRENT_USER, u"k\\new"_s), 0);
    Transaction outer, inner;
    set(u"k"_s, u"a"_s, "both");
    EXPECT_TRUE(inner.Commit() && outer.Commit());
    EXPECT_EQ(get(u"k"_s, u"a"_s), "both");
}

TEST(Registry, OpenKeysFindTheirKeyInAStoreMadeAnew) {
    const ConfigurationFolder folder;
    set(u"First"_s, {}, "1");
    set(u"Second"_s, {}, "2");
    const Key first = OpenKey(HKEY_CURRENT_USER, u"First"_s), second = OpenKey(HKEY_CURRENT_USER, u"Second"_s);
    ASSERT_TRUE(QFile::remove(StorePath()));
    set(u"Second"_s, {}, "new");
    EXPECT_EQ(GetValue(second, {})->Data, "new");
    EXPECT_FALSE(GetValue(first, {}) || SetValue(first, {{}, REG_BINARY, "1"}));
}

TEST(Registry, AKilledSaveLeavesTheOldOrTheNewState) {
    const ConfigurationFolder folder;
    saveAll(0);
    for (int round = 0; round < 8; ++round) {
        const QByteArray before = get(u"Save"_s, u"v0"_s);
        const pid_t child = inChild([]() -> bool {
            for (qint64 generation = ::getpid() * 10000;; ++generation)
                saveAll(generation);
        });
        while (get(u"Save"_s, u"v0"_s) == before)
            QThread::usleep(100);
        QThread::usleep(QRandomGenerator::global()->bounded(20000u));
        ::kill(child, SIGKILL);
        statusOf(child);
        for (int i = 1; i < 120; ++i)
            ASSERT_EQ(get(u"Save"_s, u"v"_s + QString::number(i)), get(u"Save"_s, u"v0"_s)) << i;
    }
}

TEST(Registry, TwoProgramsSavingAtOnceLoseNothing) {
    const ConfigurationFolder folder; // no store yet: they also make it at once
    const auto save = [](const QString& name) {
        bool saved = true;
        for (int i = 0; i < 15; ++i) {
            Transaction transaction;
            set(u"Save"_s, u"shared"_s, {});
            saved = set(u"Save"_s, name + QString::number(i), "x") && transaction.Commit() && saved;
        }
        return saved;
    };
    const pid_t one = inChild([&] { return save(u"one"_s); }), two = inChild([&] { return save(u"two"_s); });
    EXPECT_TRUE(statusOf(one) == 0 && statusOf(two) == 0);
    EXPECT_EQ(ValueNames(OpenKey(HKEY_CURRENT_USER, u"Save"_s)).size(), 31);
}

TEST(Registry, ADamagedStoreIsMovedAsideByTheNextWrite) {
    const ConfigurationFolder first;
    saveAll(0);
    const QByteArray good = TestFolder::Read(StorePath());
    ASSERT_GT(good.size(), 4 * 4096);
    QByteArray holed = good, otherSchema = good;
    std::fill(holed.begin() + 4096, holed.end() - 4096, 'z');
    otherSchema.replace("CREATE TABLE vals", "CREATE TABLE vols");
    for (const QByteArray& damaged :
         {QByteArray("not a database at all, but long enough to be taken for one").repeated(20), holed,
          good.first(good.size() / 2), good.first(1000), otherSchema, QByteArray("x")}) {
        SCOPED_TRACE(damaged.size());
        const ConfigurationFolder folder;
        overwrite(StorePath(), damaged);
        EXPECT_EQ(OpenKey(HKEY_CURRENT_USER, u"k"_s), 0);
        EXPECT_EQ(TestFolder::Read(StorePath()), damaged) << "a reader must leave it alone";
        EXPECT_TRUE(set(u"k"_s, u"a"_s, "1"));
        EXPECT_EQ(get(u"k"_s, u"a"_s), "1");
        // Once more, this time under a connection that has been good; the first one must not be written over. With
        // other tables in it the file would pass there, as its schema bears the same version.
        if (damaged != otherSchema) {
            overwrite(StorePath(), damaged);
            set(u"k"_s, u"a"_s, "2");
            EXPECT_TRUE(set(u"k"_s, u"a"_s, "3"));
            EXPECT_EQ(TestFolder::Read(StorePath() + u".damaged.2"_s), damaged);
        }
        EXPECT_EQ(TestFolder::Read(StorePath() + u".damaged"_s), damaged);
    }
    const ConfigurationFolder folder;
    overwrite(StorePath(), {});
    EXPECT_TRUE(set(u"k"_s, u"a"_s, "1")) << "an empty file is no damage";
    EXPECT_EQ(QDir(folder.Path() + u"/Ordvane"_s).entryList(QDir::Files), QStringList{u"registry.db"_s});
}

TEST(Registry, ShutStoresGiveNothingAndTakeNothing) {
    const ConfigurationFolder folder;
    overwrite(folder.Path() + u"/Ordvane"_s, "a file where the folder should be");
    EXPECT_FALSE(set(u"k"_s, u"a"_s, "1"));
    const ConfigurationFolder readOnly;
    ASSERT_TRUE(set(u"k"_s, u"a"_s, "1"));
    ::chmod(QFile::encodeName(StorePath()).constData(), 0444);
    ::chmod(QFile::encodeName(readOnly.Path()).constData(), 0755);
    // The superuser may write everywhere; so be somebody else for a while. The file is opened anew elsewhere first.
    folder.Use();
    OpenKey(HKEY_CURRENT_USER, {});
    readOnly.Use();
    const bool super = ::geteuid() == 0;
    ASSERT_TRUE(!super || ::seteuid(65534) == 0);
    EXPECT_EQ(get(u"k"_s, u"a"_s), "1") << "what can't be written is read";
    EXPECT_FALSE(Transaction().IsOpen() || set(u"new"_s, {}, {}) || set(u"k"_s, u"a"_s, "2"));
    ASSERT_TRUE(!super || ::seteuid(0) == 0);
    const Transaction reading(Access::Read);
    EXPECT_FALSE(Transaction().IsOpen() || set(u"k"_s, u"a"_s, "2")) << "within a reading one";
    EXPECT_EQ(get(u"k"_s, u"a"_s), "1");
}

TEST(Registry, AHeldStoreIsWaitedForOnceAndThenDoneWithout) {
    const ConfigurationFolder folder;
    set(u"k"_s, u"a"_s, "1");
    for (const auto& [begin, read] : {std::pair{"BEGIN EXCLUSIVE", "(none)"}, {"BEGIN IMMEDIATE", "1"}}) {
        const OtherProgram other;
        ASSERT_TRUE(other.Does(begin));
        QElapsedTimer waited;
        waited.start();
        for (int i = 0; i < 100; ++i) {
            EXPECT_FALSE(set(u"k"_s, u"a"_s, "2"));
            EXPECT_TRUE(IsStoreHeld());
            EXPECT_EQ(get(u"k"_s, u"a"_s), read);
        }
        EXPECT_LT(waited.elapsed(), 20000) << "a second for each would be 100 and more";
        EXPECT_EQ(StoreProblem(), u"another program holds it");
        ASSERT_TRUE(other.Does("ROLLBACK"));
        EXPECT_TRUE(set(u"k"_s, u"a"_s, "1") && !IsStoreHeld());
    }
}
