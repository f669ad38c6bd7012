// The customary codes of paper, with their names and sizes. What a printer takes of them is the printer's business.
#pragma once

#include <QString>
#include <optional>
#include <span>

/// A sheet as it lies upright in its tray: an envelope or a ledger may be wider than it is high.
struct PaperSize {
    int Code;
    QStringView Name;
    double WidthMm, HeightMm;
};

namespace PaperSizes {
inline constexpr int A4 = 9;
/// From here on stand the codes of papers that have no customary one; what they mean is for each printer to say.
inline constexpr int FirstOwn = 256;

std::span<const PaperSize> Table();
/// Null for a code without a row.
const PaperSize* Find(int code);
/// The code of the first paper whose sides are these within half a millimetre, as they stand; nothing if there is none.
std::optional<int> CodeOf(double widthMm, double heightMm);
} // namespace PaperSizes
