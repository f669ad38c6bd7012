// What the print service tells in its attributes as this program's papers and options, and the other way round. Talks
// to nobody.
#pragma once

#include "platform/device/Printers.h"

#include <cups/cups.h>

#include <QMap>
#include <memory>

namespace Cups {
struct Delete {
    void operator()(ipp_t* message) const { ippDelete(message); }
};
using Request = std::unique_ptr<ipp_t, Delete>;
using Response = std::unique_ptr<ipp_t, Delete>;

/// The first text of the attribute; empty without it.
QString TextOf(const Response& told, const char* attribute);

/// Papers in the order of the service. One size stands once; those without a customary code get codes in that order.
PrinterDescription DescriptionOf(const Response& told, const QString& queue);

/// Sides, colours, resolution and tray, as far as there is a choice.
QList<PrinterOption> OptionsOf(const Response& told);

void AddJobOptions(const Request& request, const PrinterPaper& paper, const QMap<QString, QString>& chosen);

/// As a name in a message: no longer than the protocol allows, and cut between characters.
QByteArray NameOf(const QString& text);
} // namespace Cups
