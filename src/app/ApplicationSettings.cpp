#include "app/ApplicationSettings.h"

#include "app/mdApplication.h"
#include "app/mdTips.h"

namespace {
QString helpFolder(const QString& programFolder) {
    const QString folder = mdTips::RemoveTrailingChar(programFolder);
    if (mdApplication::PathPart(folder, 3).compare(u"bin"_qs, Qt::CaseInsensitive) == 0)
        return mdApplication::PathPart(folder, 0) + u"Help/"_qs;
    return folder + u"/Help/"_qs;
}
} // namespace

void SetDefaults(ApplicationSettings& settings, const QString& programFolder, const QString& defaultPrinter) {
    settings = {};
    settings.Page.Printer = defaultPrinter;
    settings.Window.Help = helpFolder(programFolder);
}
