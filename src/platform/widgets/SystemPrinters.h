// The queues of the system's print service, and behind them one printer more that writes PDF files: it is always there
// and asks for the file's name. What is chosen of a queue's properties holds until the program ends.
#pragma once

#include "platform/device/Printers.h"

#include <QElapsedTimer>
#include <QMap>

namespace CupsQueues {
struct Listing;
struct Queue;
} // namespace CupsQueues

/// The service is asked anew by each call, on another thread, so that the window lives on; one that has not answered is
/// left alone for some seconds and counts as one without queues.
class SystemPrinters final : public Printers {
public:
    QStringList Names() override;
    bool Any() override { return true; }
    QString Default() override;
    std::optional<PrinterDescription> Describe(const QString& name) override;
    QList<PrinterOption> Options(const QString& name) override;
    void Choose(const QString& printer, const QString& option, const QString& value) override;
    /// Painting and handing over are a `LongWork`, and Esc calls them off.
    PrintResult Print(const PlotPrinter& printer, const QString& title, const Paint& paint) override;

private:
    template<class Answer>
    std::optional<Answer> ask(const std::function<std::optional<Answer>()>& question);
    std::optional<CupsQueues::Listing> list();
    std::optional<CupsQueues::Queue> askQueue(const QString& name);
    /// Takes a page that is ready; gives the reason when that fails.
    using Taking = std::function<std::optional<QString>(const QByteArray&)>;
    /// Paints the page and, unless Esc has been pressed, hands it over. `name` goes before the reason for a failure.
    PrintResult printPage(const PlotPrinter& printer, const QString& title, const Paint& paint, const QString& name,
                          const Taking& take) const;
    void show(const QString& text) const;
    PrintResult printToFile(const PlotPrinter& printer, const QString& title, const Paint& paint);

    QMap<QString, QMap<QString, QString>> chosen; ///< values by printer and option
    QElapsedTimer silent;                         ///< since the service was given up
    QString pdfFolder;                            ///< where the last file went
};
