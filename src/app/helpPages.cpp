#include "app/helpPages.h"

#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"

#include <QDir>

namespace {
QString indexIn(const QString& folder) {
    const QStringList pages = NativePath::Files(folder, {u"index.htm*"_s});
    return pages.isEmpty() ? QString() : QDir::cleanPath(folder + u'/' + pages.constFirst());
}
} // namespace

QString helpPages::Index(const QString& chosen, const QString& programFolder, const QString& language) {
    // An empty path would be the current folder.
    QStringList folders = chosen.isEmpty() ? QStringList() : QStringList{chosen};
    for (const QString& name : {language, u"ja"_s, u"en"_s})
        folders += QDir::cleanPath(programFolder + u"/../share/velorin/help/"_s + name);
    for (const QString& folder : folders)
        if (const QString page = indexIn(folder); !page.isEmpty())
            return page;
    return {};
}
