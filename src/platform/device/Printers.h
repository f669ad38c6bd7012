// The printers that there are and how a finished page gets to one. The program's list asks the system; a test gives its
// own. Draws nothing and shows nothing.
#pragma once

#include "platform/device/PlotPrinter.h"

#include <QByteArray>
#include <QStringList>
#include <optional>

/// The end of handing a page over.
struct PrintResult {
    bool Done = false;
    /// Why not, in the system's words; empty when the user has called it off.
    QString Problem = {};
};

class Printers {
public:
    virtual ~Printers() = default;

    /// In the system's order.
    virtual QStringList Names() = 0;
    /// The system's default printer, which an empty name stands for; empty when there is no printer.
    virtual QString Default() = 0;
    /// Nothing when there is no such printer or it does not tell about itself.
    virtual std::optional<PrinterDescription> Describe(const QString& name) = 0;
    /// Hands over a page that is ready, a PDF.
    virtual PrintResult Print(const PlotPrinter& printer, const QString& title, const QByteArray& page) = 0;

    /// The printer of that name with such a sheet in it; an empty name means the default. Nothing when it can't be had.
    std::optional<PlotPrinter> Open(const QString& name, int orientation, int paperSize) {
        std::optional<PrinterDescription> told = Describe(name.isEmpty() ? Default() : name);
        if (!told || told->Papers.isEmpty() || told->DotsPerInch <= 0)
            return {};
        return PlotPrinter(std::move(*told), orientation, paperSize);
    }
};
