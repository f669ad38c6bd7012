// How much of the screen the window has, and how it comes back as it was left.
#include "mainwin/frmMain.h"

#include "mainwin/globals.h"
#include "mainwin/windowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>

using mdApplication::Settings;

namespace {

enum WindowStateNumber : int { Normal = 0, Minimised = 1, Maximised = 2 };

} // namespace

void frmMain::toggleFullScreen() {
    if (!isFullScreen())
        placeBefore = QRect(pos(), size());
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

bool frmMain::restoreWindow() {
    const WindowSettings& saved = Settings.Window;
    if (saved.WindowState < Normal || saved.WindowState > Maximised)
        return false;
    constexpr Qt::WindowState states[] = {Qt::WindowNoState, Qt::WindowMinimized, Qt::WindowMaximized};
    const Qt::WindowStates before = windowState();
    setWindowState(states[saved.WindowState]);
    if (saved.WindowState != Normal)
        return windowState() != before;
    std::vector<QRect> screens{screen()->availableGeometry()};
    for (const QScreen* other : QGuiApplication::screens())
        screens.push_back(other->availableGeometry());
    const auto place = windowPlace::Restored(saved.WindowPos, minimumSizeHint(), roomForFrame(), screens);
    if (!place)
        return false;
    const bool changes = windowState() != before || place->size() != size();
    move(place->topLeft());
    resize(place->size());
    return changes;
}

void frmMain::storeWindow() {
    Settings.Window.WindowState = isMinimized() ? Minimised : isMaximized() ? Maximised : Normal;
    constexpr int twips = windowPlace::TwipsPerPixel;
    const QRect place = isFullScreen() ? placeBefore : QRect(pos(), size());
    Settings.Window.WindowPos = {place.x() * twips, place.y() * twips, place.width() * twips, place.height() * twips};
}

QSize frmMain::roomForFrame() const {
    return isVisible() ? frameGeometry().size() - size() : QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
}
