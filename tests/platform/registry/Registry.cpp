#include "platform/registry/Registry.h"

#include "ConfigurationFolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Registry;

namespace {
bool set(const QString& path, const QString& name, const QByteArray& data) {
    const Key key = CreateKey(HKEY_CURRENT_USER, path);
    const bool done = SetValue(key, {name, REG_BINARY, data});
    return CloseKey(key) && done;
}

QByteArray get(const QString& path, const QString& name) {
    const Key key = OpenKey(HKEY_CURRENT_USER, path);
    const auto value = GetValue(key, name);
    CloseKey(key);
    return value ? value->Data : QByteArray("(none)");
}

QStringList names(const QString& path) {
    const Key key = OpenKey(HKEY_CURRENT_USER, path);
    const QStringList list = ValueNames(key);
    CloseKey(key);
    return list;
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void overwrite(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// Another process that runs one of the cases named DISABLED below on this one's store.
class Child : public QProcess {
public:
    explicit Child(const QString& task) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"VELORIN_TEST_CONFIGURATION"_s, qEnvironmentVariable("XDG_CONFIG_HOME"));
        environment.insert(u"VELORIN_TEST_TASK"_s, task);
        setProcessEnvironment(environment);
        start(QCoreApplication::applicationFilePath(),
              {u"--gtest_also_run_disabled_tests"_s, u"--gtest_filter=RegistryChild.*"_s});
    }
};

void saveAll(qint64 generation) {
    Transaction transaction;
    for (int i = 0; i < 120; ++i)
        set(u"Save"_s, u"v"_s + QString::number(i), QByteArray::number(generation));
    transaction.Commit();
}
} // namespace

TEST(RegistryChild, DISABLED_Run) {
    qputenv("XDG_CONFIG_HOME", qgetenv("VELORIN_TEST_CONFIGURATION"));
    const QString task = qEnvironmentVariable("VELORIN_TEST_TASK");
    for (qint64 generation = QCoreApplication::applicationPid() * 10000; task == u"forever"; ++generation) {
        saveAll(generation);
        std::puts("saved");
        std::fflush(stdout);
    }
    for (int i = 0; i < 15; ++i) {
        Transaction transaction;
        ASSERT_TRUE(transaction.IsOpen());
        ASSERT_TRUE(set(u"Save"_s, task + QString::number(i), "x"));
        ASSERT_TRUE(set(u"Save"_s, u"shared"_s, task.toUtf8()));
        ASSERT_TRUE(transaction.Commit());
    }
}

TEST(Registry, KeepsCaseAndOrderAndMeetsAnyCase) {
    const ConfigurationFolder folder;
    set(u"Software\\Ärger"_s, u"Zulu"_s, "1");
    set(u"software\\äRGER\\"_s, u"Ωmega"_s, "2");
    set(u"Software\\Ärger"_s, {}, "3");
    set(u"SOFTWARE\\ärger"_s, u"ZULU"_s, "4");
    EXPECT_EQ(names(u"software\\ärger"_s), (QStringList{u"Zulu"_s, u"Ωmega"_s, u""_s}));
    EXPECT_EQ(get(u"Software\\Ärger"_s, u"zulu"_s), "4");

    const Key key = OpenKey(HKEY_CURRENT_USER, u"Software"_s);
    EXPECT_EQ(SubKeyAt(key, 0), u"Ärger"_s);
    EXPECT_TRUE(!SubKeyAt(key, 1) && !SubKeyAt(key, -1));
    EXPECT_TRUE(CloseKey(key));
    EXPECT_FALSE(CloseKey(key));
    const Key inner = OpenKey(HKEY_CURRENT_USER, u"Software\\Ärger"_s);
    EXPECT_EQ(ValueAt(inner, 1), (Value{u"Ωmega"_s, REG_BINARY, "2"}));
    EXPECT_TRUE(!ValueAt(inner, 3) && !ValueAt(inner, -1));
    EXPECT_TRUE(DeleteValue(inner, u"ZuLu"_s));
    EXPECT_FALSE(DeleteValue(inner, u"ZuLu"_s));
    EXPECT_TRUE(DeleteKey(HKEY_CURRENT_USER, u"Software\\Ärger"_s));
    EXPECT_FALSE(SetValue(inner, {u"a"_s, REG_NONE, {}})) << "the key has gone";
    CloseKey(inner);
}

