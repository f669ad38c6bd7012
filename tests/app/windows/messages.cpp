#include "ConfigurationFolder.h"
#include "TestFolder.h"
#include "app/windows/ShowMessage.h"
#include "app/windows/clsLogger.h"
#include "platform/widgets/Dialogs.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

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
