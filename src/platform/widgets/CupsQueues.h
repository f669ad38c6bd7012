// The queues of the system's print service: which there are, what they tell about themselves, and the handing over of a
// page. Plain questions and answers; shows nothing, and remembers nothing.
#pragma once

#include "platform/device/Printers.h"

#include <QMap>

/// Each call talks to the service by itself and may be made on any thread. A service that does not answer is given up
/// after a second, in handing over after ten.
namespace CupsQueues {
struct Listing {
    QStringList Names; ///< in the service's order
    QString Default;   ///< empty when the service has none
};

/// Nothing when there is no service or it doesn't answer.
std::optional<Listing> List();

struct Queue {
    PrinterDescription Description;
    QList<PrinterOption> Options; ///< as the queue sets them by itself
};

/// Nothing when there is no such queue, or no answer.
std::optional<Queue> Ask(const QString& name);

struct Job {
    QString Queue;
    QString Title;
    PrinterPaper Paper;
    QMap<QString, QString> Chosen; ///< values by the names of `PrinterOption`
};

/// Nothing when the queue has taken the page, a PDF, else why not, in the service's words.
std::optional<QString> Submit(const Job& job, const QByteArray& page);
} // namespace CupsQueues
