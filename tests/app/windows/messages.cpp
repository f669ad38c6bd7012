#include "ConfigurationFolder.h"
#include "TestFolder.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "app/windows/clsLogger.h"
#include "platform/widgets/Dialogs.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <gtest/gtest.h>

TEST(GraphWindows, MakeWayForDialogsAndMessages) {
    auto* graph = new QWidget;
    mdApplication::JoinGraphWindows(*graph);
    const auto state = [graph] {
        const bool onTop = graph->windowHandle()->flags() & Qt::WindowStaysOnTopHint;
        return QString((graph->isVisible() ? u"shown"_s : u"hidden"_s) + (onTop ? u" on top"_s : u""_s));
    };
    mdApplication::ShowGraphWindows();
    EXPECT_EQ(state(), u"shown on top"_s);
    QString during;
    QDialog dialog;
    QTimer::singleShot(0, &dialog, [&] {
        during = state();
        dialog.done(5);
    });
    EXPECT_EQ(mdApplication::runModal(dialog), 5);
    EXPECT_EQ(during + state(), u"hidden on topshown on top"_s);
    QTimer::singleShot(0, &dialog, [&] {
        during = state();
        QApplication::activeModalWidget()->close();
    });
    EXPECT_EQ(mdApplication::ShowMessage(u"保存しますか?"_s, MessageStyle::AskNoDefault), MessageAnswer::No);
    EXPECT_EQ(during + state(), u"shownshown on top"_s);
    mdApplication::UnloadGraphWindows();
    mdApplication::ShowGraphWindows(); // there are none any more
}

TEST(GraphWindows, OneWithAnOpenDialogGoesWhenThatHasEnded) {
    const QPointer<QWidget> graph = new QWidget;
    mdApplication::JoinGraphWindows(*graph);
    QDialog dialog(graph);
    QTimer::singleShot(0, &dialog, [&] {
        mdApplication::UnloadGraphWindows();
        dialog.done(5);
    });
    EXPECT_EQ(dialog.exec(), 5);
    EXPECT_TRUE(graph && mdApplication::GraphWindows().isEmpty());
    dialog.setParent(nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(graph);
}

TEST(clsLogger, OverwritesTheLogAndSaysWhenThereIsNoFolder) {
    const ConfigurationFolder folder;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", folder.Path().toUtf8());
    clsLogger().DumpMessage(u"old, and longer than the new one"_s);
    clsLogger logger;
    logger.DumpMessage(u"一"_s);
    logger.Finalize();
    logger.DumpMessage(u"two"_s);
    const QString log = folder.Path() + u'/' + QCoreApplication::applicationName() + u".log"_s;
    EXPECT_EQ(TestFolder::Read(log), QByteArray("一\ntwo\n"));
    qputenv("TMPDIR", (folder.Path() + u"/none"_s).toUtf8());
    Dialogs::Testing::Start();
    clsLogger().DumpMessage(u"lost"_s);
    EXPECT_EQ(Dialogs::Testing::Asked().value(0).Text, u"ログファイルを開くことができません。"_s);
    Dialogs::Testing::Stop();
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
}
