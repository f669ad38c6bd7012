// Zoom, scrolling, mouse coordinates and the paint of the picture.
#include "mainwin/frmMain.h"

#include "app/NumberFormat.h"
#include "app/mdApplication.h"
#include "mainwin/globals.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/CommandBars.h"
#include "platform/widgets/PictureBox.h"

#include <QLabel>
#include <QScrollBar>

using mdApplication::Model;

void frmMain::SetZoom(int value) {
    mdView::ApplyZoom(value, view);
    finishZoom();
}

void frmMain::zoomAt(QPointF pixel, int steps) {
    if (!IsOpen() || !view.CoordConverter)
        return;
    float x = 0, y = 0;
    view.CoordConverter->DeviceToWorld(qRound(pixel.x()), qRound(pixel.y()), x, y);
    mdView::ZoomAt(view.Zoom + steps, x, y, view);
    finishZoom();
}

void frmMain::finishZoom() {
    updatingUi = true;
    updateZoomCommands();
    updateScrollBars();
    updatingUi = false;
    repaint();
}

void frmMain::updateZoomCommands() {
    bars->SetEnabled(u"miViewZoomIn"_s, IsOpen() && view.Zoom < ZoomMax);
    bars->SetEnabled(u"miViewZoomOut"_s, IsOpen() && view.Zoom > ZoomMin);
    bars->SetEnabled(u"miViewZoomOff"_s, IsOpen() && view.Zoom != 0);
}

void frmMain::updateScrollBars() {
    for (const ScrollBar bar : {ScrollBar::Horizontal, ScrollBar::Vertical}) {
        QScrollBar* scrollBar = scrScroll[std::size_t(bar)];
        const ScrollBarState state = mdView::ScrollState(view, bar);
        // The bar follows the view here; moving the view to the bar's whole percents would make it jump.
        const QSignalBlocker quiet(scrollBar);
        scrollBar->setEnabled(state.Enabled);
        if (state.PageStep)
            scrollBar->setPageStep(*state.PageStep);
        if (state.Value)
            scrollBar->setValue(*state.Value);
    }
}

void frmMain::onScroll(ScrollBar bar, int value) {
    mdView::Scroll(view, bar, value);
    repaint();
}

void frmMain::showMouseCoordinates(QPointF pixel) {
    if (!IsOpen() || slideShow.SlideShowRunning || !view.CoordConverter)
        return;
    panels[1]->setText(mdView::MouseCoordinates(view, clsModel.Window().Width(), pixel.x(), pixel.y()));
}

void frmMain::onPictureResized() {
    clsModel.Viewport().SetWindow(picScreen->PixelSize());
    repaint();
}

void frmMain::clearPicture() {
    view.CoordConverter.reset();
    for (QLabel* panel : panels)
        panel->clear();
    picScreen->ClearedImage();
    picScreen->Refresh();
}

void frmMain::repaint() {
    if (updatingUi || !IsOpen())
        return;
    panels[0]->clear();
    const bool hasStep = Model.CurrentStep >= 0 && Model.CurrentStep < Model.Steps.size();
    panels[2]->setText(hasStep ? NumberFormat::Shortest(Model.Steps.at(Model.CurrentStep).Time) : QString());
    panels[3]->setText(NumberFormat::Shortest(mdView::ZoomPercent(view)) + u" %"_s);
    RasterDevice device(picScreen->ClearedImage(), picScreen->DotsPerInch());
    clsModel.Draw(device);
    picScreen->Refresh();
}
