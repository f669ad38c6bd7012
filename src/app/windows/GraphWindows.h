// The windows that float above the main one, which graphs are shown in, and how they make way for dialogs and messages.
// What stands in them is their own business.
#pragma once

#include <QList>

class QDialog;
class QWidget;

namespace mdApplication {

/// Makes `window` one of them until it is destroyed.
void JoinGraphWindows(QWidget& window);
/// All of them that are still there.
QList<QWidget*> GraphWindows();
void ShowGraphWindows();
void HideGraphWindows();
/// With true they leave the top-most layer, with false they go back to it; those that are hidden stay hidden.
void LowerGraphWindows(bool lower);
/// Closes and destroys them all.
void UnloadGraphWindows();

/// Shows a dialog and waits for its end, which it gives back. The graph windows are hidden meanwhile.
int runModal(QDialog& dialog);

} // namespace mdApplication
