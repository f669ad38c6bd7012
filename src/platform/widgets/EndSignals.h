// Tells when the system asks the program to end: a session that closes, Ctrl+C in the terminal that it was started
// from. What is to be done then is for whoever listens.
#pragma once

#include <QObject>

/// One at a time. While it lives the program doesn't end by itself on SIGTERM, SIGINT and SIGHUP.
class EndSignals : public QObject {
    Q_OBJECT

public:
    EndSignals();
    ~EndSignals() override;

signals:
    /// On the thread of this object, from its event loop.
    void Asked();
};
