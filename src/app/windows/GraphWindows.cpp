#include "app/windows/GraphWindows.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QWindow>

namespace mdApplication {

namespace {

QList<QPointer<QWidget>>& joined() {
    static QList<QPointer<QWidget>> windows;
    return windows;
}

void setGraphWindowsVisible(bool visible) {
    for (QWidget* window : GraphWindows())
        window->setVisible(visible);
}

} // namespace

QList<QWidget*> GraphWindows() {
    joined().removeIf([](const QPointer<QWidget>& window) { return window.isNull(); });
    return {joined().begin(), joined().end()};
}

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
    for (const QWidget* window : GraphWindows())
        window->windowHandle()->setFlag(Qt::WindowStaysOnTopHint, !lower);
}

void UnloadGraphWindows() {
    // One of them may take others along.
    const QList<QPointer<QWidget>> windows = std::exchange(joined(), {});
    for (const QPointer<QWidget>& window : windows) {
        if (!window)
            continue;
        // One that has a dialog open is waiting for it and goes when that has ended.
        if (QApplication::activeModalWidget()) {
            window->hide();
            window->deleteLater();
        } else {
            delete window;
        }
    }
}

int runModal(QDialog& dialog) {
    HideGraphWindows();
    const int result = dialog.exec();
    ShowGraphWindows();
    return result;
}

} // namespace mdApplication
