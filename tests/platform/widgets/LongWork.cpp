#include "platform/widgets/LongWork.h"

#include <QApplication>
#include <QKeyEvent>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

class Listener : public QWidget {
public:
    QList<int> Keys;

protected:
    void keyPressEvent(QKeyEvent* event) override { Keys.append(event->key()); }
};

TEST(LongWork, GivesWayToInputThatComesAfterIt) {
    for (const bool givesWay : {true, false})
        for (const int key : {int(Qt::Key_A), int(Qt::Key_Escape)}) {
            Listener listener;
            LongWork work({}, [](const QString&) {});
            work.SetGivesWay(givesWay);
            QTimer::singleShot(0, &listener, [&] {
                for (const int stroke : {int(Qt::Key_B), key}) {
                    QKeyEvent event(QEvent::KeyPress, stroke, {});
                    QApplication::sendEvent(&listener, &event);
                }
            });
            const bool stops = givesWay || key == Qt::Key_Escape;
            const bool whole = work.Run([](const LongWork::Progress& progress) {
                for (int i = 0; i < 800 && progress(0, 0); i += 10)
                    QThread::msleep(10);
            });
            EXPECT_EQ(whole, !stops);
            EXPECT_EQ(work.GaveWay(), givesWay);
            EXPECT_TRUE(listener.Keys.isEmpty());
            QApplication::processEvents();
            QList<int> expected;
            if (givesWay)
                expected = key == Qt::Key_A ? QList<int>{Qt::Key_B, key} : QList<int>{Qt::Key_B};
            EXPECT_EQ(listener.Keys, expected);
        }
}

} // namespace
