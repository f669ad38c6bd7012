#include "platform/widgets/LongWork.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QThread>
#include <QTimer>
#include <memory>

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
    constexpr int intervalMs = 100;
    const Progress progress = [this](qint64 done, qint64 total) {
        percent = total > 0 ? int(100 * done / total) : 0;
        return !stopped;
    };
    QEventLoop loop;
    const std::unique_ptr<QThread> thread(QThread::create([&] { work(progress); }));
    connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QElapsedTimer elapsed;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (elapsed.elapsed() >= patienceMs)
            show(caption + u" "_s + QString::number(percent) + u" %"_s);
    });
    running = true;
    QCoreApplication::instance()->installEventFilter(this);
    elapsed.start();
    timer.start(intervalMs);
    thread->start();
    loop.exec();
    thread->wait();
    QCoreApplication::instance()->removeEventFilter(this);
    running = false;
    show({});
    return !stopped;
}
