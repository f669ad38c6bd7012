// Texts for a terminal. Knows no stream.
#pragma once

#include <QString>

/// A text as it may stand on a terminal in a line of its own: control characters, which names may hold, are written as
/// \n, \t, \u{1b} and the like.
QString OneLine(const QString& text);
