#include "platform/widgets/Shell.h"

#include "platform/base/NativePath.h"

#include <QDesktopServices>
#include <QUrl>

bool Shell::Open(const QString& path) {
    return QDesktopServices::openUrl(NativePath::Url(path));
}