TEST(Registry, RefusesWhatIsBeyondItsLimits) {
    const ConfigurationFolder folder;
    EXPECT_TRUE(set(u"k"_s, u"large"_s, QByteArray(MaxDataBytes, 'x')));
    EXPECT_EQ(get(u"k"_s, u"large"_s).size(), MaxDataBytes);
    EXPECT_FALSE(set(u"k"_s, u"large"_s, QByteArray(MaxDataBytes + 1, 'x')));
    EXPECT_TRUE(set(u"k"_s, QString(MaxValueName, u'n'), {}));
    EXPECT_FALSE(set(u"k"_s, QString(MaxValueName + 1, u'n'), {}));
    EXPECT_FALSE(set(u"k"_s, u"a\nb"_s, {}));
    EXPECT_FALSE(set(u"k"_s, QString(QChar(0xd800)), {}));
    EXPECT_TRUE(set(QString(MaxKeyName, u'n'), {}, {}));
    EXPECT_FALSE(set(QString(MaxKeyName + 1, u'n'), {}, {}));
    EXPECT_TRUE(set(u"d\\"_s.repeated(MaxDepth), {}, {}));
    EXPECT_FALSE(set(u"d\\"_s.repeated(MaxDepth + 1), {}, {}));
    EXPECT_FALSE(DeleteKey(HKEY_CURRENT_USER, u"d"_s)) << "it has a subkey";
    EXPECT_TRUE(DeleteTree(HKEY_CURRENT_USER, u"d"_s));
    EXPECT_FALSE(DeleteTree(HKEY_CURRENT_USER, u"\\"_s)) << "the root stays";
    EXPECT_EQ(OpenKey(HKEY_CURRENT_USER, u"d"_s), 0);
}

TEST(Registry, TransactionsKeepAllOrNothing) {
    const ConfigurationFolder folder;
    set(u"k"_s, u"a"_s, "old");
    const Key kept = OpenKey(HKEY_CURRENT_USER, u"k"_s);
    {
        const Transaction abandoned;
        EXPECT_TRUE(set(u"k\\new"_s, u"a"_s, "x") && DeleteValue(kept, u"a"_s));
    }
    EXPECT_EQ(get(u"k"_s, u"a"_s), "old");
    EXPECT_EQ(OpenKey(HKEY_CURRENT_USER, u"k\\new"_s), 0);
    {
        Transaction outer;
        set(u"k"_s, u"a"_s, "outer");
        {
            Transaction inner;
            set(u"k"_s, u"b"_s, "inner");
        }
        EXPECT_FALSE(set(u"k"_s, u"a"_s, "later")) << "the inner one has spoilt it";
        EXPECT_FALSE(outer.Commit());
    }
    EXPECT_EQ(get(u"k"_s, u"a"_s), "old");
    Transaction outer, inner;
    set(u"k"_s, u"a"_s, "both");
    EXPECT_TRUE(inner.Commit());
    EXPECT_TRUE(outer.Commit());
    EXPECT_EQ(get(u"k"_s, u"a"_s), "both");
    CloseKey(kept);
}

TEST(Registry, OpenKeysFindTheirKeyInAStoreMadeAnew) {
    const ConfigurationFolder folder;
    set(u"First"_s, {}, "1");
    set(u"Second"_s, {}, "2");
    const Key first = OpenKey(HKEY_CURRENT_USER, u"First"_s), second = OpenKey(HKEY_CURRENT_USER, u"Second"_s);
    ASSERT_TRUE(QFile::remove(StorePath()));
    set(u"Second"_s, {}, "new");
    EXPECT_EQ(GetValue(second, {})->Data, "new");
    EXPECT_EQ(GetValue(first, {}), std::nullopt);
    EXPECT_FALSE(SetValue(first, {{}, REG_BINARY, "1"}));
    CloseKey(first);
    CloseKey(second);
}

TEST(Registry, AKilledSaveLeavesTheOldOrTheNewState) {
    const ConfigurationFolder folder;
    saveAll(0);
    for (int round = 0; round < 8; ++round) {
        const QByteArray before = get(u"Save"_s, u"v0"_s);
        Child child(u"forever"_s);
        QByteArray output;
        while (!output.contains("saved") && child.waitForReadyRead())
            output += child.readAllStandardOutput();
        QThread::usleep(QRandomGenerator::global()->bounded(20000u));
        child.kill();
        ASSERT_TRUE(child.waitForFinished());
        const QByteArray generation = get(u"Save"_s, u"v0"_s);
        EXPECT_NE(generation, before) << "the child has saved nothing";
        ASSERT_EQ(names(u"Save"_s).size(), 120);
        for (int i = 0; i < 120; ++i)
            ASSERT_EQ(get(u"Save"_s, u"v"_s + QString::number(i)), generation) << i;
    }
    EXPECT_FALSE(QFileInfo::exists(StorePath() + u".damaged"_s));
}

