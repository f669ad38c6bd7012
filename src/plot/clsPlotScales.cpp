// Limits and steps of the two scales, and the numbers at their ticks.
#include "plot/clsPlot.h"

void clsPlot::GetMemoriScale(float&, float&, float&, float&) {}
void clsPlot::PrepareScales(DeviceContext&) {}
