// The table of the drawing settings that one result file keeps: their element paths, where they live and what they may
// hold. It doesn't read or write; the property file and the command line do, each in its own forms.
#pragma once

#include "app/ApplicationSettings.h"
#include "result/ResultModel.h"

#include <limits>
#include <span>
#include <variant>

namespace drawingElements {

/// The ends of what an integer may be; text beyond is held at the nearer end.
struct Held {
    double Lowest = -std::numeric_limits<double>::infinity();
    double Highest = std::numeric_limits<double>::infinity();
};

/// A setting, or one of the model's positions, which have no form on the command line.
using Field = std::variant<int& (*)(ApplicationSettings&), bool& (*)(ApplicationSettings&),
                           float& (*)(ApplicationSettings&), ColorRef& (*)(ApplicationSettings&),
                           VectorSettings& (*)(ApplicationSettings&), std::int32_t ResultModel::*>;

struct Element {
    const char16_t* Path;
    Field Value;
    Held InFile = {};
    Held OnCommandLine = InFile;
    int Shift = 0;         ///< the text's number less the value
    bool IsDigit = false;  ///< a boolean that the file holds as 1 or 0, not as a word
    bool Optional = false; ///< at its default it is not in the file, and not in the file it is at its default
};

/// In the order in which the property file has them, each section in one piece.
std::span<const Element> Elements();

} // namespace drawingElements
