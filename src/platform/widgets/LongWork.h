// Work that may take long, done on another thread while the window stays alive. Knows nothing of the work.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <vector>

class QEventLoop;

/// For half a second nothing else happens, so that input waits for work that is short. From then on it tells its
/// progress, and the program's windows paint and move but take no input, except that Esc (or closing the window) asks
/// the work to stop.
/// Work that gives way is stopped by any input, from its beginning on; the input is taken when the work is over.
class LongWork : public QObject {
    Q_OBJECT

public:
    /// How the work tells its progress and learns whether it is to go on.
    using Progress = std::function<bool(qint64 done, qint64 total)>;

    /// `show` is called on this thread with `caption` and the percentage, if the work tells a total; at last without.
    LongWork(const QString& caption, std::function<void(const QString&)> show);

    /// Runs `work` to its end, on another thread, from which it must not touch any window. False when it was asked to
    /// stop. What the work throws comes out here.
    bool Run(const std::function<void(const Progress&)>& work);

    /// To be set before `Run`.
    void SetGivesWay(bool value) { givesWay = value; }
    /// Whether it was stopped by input that now comes.
    bool GaveWay() const { return !kept.empty(); }

    /// True while any work runs.
    static bool IsRunning() { return running; }

signals:
    /// On the other thread.
    void Ended();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct KeptEvent {
        QPointer<QObject> Receiver;
        std::unique_ptr<QEvent> Event;
    };

    bool keepInput(QObject* watched, const QEvent& event);
    void waitAlive(QEventLoop& untilEnded);

    static bool running;
    bool givesWay = false;
    std::vector<KeptEvent> kept;
    QString caption;
    std::function<void(const QString&)> show;
    std::atomic<bool> stopped = false;
    std::atomic<int> percent = -1; ///< below 0: not told
};
