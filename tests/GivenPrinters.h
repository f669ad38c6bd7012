// Printers that a test gives: what is printed on them is kept as a trace.
#pragma once

#include "platform/device/Printers.h"
#include "platform/device/TraceDevice.h"

class GivenPrinters : public Printers {
public:
    struct Page {
        QString Printer, Title;
        DeviceMeasures Measures;
        QByteArray Trace;
    };
    QList<PrinterDescription> List{PrinterDescription::Fixed(),
                                   PrinterDescription::Pdf()}; ///< the first is the default
    PrintResult Result; ///< what printing ends in; only a page that is done is painted
    QList<Page> Pages;

    QStringList Names() override {
        QStringList names;
        for (const PrinterDescription& printer : List)
            names.append(printer.Name);
        return names;
    }
    QString Default() override { return Names().value(0); }
    std::optional<PrinterDescription> Describe(const QString& name) override {
        const auto found = std::ranges::find(List, name, &PrinterDescription::Name);
        return found == List.end() ? std::nullopt : std::optional(*found);
    }
    PrintResult Print(const PlotPrinter& printer, const QString& title, const Paint& paint) override {
        if (Result.End != PrintResult::Done)
            return Result;
        TraceDevice device(printer.Measures());
        paint(device);
        Pages.append({printer.DeviceName(), title, printer.Measures(), device.Trace()});
        return Result;
    }
};
