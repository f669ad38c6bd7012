#include "app/ApplicationSettings.h"

#include "app/mdApplication.h"
#include "app/mdTips.h"

namespace {
QString helpFolder(const QString& programFolder) {
    const QString folder = mdTips::RemoveTrailingChar(programFolder);
    if (mdApplication::PathPart(folder, 3).compare(u"bin"_s, Qt::CaseInsensitive) == 0)
        return mdApplication::PathPart(folder, 0) + u"Help/"_s;
    return folder + u"/Help/"_s;
}
} // namespace

void SetDefaults(ApplicationSettings& settings, const QString& programFolder, const QString& defaultPrinter) {
    settings = {};
    settings.Page.Printer = defaultPrinter;
    settings.Window.Help = helpFolder(programFolder);
}

QList<LegendStyle> GraphDefaults::DefaultStyles() {
    constexpr ColorRef colors[] = {0xff0000, 0x4080ff, 0x808000, 0x8000ff, 0xc0c0c0,
                                   0xff8080, 0x8000,   0x80ff00, 0xff00ff, 0x808040};
    constexpr int lineStyleCount = 5;
    QList<LegendStyle> styles;
    for (const ColorRef color : colors) {
        const int row = int(styles.size());
        styles.append({row % lineStyleCount, color, row < lineStyleCount ? 1 : 2, color});
    }
    return styles;
}
