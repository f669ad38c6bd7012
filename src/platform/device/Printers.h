// The printers that there are and the way to have a page printed. The program's list asks the system; a test gives its
// own. Knows nothing of what is printed.
#pragma once

#include "platform/device/PlotPrinter.h"
#include "platform/device/pictureFile.h"

#include <QStringList>
#include <optional>

/// How printing a page has ended.
struct PrintResult {
    enum Ending { Done, CalledOff, Refused };
    Ending End = Done;
    QString Problem = {}; ///< when refused, the text to show: the name of the printer or the file, and why
};

/// Something that a printer lets its user choose, such as the sides to print on.
struct PrinterOption {
    struct Choice {
        QString Value;   ///< as the system knows it
        QString Caption; ///< as the user reads it
    };
    QString Name; ///< as the system knows it
    QString Caption;
    QList<Choice> Choices;
    QString Chosen; ///< the value of one of them
};

class Printers {
public:
    virtual ~Printers() = default;

    /// Told what goes on whenever that takes longer, and an empty text when it is over.
    std::function<void(const QString&)> Progress;

    /// In the system's order.
    virtual QStringList Names() = 0;
    /// True when there is any; asks nobody who might be slow.
    virtual bool Any() { return !Names().isEmpty(); }
    /// The system's default printer, which an empty name stands for; empty when there is no printer.
    virtual QString Default() = 0;
    /// Nothing when there is no such printer or it does not tell about itself.
    virtual std::optional<PrinterDescription> Describe(const QString& name) = 0;
    /// What the printer lets its user choose beyond paper and orientation, as it is chosen now.
    virtual QList<PrinterOption> Options(const QString&) { return {}; }
    /// Holds for all that is printed there from now on.
    virtual void Choose(const QString& /*printer*/, const QString& /*option*/, const QString& /*value*/) {}
    /// Asks the user what has to be asked, has the page painted, which may happen on another thread, and hands it over.
    virtual PrintResult Print(const PlotPrinter& printer, const QString& title, const Paint& paint) = 0;

    /// The printer of that name with such a sheet in it; an empty name means the default. Nothing when it can't be had.
    std::optional<PlotPrinter> Open(const QString& name, int orientation, int paperSize) {
        std::optional<PrinterDescription> told = Describe(name.isEmpty() ? Default() : name);
        if (!told || told->Papers.isEmpty() || told->DotsPerInch <= 0)
            return {};
        return PlotPrinter(std::move(*told), orientation, paperSize);
    }
};
