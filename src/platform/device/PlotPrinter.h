// A printer with a sheet in it: its papers, which of them lies there and which way round, what of it can be printed,
// and where on it the document goes. Numbers only; what is printed on it, and by whom, stands elsewhere.
#pragma once

#include "platform/device/DeviceMeasures.h"

#include <QList>
#include <QString>

/// Room along the edges of a sheet.
struct SheetMargins {
    float Left = 0, Top = 0, Right = 0, Bottom = 0;
    bool operator==(const SheetMargins&) const = default;
};

/// A paper that a printer takes, upright, in millimetres.
struct PrinterPaper {
    int Code = 0;
    QString Name;
    double WidthMm = 0, HeightMm = 0;
    SheetMargins Unprintable = {}; ///< millimetres that the printer does not reach
    QString Media = {};            ///< what the system calls it
};

/// What a printer tells of itself.
struct PrinterDescription {
    QString Name;
    QList<PrinterPaper> Papers; ///< at least one
    int DefaultPaper = 0;       ///< the code of one of them, or else the first is meant
    int DotsPerInch = 0;        ///< above 0

    /// Every paper of the table to its edges, at 1200 dots an inch; also some large sheets that have no code there.
    static PrinterDescription Pdf();
    /// For traces: 254 dots an inch, which is 10 a millimetre, and every paper of the table to its edges.
    static PrinterDescription Fixed();
    /// One paper only, of any size, to its edges.
    static PrinterDescription OfSheet(double widthMm, double heightMm, int dotsPerInch);
};

enum class PlotUnit : int { Dots = 0, Millimetres = 1 };

class PlotPrinter {
public:
    enum : int { Portrait = 1, Landscape = 2 };

    /// Anything but `Portrait` lies across; a paper that the printer does not have becomes its own default.
    PlotPrinter(PrinterDescription description, int orientation, int paperSize);

    int PaperSize() const { return Paper().Code; }
    /// A code that the printer does not have changes nothing.
    void SetPaperSize(int code);
    const QList<PrinterPaper>& PaperSizes() const { return description.Papers; }
    const PrinterPaper& Paper() const { return description.Papers.at(paper); }
    const QString& DeviceName() const { return description.Name; }
    int Orientation() const { return orientation; }
    void SetOrientation(int value) { orientation = value == Portrait ? Portrait : Landscape; }

    /// How `Document` and `PaperWidth`, `PaperHeight` count; millimetres unless set otherwise.
    void SetUnit(PlotUnit value) { unit = value; }
    /// What is to stay free between the sheet's edges and the document; may be more than the sheet has.
    SheetMargins& Document() { return document; }
    const SheetMargins& Document() const { return document; }
    /// The sheet as it is looked at.
    double PaperWidth() const;
    double PaperHeight() const;
    double PaperWidthMm() const { return isUpright() ? Paper().WidthMm : Paper().HeightMm; }
    double PaperHeightMm() const { return isUpright() ? Paper().HeightMm : Paper().WidthMm; }

    int DotsPerInch() const { return description.DotsPerInch; }
    /// What a device for this sheet answers; its origin is the corner of what can be printed.
    DeviceMeasures Measures() const;
    /// The document in units of such a device; empty or reversed when the margins leave nothing.
    DeviceRect DocumentRect() const;

private:
    bool isUpright() const { return orientation == Portrait; }
    double dotsPerMm() const { return description.DotsPerInch / 25.4; }
    double unitsPerMm() const { return unit == PlotUnit::Millimetres ? 1 : dotsPerMm(); }
    SheetMargins unprintable() const;

    PrinterDescription description;
    int orientation;
    qsizetype paper = 0;
    PlotUnit unit = PlotUnit::Millimetres;
    SheetMargins document;
};
