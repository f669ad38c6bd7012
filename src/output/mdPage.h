// The printed page: the view of the document inside the margins, an outline around it and the labels, the same on a
// printer, in a preview and in a file. What stands in the labels and how they are drawn is not its business.
#pragma once

#include "platform/device/PlotPrinter.h"
#include "view/scene/Session.h"

#include <QDate>

namespace mdPage {
/// Millimetres on paper for a unit of the model; 0 when the model is fitted to the page.
double PaperScale(const PageSettings& page);

/// Tells the printer the margins of its document, and the plotter the scale of its pages.
void SetUp(const PageSettings& page, PlotPrinter& printer, DocumentPlotter& plotter);

/// The printer that the settings name, set up; nothing when it can't be had.
std::optional<PlotPrinter> OpenPrinter(const PageSettings& page, DocumentPlotter& plotter);

/// Whether the page holds all that is in view of the mesh, before displacement. What is fitted does, unless the margins
/// leave nothing.
bool Holds(const PageSettings& page, const PlotPrinter& printer, const MeshData& mesh, const PlotRect& view);

/// Has the pages of a session painted by `Print`, each with the date of its day.
void Serve(Session& session);

/// Paints the page. A document without room is left out, with its outline; the labels stay.
void Print(PlotCanvas& canvas, const Scene& scene, QDate today);
} // namespace mdPage
