// The picture of a session's open file with its scroll bars: paints, zooms and scrolls it, picks with the mouse and
// marks what is picked. Bars, panels and what is to be picked for are its owner's business.
#pragma once

#include "view/clsMouse.h"
#include "view/scene/Session.h"

#include <QTimer>
#include <QWidget>
#include <memory>

class LongPaint;
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
    /// The picture as it was painted, without marks and band.
    const QImage& Picture() const;
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
    /// The keyboard's way to what the right button does.
    void AskForPopup();

signals:
    void Painted();
    /// How a paint that takes long gets on; empty at its end.
    void Progress(const QString& text);
    /// The picture before stays, and nothing can be picked in it.
    void PaintStopped(const QString& why);
    /// Zoom and scroll bars have changed; the picture follows.
    void Zoomed();
    /// The world coordinates under the mouse, as text.
    void MouseAt(const QString& coordinates);
    /// The right button has been released over an open file, or the keyboard asks for the same.
    void PopupWanted(QPoint globalPosition);
    /// A drop is over; no dialog is open.
    void FileDropped(const QString& path);

private:
    // ctlScene.cpp
    void buildControls();
    bool isOnScreen() const;
    void fitView();
    void finishZoom();
    void zoomAt(QPointF pixel, int steps);
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

    Session& session;
    clsMouse& selection;
    bool paintDue = false;
    PictureBox* picScreen = nullptr;
    std::unique_ptr<LongPaint> paint;
    std::array<QScrollBar*, 2> scrScroll{};
    QTimer settling; ///< runs while the window has not got its real size
};
