#include "platform/widgets/LongWork.h"

#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

TEST(LongWork, EscStopsItAndTheWindowStaysAlive) {
    QWidget window;
    window.show();
    int turns = 0;
    QTimer::singleShot(20, [&] {
        EXPECT_TRUE(LongWork::IsRunning());
        ++turns;
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    LongWork work(u"work"_s, [](const QString&) {});
    EXPECT_FALSE(work.Run([](const LongWork::Progress& progress) {
        while (progress(1, 2))
            QThread::msleep(1);
    }));
    EXPECT_EQ(turns, 1);
    EXPECT_FALSE(LongWork::IsRunning());
}
