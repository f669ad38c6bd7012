// Prints the page of a session from a window: with the questions and messages that go with it.
#pragma once

#include "view/scene/Session.h"

/// On a printer that is set up for the page. What goes wrong is told; false then, and when the user calls it off.
bool PrintPage(Session& session, const PlotPrinter& printer);
