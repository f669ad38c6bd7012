#include "app/windows/clsLogger.h"
#include "app/windows/ShowMessage.h"

#include "app/mdApplication.h"
#include "platform/base/NativePath.h"
#include "platform/widgets/Dialogs.h"

#include <QCoreApplication>
#include <fcntl.h>

clsLogger::clsLogger() {
    const QString path = NativePath::TemporaryFolder() + u'/' + QCoreApplication::applicationName() + u".log"_s;
    const int handle = ::open(NativePath::Of(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (handle < 0 || !file.open(handle, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
        mdApplication::ShowMessage(u"ログファイルを開くことができません。"_s, MessageStyle::Information);
}

void clsLogger::DumpMessage(const QString& text) {
    if (!file.isOpen())
        return;
    file.write(text.toUtf8() + '\n');
    file.flush();
}
