#include "platform/widgets/LongWork.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QThread>
#include <QTimer>
#include <exception>
#include <utility>

bool LongWork::running = false;

namespace {
constexpr int patienceMs = 500;
}

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
    bool begun = false;
    std::exception_ptr failure;
    const auto task = [&] {
        begun = true;
        try {
            work(progress);
        } catch (...) {
            failure = std::current_exception();
        }
    };
    const std::unique_ptr<QThread> thread(QThread::create(task));
    // A window that gets another size paints while other work goes on.
    const auto over = qScopeGuard([outer = std::exchange(running, true)] { running = outer; });
    thread->start();
    if (givesWay || !thread->wait(patienceMs))
        waitAlive(*thread);
    // A system without a thread to spare makes the window wait, and the work is done all the same.
    if (!begun)
        task();
    if (failure)
        std::rethrow_exception(failure);
    return !stopped;
}

/// Until the work ends the windows are alive.
void LongWork::waitAlive(QThread& thread) {
    constexpr int intervalMs = 100;
    QEventLoop loop;
    connect(&thread, &QThread::finished, &loop, &QEventLoop::quit);
    QTimer timer;
    int untilShown = givesWay ? patienceMs : 0;
    connect(&timer, &QTimer::timeout, this, [&] {
        if ((untilShown -= intervalMs) < 0)
            show(percent < 0 ? caption : caption + u" %1 %"_s.arg(int(percent)));
    });
    QCoreApplication::instance()->installEventFilter(this);
    timer.start(intervalMs);
    // It may have ended before its end was listened for.
    if (!thread.isFinished())
        loop.exec();
    thread.wait();
    QCoreApplication::instance()->removeEventFilter(this);
    if (!givesWay || untilShown < 0)
        show({});
    for (KeptEvent& input : kept)
        if (input.Receiver)
            QCoreApplication::postEvent(input.Receiver, input.Event.release());
}
