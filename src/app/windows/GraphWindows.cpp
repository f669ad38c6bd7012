#include "app/windows/GraphWindows.h"

#include <QDialog>
#include <QPointer>
#include <QWindow>

namespace mdApplication {

namespace {

QList<QPointer<QWidget>>& joined() {
    static QList<QPointer<QWidget>> windows;
    return windows;
}

/// Those that are still there.
const QList<QPointer<QWidget>>& graphWindows() {
    joined().removeIf([](const QPointer<QWidget>& window) { return window.isNull(); });
    return joined();
}

void setGraphWindowsVisible(bool visible) {
    for (const QPointer<QWidget>& window : graphWindows())
        window->setVisible(visible);
}

} // namespace

void JoinGraphWindows(QWidget& window) {
    window.winId(); // what takes the window to another layer is its native one
    window.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, true);
    joined().append(&window);
}

void ShowGraphWindows() {
    setGraphWindowsVisible(true);
}

void HideGraphWindows() {
    setGraphWindowsVisible(false);
}

void LowerGraphWindows(bool lower) {
    for (const QPointer<QWidget>& window : graphWindows())
        window->windowHandle()->setFlag(Qt::WindowStaysOnTopHint, !lower);
}

void UnloadGraphWindows() {
    const QList<QPointer<QWidget>> windows = graphWindows();
    for (const QPointer<QWidget>& window : windows)
        delete window;
}

int runModal(QDialog& dialog) {
    HideGraphWindows();
    const int result = dialog.exec();
    ShowGraphWindows();
    return result;
}

} // namespace mdApplication
