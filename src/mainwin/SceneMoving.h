// The view of a picture moved about by wheel, mouse and fingers, and the views seen. What takes long to paint is shown
// moved at once, as the picture that is there; the exact one is asked for when the view has come to rest. Paints
// nothing.
#pragma once

#include "view/ViewHistory.h"
#include "view/scene/Session.h"

#include <QPoint>
#include <QTimer>
#include <functional>

class PictureBox;

class SceneMoving : public QObject {
    Q_OBJECT

public:
    /// All must outlive it. Nothing moves while `isPainting` tells that a picture is being painted.
    SceneMoving(Session& session, PictureBox& box, std::function<bool()> isPainting);

    /// A button goes down on the picture: whether it is to move it.
    bool TakePress(QPoint pixel, Qt::MouseButton button);
    /// Whether a drag moves the picture.
    bool IsDragging() const { return drag.has_value(); }
    /// Whether what shows is the picture before, moved, and the exact one is still to be painted.
    bool ShowsMoved() const { return isMoved; }
    /// Shows the view as it is now.
    void Follow();

    /// Whether a view was seen `by` places on, or back below 0, since the file was opened; and makes it the view. False
    /// when there is none.
    bool CanGoTo(int by) const { return seen.CanGo(by); }
    bool GoTo(int by);
    /// What has been seen was of another file.
    void Forget();

    // What has come of a paint.

    /// `isQuick`: it took no longer than a picture is shown.
    void NoteSpeed(bool isQuick) { paintsQuickly = isQuick; }
    /// It shows.
    void TakePainted();
    /// It has been given up for input: what shows is still the picture before.
    void TakeGivenUp();
    /// The picture that shows has no view.
    void TakeLost();

signals:
    /// A drag that moves the picture is about to begin.
    void Beginning();
    /// The view, or which views have been seen.
    void ViewChanged();
    /// A picture at once.
    void PaintWanted();
    /// The exact picture, as long as nobody moves it on.
    void PaintAtRestWanted();

protected:
    /// Sees the keys of the box.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A drag that moves the picture.
    struct Drag {
        QPoint From;
        PlotRect Bounds; ///< in view when it began
        Qt::MouseButton Button;
    };

    bool isMovable() const;
    void zoomAt(QPointF pixel, int steps);
    void moveBy(QPointF way);
    void moveTo(QPoint pixel, Qt::MouseButtons held);
    void endDrag();
    void comeToRest();
    void noteView();
    void showCursor();

    Session& session;
    PictureBox& box;
    std::function<bool()> isPainting;
    std::optional<Drag> drag;
    bool spaceHeld = false;
    ViewHistory seen;
    std::optional<PlotConverter> painted; ///< of the picture that is shown, moved or not
    bool isMoved = false;
    bool paintsQuickly = false;
    QTimer resting; ///< runs from a change of the view until it counts as at rest
};
