#include "platform/widgets/LongWork.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QThread>
#include <QTimer>
#include <exception>
#include <memory>
#include <utility>

bool LongWork::running = false;

LongWork::LongWork(const QString& text, std::function<void(const QString&)> showText)
    : caption(text), show(std::move(showText)) {}

bool LongWork::eventFilter(QObject* watched, QEvent* event) {
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
    constexpr int patienceMs = 500;
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
    if (!thread->wait(patienceMs))
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
    connect(&timer, &QTimer::timeout, this,
            [this] { show(percent < 0 ? caption : caption + u" %1 %"_s.arg(int(percent))); });
    QCoreApplication::instance()->installEventFilter(this);
    timer.start(intervalMs);
    // It may have ended before its end was listened for.
    if (!thread.isFinished())
        loop.exec();
    thread.wait();
    QCoreApplication::instance()->removeEventFilter(this);
    show({});
}