TEST(Registry, TwoProgramsSavingAtOnceLoseNothing) {
    const ConfigurationFolder folder; // no store yet: they also make it at once
    Child one(u"one"_s), two(u"two"_s);
    for (Child* child : {&one, &two}) {
        ASSERT_TRUE(child->waitForFinished(60000));
        EXPECT_EQ(child->exitCode(), 0) << child->readAllStandardOutput().toStdString();
    }
    EXPECT_EQ(names(u"Save"_s).size(), 31);
    const QByteArray last = get(u"Save"_s, u"shared"_s);
    EXPECT_TRUE(last == "one" || last == "two");
}

TEST(Registry, ADamagedStoreIsMovedAsideByTheNextWrite) {
    QByteArray good;
    {
        const ConfigurationFolder folder;
        Transaction transaction;
        for (int i = 0; i < 300; ++i)
            set(u"k"_s, u"value "_s + QString::number(i), QByteArray(200, 'x'));
        ASSERT_TRUE(transaction.Commit());
        good = contents(StorePath());
    }
    QByteArray holed = good;
    std::fill(holed.begin() + 4096, holed.end() - 4096, 'z');
    QByteArray otherSchema = good;
    otherSchema.replace("CREATE TABLE vals", "CREATE TABLE vols");
    const QByteArray cases[] = {QByteArray("not a database at all, but long enough to be taken for one").repeated(20),
                                holed,
                                good.first(good.size() / 2),
                                good.first(1000),
                                otherSchema,
                                "x"};
    for (const QByteArray& damaged : cases) {
        SCOPED_TRACE(damaged.size());
        const ConfigurationFolder folder;
        overwrite(StorePath(), damaged);
        EXPECT_EQ(OpenKey(HKEY_CURRENT_USER, u"k"_s), 0);
        EXPECT_EQ(contents(StorePath()), damaged) << "a reader must leave it alone";
        EXPECT_TRUE(set(u"k"_s, u"a"_s, "1"));
        EXPECT_EQ(get(u"k"_s, u"a"_s), "1");
        EXPECT_EQ(contents(StorePath() + u".damaged"_s), damaged);

        // Once more, this time under a connection that has been good; the first one must not be written over. With
        // other tables in it the file would pass there, as its schema bears the same version.
        if (damaged == otherSchema)
            continue;
        overwrite(StorePath(), damaged);
        set(u"k"_s, u"a"_s, "2");
        EXPECT_TRUE(set(u"k"_s, u"a"_s, "3"));
        EXPECT_EQ(get(u"k"_s, u"a"_s), "3");
        EXPECT_EQ(contents(StorePath() + u".damaged"_s), damaged);
        EXPECT_EQ(contents(StorePath() + u".damaged.2"_s), damaged);
    }
    const ConfigurationFolder folder;
    overwrite(StorePath(), {});
    EXPECT_TRUE(set(u"k"_s, u"a"_s, "1")) << "an empty file is no damage";
    EXPECT_EQ(QDir(folder.Path() + u"/Ordvane"_s).entryList(QDir::Files), QStringList{u"registry.db"_s});
}

TEST(Registry, ShutStoresGiveNothingAndTakeNothing) {
    const ConfigurationFolder folder;
    overwrite(folder.Path() + u"/Ordvane"_s, "a file where the folder should be");
    EXPECT_FALSE(Transaction().IsOpen());
    EXPECT_EQ(CreateKey(HKEY_CURRENT_USER, u"k"_s), 0);

    const ConfigurationFolder readOnly;
    ASSERT_TRUE(set(u"k"_s, u"a"_s, "1"));
    const QByteArray before = contents(StorePath());
    ::chmod(QFile::encodeName(StorePath()).constData(), 0444);
    ::chmod(QFile::encodeName(readOnly.Path()).constData(), 0755);
    // The superuser may write everywhere; so be somebody else for a while. The file is opened anew elsewhere first.
    folder.Use();
    OpenKey(HKEY_CURRENT_USER, {});
    readOnly.Use();
    const bool super = ::geteuid() == 0;
    ASSERT_TRUE(!super || ::seteuid(65534) == 0);
    EXPECT_EQ(OpenKey(HKEY_CURRENT_USER, u"k"_s), 0);
    EXPECT_FALSE(Transaction().IsOpen());
    EXPECT_FALSE(set(u"k"_s, u"a"_s, "2"));
    ASSERT_TRUE(!super || ::seteuid(0) == 0);
    EXPECT_EQ(contents(StorePath()), before);
}
