#include "output/mdPage.h"

#include "output/pageLabels.h"

#include <cmath>

namespace mdPage {

namespace {

constexpr double millimetresPerUnit[] = {1, 10, 1000};

void drawOutline(PlotCanvas& canvas, int tenthsOfMillimetre) {
    double width = 0, unused = 0;
    canvas.Converter().PaperLengthToDevice(tenthsOfMillimetre * 0.1, 0, width, unused);
    canvas.SetPen(canvas.CreatePen(PenStyle::Solid, std::max(1, Round(width)), 0));
    canvas.SetBrush(canvas.CreateBrush(0, true));
    canvas.Rectangle(canvas.Document());
}

/// Where the mesh and the view, which is centred on the page, both are: how far its farther end lies from the centre.
double reach(const QList<float>& mesh, float viewStart, float viewExtent) {
    const auto [low, high] = std::minmax({double(viewStart), double(viewStart) + viewExtent});
    const auto [least, most] = std::ranges::minmax(mesh);
    const double centre = (low + high) / 2, first = std::max<double>(least, low), last = std::min<double>(most, high);
    return first <= last ? std::max(centre - first, last - centre) : 0;
}

} // namespace

double PaperScale(const PageSettings& page) {
    if (!(page.ScaleDenominator > 0) || !std::isfinite(page.ScaleDenominator))
        return 0;
    return millimetresPerUnit[std::clamp(page.ScaleUnit, 0, 2)] / page.ScaleDenominator;
}

void SetUp(const PageSettings& page, PlotPrinter& printer, DocumentPlotter& plotter) {
    const auto [left, top, right, bottom] = page.Margin;
    const auto millimetres = [](int tenths) { return float(tenths * 0.1); };
    printer.SetUnit(PlotUnit::Millimetres);
    printer.Document() = {millimetres(left), millimetres(top), millimetres(right), millimetres(bottom)};
    plotter.SetPaperScale(PaperScale(page));
}

std::optional<PlotPrinter> OpenPrinter(const PageSettings& page, DocumentPlotter& plotter) {
    std::optional<PlotPrinter> printer = plotter.OpenPrinter(page.Printer, page.Orientation, page.PaperSize);
    if (printer)
        SetUp(page, *printer, plotter);
    return printer;
}

bool Holds(const PageSettings& page, const PlotPrinter& printer, const MeshData& mesh, const PlotRect& view) {
    const DeviceRect document = printer.DocumentRect();
    if (document.Width() <= 0 || document.Height() <= 0)
        return false;
    const double scale = PaperScale(page) * printer.DotsPerInch() / 25.4;
    if (scale == 0 || mesh.Nodes.X.isEmpty() || mesh.Nodes.Y.isEmpty())
        return true;
    // The document's edges are whole dots.
    const auto hasRoom = [&](double reached, int extent) { return reached * scale <= extent / 2.0 + 1; };
    return hasRoom(reach(mesh.Nodes.X, view.Left(), view.Width()), document.Width()) &&
           hasRoom(reach(mesh.Nodes.Y, view.Top(), view.Height()), document.Height());
}

void Serve(Session& session) {
    session.Printing = [](PlotCanvas& canvas, const Scene& scene) { Print(canvas, scene, QDate::currentDate()); };
}

void Print(PlotCanvas& canvas, const Scene& scene, QDate today) {
    const PageSettings& page = scene.Settings.Page;
    const PlotDocument& document = canvas.Document();
    if (document.DeviceWidth() > 0 && document.DeviceHeight() > 0) {
        canvas.hDC().ClipRect(document);
        mdScene::PaintScene(canvas, true, scene);
        canvas.hDC().ClipNone();
        if (page.Frame)
            drawOutline(canvas, page.FrameSize);
    }
    pageLabels::PrintPageLabels(canvas.hDC(), canvas.AttributeDC(), document, page.Labels,
                                pageLabels::BuildLabelMacros(scene.Model, scene.Settings.Vector, today));
}

} // namespace mdPage
