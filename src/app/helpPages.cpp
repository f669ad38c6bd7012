#include "app/helpPages.h"

#include "platform/base/Literals.h"

#include <QDir>

namespace {
QString indexIn(const QDir& folder) {
    const QStringList pages = folder.entryList({u"index.htm*"_s}, QDir::Files, QDir::Name);
    return pages.isEmpty() ? QString() : folder.filePath(pages.constFirst());
}
} // namespace

QString helpPages::Index(const QString& chosen, const QString& programFolder, const QString& language) {
    // An empty path would be the current folder.
    QStringList folders = chosen.isEmpty() ? QStringList() : QStringList{chosen};
    for (const QString& name : {language, u"ja"_s, u"en"_s})
        folders += QDir::cleanPath(programFolder + u"/../share/velorin/help/"_s + name);
    for (const QString& folder : folders)
        if (const QString page = indexIn(QDir(folder)); !page.isEmpty())
            return page;
    return {};
}
