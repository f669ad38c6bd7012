// Add-in modules from the folder to the call, with real libraries.
#include "ConfigurationFolder.h"
#include "TestFolder.h"
#include "result/VrfBuilder.h"

#include "extensions/mdAddIn.h"
#include "platform/base/MessageStyle.h"
#include "result/mdVelorinResultModel.h"

#include <QDir>
#include <QFile>
#include <clocale>
#include <csignal>
#include <gtest/gtest.h>
#include <thread>

namespace {

class AddinTest : public testing::Test {
protected:
    /// Puts a module into the folder; the manifest of a sound one unless told otherwise.
    QString put(const QString& name, const QString& library = u"wild"_s, QByteArray manifest = {}) {
        if (manifest.isEmpty())
            manifest = "{\"interface\": 1, \"name\": \"" + name.toUtf8() + "\", \"vendor\": \"V\", \"library\": \"" +
                       name.toUtf8() + ".so\"}";
        const QString file = folder.Path(name + u".so"_s);
        QFile::remove(file);
        QFile::copy(QStringLiteral(VELORIN_BINARY_DIR "/bin/") + library + u".so"_s, file);
        folder.Write(manifest, name + u".addin.json"_s);
        return file;
    }
    QStringList namesOf(const std::vector<AddinModule>& modules) {
        QStringList names;
        for (const AddinModule& module : modules)
            names += module.Name + (module.Installable ? u""_s : u"!"_s) + (module.Changed ? u"*"_s : u""_s);
        return names;
    }
    QStringList candidates(bool all = true) { return namesOf(host.Search(place, all)); }
    QStringList installed() { return namesOf(host.ModuleList()); }
    bool install(const QString& name) {
        for (const AddinModule& module : host.Search(place, true))
            if (module.Name == name)
                return host.Install(module);
        return false;
    }
    void bendLibrary(const QString& path) {
        QFile library(path);
        ASSERT_TRUE(library.open(QIODevice::Append));
        library.write("x");
    }
    /// On a thread of its own, as the window does.
    QString run(int number, const ResultModel& model = {}, const clsMouse& selection = {}) {
        return mdAddIn::RunAddin(host, number, model, selection,
                                 [](const QString&, const std::function<void()>& work) { std::thread(work).join(); });
    }

    ConfigurationFolder configuration;
    TestFolder folder;
    const QString place = folder.Path(u"."_s);
    AddinHost host;
};

QString failureOf(const QString& name, const QString& text) {
    return u"モジュール : %1\r\n内容 : %2\r\n\r\n実行中にエラーが発生しました。"_s.arg(name, text);
}

} // namespace

TEST_F(AddinTest, StayInstalledWhileTheirLibraryIsTheSame) {
    const QString first = put(u"一"_s), second = put(u"二"_s);
    EXPECT_EQ(candidates(), (QStringList{u"一"_s, u"二"_s}));
    host.Lock();
    EXPECT_FALSE(install(u"二"_s));
    host.Unlock();
    EXPECT_TRUE(install(u"二"_s) && install(u"一"_s));
    EXPECT_EQ(installed(), (QStringList{u"二"_s, u"一"_s}));
    EXPECT_EQ(namesOf(AddinHost().ModuleList()), installed());
    EXPECT_TRUE(candidates().isEmpty());

    bendLibrary(second);
    EXPECT_EQ(installed(), QStringList{u"一"_s});
    EXPECT_EQ(candidates(false), QStringList{u"二*"_s});
    EXPECT_TRUE(install(u"二"_s));
    EXPECT_EQ(installed(), (QStringList{u"一"_s, u"二"_s}));
    QFile::remove(first);
    EXPECT_EQ(installed(), QStringList{u"二"_s});

    EXPECT_FALSE(host.Uninstall(-1) || host.Uninstall(1));
    EXPECT_TRUE(host.Uninstall(0));
    EXPECT_TRUE(installed().isEmpty());
    EXPECT_EQ(candidates(false), QStringList{u"二"_s});
}

