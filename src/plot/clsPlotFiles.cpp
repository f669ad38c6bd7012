// The plot's data file and style file.
#include "plot/clsPlot.h"

void clsPlot::CsvSave(const QString&) const {}
void clsPlot::CsvLoad(const QString&, bool) {}
void clsPlot::StyleSave(const QString&) const {}
void clsPlot::StyleLoad(const QString&) {}
