// The picture of a session's open file with its scroll bars: paints, zooms and moves it, goes back to views seen, picks
// with the mouse and marks what is picked. Bars, panels and what is to be picked for are its owner's business.
#pragma once

#include "mainwin/SceneMoving.h"
#include "platform/widgets/LongPaint.h"
#include "view/clsMouse.h"
#include "view/scene/Session.h"

#include <QTimer>
#include <QWidget>
#include <memory>

class PictureBox;
class QScrollBar;

class ctlScene : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive the control; `selection` is changed by the mouse.
    ctlScene(Session& session, clsMouse& selection, QWidget* parent = nullptr);
    ~ctlScene() override;

    /// Paints the scene anew; nothing without an open file. What takes long can be stopped with Esc. `meanwhile` is
    /// done on another thread at the same time, and is over when the call is; it may only read the session, and may be
    /// left out.
    void Paint(const std::function<void()>& meanwhile = {});
    /// The picture as it is painted, without marks and band; painted first where one that is moved is shown.
    const QImage& Picture();
    /// What the picture's size is to be, and how fine it is.
    DeviceSize PixelSize() const;
    int DotsPerInch() const;
    /// Makes the picture empty.
    void Clear();
    /// Fits the picture anew at each change of its size, whatever the scale mode, until these have come to an end: the
    /// window is about to get its real one.
    void FitUntilSettled();
    /// The size is the real one.
    void Settled() { settling.stop(); }
    /// Brings the whole mesh into view, displaced or not as the settings say, fitted anew whatever the scale mode;
    /// paints.
    void Fit();
    /// The step in the table of zooms, held within its range; paints.
    void SetZoom(int value);
    /// The view is another one than was painted.
    void ShowView() { finishZoom(); }
    /// Whether a view was seen `by` places on, or back below 0, since the file was opened; and goes there.
    bool CanGoTo(int by) const { return moving->CanGoTo(by); }
    void GoTo(int by);
    /// What has been seen was of another file.
    void ForgetViews() { moving->Forget(); }
    /// The keyboard's way to what the right button does.
    void AskForPopup();
    /// Takes away what is told of the place under the mouse.
    void HideTip();

signals:
    /// What the picture depends on counts from now on.
    void AboutToPaint();
    void Painted();
    /// How a paint that takes long gets on; empty at its end.
    void Progress(const QString& text);
    /// The picture before stays, and nothing can be picked in it.
    void PaintStopped(const QString& why);
    /// Zoom, scroll bars or the views seen have changed; the picture follows.
    void Zoomed();
    /// The world coordinates under the mouse, as text.
    void MouseAt(const QString& coordinates);
    /// The right button has been released over an open file, or the keyboard asks for the same.
    void PopupWanted(QPoint globalPosition);
    /// A drop is over; no dialog is open.
    void FileDropped(const QString& path);
    /// The mouse may have changed the selection.
    void Picked();

private:
    // ctlScene.cpp
    void buildControls();
    void takeUp(LongPaint::Outcome outcome);
    bool isOnScreen() const;
    void fitView();
    void finishZoom();
    void paintExactly();
    void onViewChanged();
    void updateScrollBars();
    void onScroll(ScrollBar bar, int value);
    void showMouseCoordinates(QPoint pixel);
    void onResized();

    // ctlScenePicking.cpp
    void connectPicking();
    void beginDrag(DevicePoint corner);
    void moveRubberBand(DevicePoint corner);
    void endDrag(DevicePoint corner, Qt::KeyboardModifiers modifiers);
    void cancelDrag();
    void onMousePressed(QPoint pixel, Qt::MouseButton button);
    void onMouseReleased(QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void paintLayer(DeviceContext& device);
    bool takesMouse() const;
    int screenWidth() const;

    // ctlSceneTip.cpp
    void connectTip();
    void showTip();

    Session& session;
    clsMouse& selection;
    bool paintDue = false;
    PictureBox* picScreen = nullptr;
    std::unique_ptr<LongPaint> paint;
    std::unique_ptr<SceneMoving> moving;
    std::array<QScrollBar*, 2> scrScroll{};
    QTimer settling; ///< runs while the window has not got its real size
    QTimer tipWait;  ///< runs while the mouse stands still and nothing is told yet
    QPoint tipAt;
    bool tipShown = false;
};