TEST_F(AddinTest, ManifestsWithAFaultAreShownAndNotInstalled) {
    const std::pair<const char*, QString> bent[] = {
        {"no JSON at all", u"読むことができません"_s},
        {"[1]", u"読むことができません"_s},
        {"{\"interface\": 1, \"library\": \"0.so\"}", u"名称"_s},
        {"{\"name\": \"n\", \"library\": \"3.so\"}", u"番号"_s},
        {"{\"name\": \"n\", \"interface\": 2, \"library\": \"4.so\"}", u"新しいバージョン"_s},
        {"{\"name\": \"n\", \"interface\": 1, \"library\": \"../5.so\"}", u"同じフォルダ"_s},
        {"{\"name\": \"n\", \"interface\": 1, \"library\": \"..\"}", u"同じフォルダ"_s},
        {"{\"name\": \"n\", \"interface\": 1, \"library\": \"7.addin.json\"}", u"このコンピュータ"_s},
        {"{\"name\": \"n\", \"interface\": 1, \"library\": \"none.so\"}", u"このコンピュータ"_s},
    };
    for (std::size_t i = 0; i < std::size(bent); ++i)
        put(QString::number(i), u"wild"_s, bent[i].first);
    QFile large(folder.Path(u"9.addin.json"_s));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(qint64(100) << 20));
    // The same library for another processor.
    QFile foreign(put(u"a"_s));
    ASSERT_TRUE(foreign.open(QIODevice::ReadWrite) && foreign.seek(18) && foreign.write("\x08") == 1);
    foreign.close();

    const std::vector<AddinModule> found = host.Search(place, true);
    ASSERT_EQ(found.size(), std::size(bent) + 2);
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_TRUE(!found[i].Installable && !found[i].Name.isEmpty() && !host.Install(found[i])) << i;
        const QString fault = i < std::size(bent) ? bent[i].second : QString();
        EXPECT_TRUE(found[i].Description.contains(fault)) << found[i].Description.toStdString();
    }
    EXPECT_TRUE(candidates(false).isEmpty());
    EXPECT_TRUE(host.Search(folder.Path(u"none"_s), true).empty());
}

TEST_F(AddinTest, AreToldWhatTheWindowShowsAndDoNoHarm) {
    put(u"m"_s);
    ASSERT_TRUE(install(u"m"_s));
    ResultModel model;
    clsMouse selection;
    model.CurrentItem = 0;
    EXPECT_EQ(run(1, model, selection), failureOf(u"m"_s, u"does not read  -1 0 0 0"_s));
    ASSERT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(twoSquares().Bytes(), u"結果 1.vrf"_s), model));
    ASSERT_TRUE(mdVelorinResultModel::LoadStep(1, 0, model, false, -1));
    selection.Add(4, PickedKind::Nodes);
    selection.Add(0, PickedKind::Nodes);
    EXPECT_EQ(run(1, model, selection), failureOf(u"m"_s, model.FileName + u" reads VRF10 1 0 2 1 #4 #0"_s));

    const std::string locale = std::setlocale(LC_ALL, nullptr);
    const QString here = QDir::currentPath();
    const auto handler = std::signal(SIGTERM, [](int) {});
    const auto runItem = [&](int item) {
        model.CurrentItem = item;
        return run(1, model, selection);
    };
    EXPECT_EQ(runItem(1), QString());
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
    EXPECT_EQ(QDir::currentPath(), here);
    EXPECT_NE(std::signal(SIGTERM, handler), SIG_IGN);
    EXPECT_TRUE(QFile(folder.Write("", u"mask"_s)).open(QIODevice::ReadOnly));
    EXPECT_EQ(runItem(2), failureOf(u"m"_s, u"thrown"_s));
    EXPECT_EQ(runItem(3), failureOf(u"m"_s, u"不明な例外が発生しました。"_s));
    EXPECT_GT(runItem(4).size(), 1000);
    EXPECT_EQ(runItem(5), QString());
    EXPECT_EQ(run(0), QString());
    EXPECT_EQ(run(2), QString());
}

TEST_F(AddinTest, LackOfAPartIsToldAtTheRun) {
    put(u"m"_s, u"wildWithoutAPart"_s);
    ASSERT_TRUE(install(u"m"_s));
    EXPECT_TRUE(run(1).contains(u"velorin_nowhere_to_be_found"_s));
}

TEST_F(AddinTest, NewOnesAreOfferedAtTheStart) {
    QStringList asked;
    int answer = MessageAnswer::No;
    const auto ask = [&](const QString& text, int) {
        asked += text;
        return answer;
    };
    const QStringList folders{place, folder.Path(u"none"_s)};
    mdAddIn::AutoInstallAddins(host, folders, ask);
    EXPECT_TRUE(asked.isEmpty());
    put(u"一"_s);
    put(u"二"_s, u"wild"_s, "{\"interface\": 1, \"name\": \"二\", \"library\": \"二.so\"}");
    mdAddIn::AutoInstallAddins(host, folders, ask);
    EXPECT_EQ(asked.takeFirst(),
              u"2 個のアドインモジュールが見つかりました。\r\nインストールしますか。\r\n\r\n一[V]\r\n"
              u"二[提供元不明]"_s);
    EXPECT_TRUE(asked.isEmpty() && installed().isEmpty());
    answer = MessageAnswer::Yes;
    host.Lock();
    mdAddIn::AutoInstallAddins(host, folders, ask);
    host.Unlock();
    EXPECT_EQ(asked.takeLast(), u"インストールを実行することができません。\r\n一\r\n二"_s);
    mdAddIn::AutoInstallAddins(host, folders, ask);
    EXPECT_EQ(asked.takeLast(), u"インストールが完了しました。"_s);
    EXPECT_EQ(installed(), (QStringList{u"一"_s, u"二"_s}));
    mdAddIn::AutoInstallAddins(host, folders, [&](const QString& text, int style) {
        ADD_FAILURE() << text.toStdString();
        return style;
    });
}
