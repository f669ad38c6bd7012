#include "platform/widgets/LongWork.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QSemaphore>
#include <QThreadPool>
#include <QTimer>
#include <exception>
#include <utility>

bool LongWork::running = false;

namespace {
constexpr int patienceMs = 500;

/// Its threads are kept for the next work: what the toolkit has found out about fonts it keeps for each thread, and
/// would find it anew for every picture. They end before the application does.
QThreadPool& workers() {
    static QThreadPool* pool = nullptr;
    constexpr int mostThreads = 16;
    if (!pool) {
        pool = new QThreadPool;
        pool->setMaxThreadCount(mostThreads);
        pool->setExpiryTimeout(-1);
        qAddPostRoutine([] { delete std::exchange(pool, nullptr); });
    }
    return *pool;
}
} // namespace

LongWork::LongWork(const QString& text, std::function<void(const QString&)> showText)
    : caption(text), show(std::move(showText)) {}

/// Whether it is input that the work gives way to.
bool LongWork::keepInput(QObject* watched, const QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
        if (static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape)
            return false;
        break;
    case QEvent::MouseMove:
        if (static_cast<const QMouseEvent&>(event).buttons() == Qt::NoButton)
            return false;
        break;
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::NativeGesture:
    case QEvent::ContextMenu:
    case QEvent::Close:
        break;
    default:
        return false;
    }
    stopped = true;
    kept.push_back({watched, std::unique_ptr<QEvent>(event.clone())});
    return true;
}

bool LongWork::eventFilter(QObject* watched, QEvent* event) {
    // Whether a key is a shortcut shows by what comes next.
    if (givesWay && (event->type() == QEvent::ShortcutOverride || keepInput(watched, *event)))
        return event->type() != QEvent::ShortcutOverride;
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            stopped = true;
        return true;
    case QEvent::Close:
        stopped = true;
        event->ignore();
        return true;
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool LongWork::Run(const std::function<void(const Progress&)>& work) {
    const Progress progress = [this](qint64 done, qint64 total) {
        if (total > 0)
            percent = int(100 * done / total);
        return !stopped;
    };
    std::exception_ptr failure;
    const auto ended = std::make_shared<QSemaphore>();
    const auto task = [&, ended] {
        try {
            work(progress);
        } catch (...) {
            failure = std::current_exception();
        }
        emit Ended();
        ended->release();
    };
    QEventLoop untilEnded;
    connect(this, &LongWork::Ended, &untilEnded, &QEventLoop::quit, Qt::QueuedConnection);
    // A window that gets another size paints while other work goes on.
    const auto over = qScopeGuard([outer = std::exchange(running, true)] { running = outer; });
    // A system without a thread to spare makes the window wait, and the work is done all the same.
    if (!workers().tryStart(task))
        task();
    if (givesWay || !ended->tryAcquire(1, patienceMs)) {
        waitAlive(untilEnded);
        ended->acquire();
    }
    if (failure)
        std::rethrow_exception(failure);
    return !stopped;
}

/// Until the work ends the windows are alive.
void LongWork::waitAlive(QEventLoop& untilEnded) {
    constexpr int intervalMs = 100;
    QTimer timer;
    int untilShown = givesWay ? patienceMs : 0;
    connect(&timer, &QTimer::timeout, this, [&] {
        if ((untilShown -= intervalMs) < 0)
            show(percent < 0 ? caption : caption + u" %1 %"_s.arg(int(percent)));
    });
    QCoreApplication::instance()->installEventFilter(this);
    timer.start(intervalMs);
    untilEnded.exec();
    QCoreApplication::instance()->removeEventFilter(this);
    if (!givesWay || untilShown < 0)
        show({});
    for (KeptEvent& input : kept)
        if (input.Receiver)
            QCoreApplication::postEvent(input.Receiver, input.Event.release());
}
