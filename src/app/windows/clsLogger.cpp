#include "app/windows/clsLogger.h"
#include "app/windows/ShowMessage.h"

#include "app/mdApplication.h"
#include "platform/widgets/Dialogs.h"

#include <QCoreApplication>
#include <QDir>

clsLogger::clsLogger() {
    const QString folder = QDir::tempPath(); // empty when it is missing
    file.setFileName(folder + u'/' + QCoreApplication::applicationName() + u".log"_s);
    if (folder.isEmpty() || !file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        mdApplication::ShowMessage(u"ログファイルを開くことができません。"_s, MessageStyle::Information);
}

void clsLogger::DumpMessage(const QString& text) {
    if (!file.isOpen())
        return;
    file.write(text.toUtf8() + '\n');
    file.flush();
}
