#include "platform/widgets/Shell.h"

#include <QDesktopServices>
#include <QUrl>

bool Shell::Open(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}
