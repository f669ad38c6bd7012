#include "WindowTest.h"

#include <QAction>
#include <QSignalSpy>
#include <QWheelEvent>

using mdApplication::Current;
using mdApplication::Settings;

namespace {

/// A picture that takes longer to paint than to show: figures of a hundred corners all over it.
struct FrmMainMovingTest : WindowTest {
    void SetUp() override {
        VrfBuilder file = twoSquares();
        file.elements.assign(40, {});
        for (std::size_t e = 0; e < file.elements.size(); ++e)
            for (std::size_t k = 0; k < 100; ++k)
                file.elements[e].push_back(qint32((e * k + k * k) % 6 + 1));
        file.steps = {{0, {}, std::vector<qint32>(file.elements.size(), 1), {{1, 2, 3, 4, 5, 6}, {}}}};
        openFirst(folder.Write(file.Bytes()));
        Settings.Displacement.Fiducial = 0;
        window.repaint();
    }
    /// Where the lower left corner of the mesh is.
    QPoint corner() {
        const DevicePoint place = Current.View.CoordConverter->WorldToDevice(0, 0);
        return {place.X, place.Y};
    }
    void turnWheel(QPoint at, int eighths, Qt::KeyboardModifiers keys = {}) {
        QWheelEvent event(at, picture->mapToGlobal(at), {}, {0, eighths}, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(picture, &event);
    }
    void move(QPoint to, Qt::MouseButton held) {
        QMouseEvent event(QEvent::MouseMove, to, picture->mapToGlobal(to), Qt::NoButton, held, {});
        QApplication::sendEvent(picture, &event);
    }
    void drag(Qt::MouseButton button, QPoint from, QPoint way) {
        QTest::mousePress(picture, button, {}, from);
        move(from + way / 3, button);
        move(from + way, button);
        QTest::mouseRelease(picture, button, {}, from + way);
    }
    void expectExactPicture() {
        const auto isPainted = [this] { return Current.View.NodePoints.size() == 6 && shown() == picture->Image(); };
        EXPECT_TRUE(QTest::qWaitFor(isPainted, 20000));
        const QImage followed = picture->Image().copy();
        window.repaint();
        EXPECT_EQ(followed, picture->Image());
    }
    QImage shown() { return picture->grab().toImage().convertToFormat(QImage::Format_RGB32); }
    bool can(const QString& command) { return find<QAction>(command)->isEnabled(); }
};

TEST_F(FrmMainMovingTest, ThePictureFollowsTheMouseAndTheExactOneComesAtRest) {
    const QPoint from(picture->width() / 2, picture->height() / 2), way(60, -45);
    const QPoint start = corner();
    for (const bool withSpace : {false, true}) {
        const QImage before = shown();
        const QPoint cornerBefore = corner();
        if (withSpace)
            QTest::keyPress(picture, Qt::Key_Space);
        drag(withSpace ? Qt::LeftButton : Qt::MiddleButton, from, way);
        QTest::keyRelease(picture, Qt::Key_Space);
        EXPECT_LE((corner() - cornerBefore - way).manhattanLength(), 2);
        const QRect stays = before.rect().translated(way) & before.rect();
        EXPECT_EQ(shown().copy(stays), before.copy(stays.translated(-way)));
        EXPECT_EQ(window.Selection.Count(), 0);
        expectExactPicture();
    }
    EXPECT_TRUE(can(u"miViewBack"_s) && !can(u"miViewForward"_s));
    for (const int views : {2, 1, 0}) {
        EXPECT_LE((corner() - start - way * views).manhattanLength(), 2 * views);
        QTest::keyClick(picture, Qt::Key_Left, Qt::AltModifier);
    }
    EXPECT_FALSE(can(u"miViewBack"_s));
    QTest::keyClick(picture, Qt::Key_Right, Qt::AltModifier);
    EXPECT_LE((corner() - start - way).manhattanLength(), 2);
    drag(Qt::MiddleButton, from, way);
    QTest::mouseClick(picture, Qt::LeftButton, {}, corner());
    EXPECT_EQ(window.Selection.Count(), 1) << "picked in the picture as it is painted";
}

TEST_F(FrmMainMovingTest, TheWheelZoomsAtThePointerAlsoWhileThePictureIsPainted) {
    const QPoint at = corner() + QPoint(30, -30);
    turnWheel(at, 240);
    const QPoint near = corner();
    EXPECT_EQ(window.Zoom(), 2);
    // The paint has begun when the wheel turns on.
    QTest::qWait(70);
    turnWheel(at, 120, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.Zoom() == 3; }));
    expectExactPicture();
    EXPECT_GT((corner() - at).manhattanLength(), (near - at).manhattanLength());
    EXPECT_LE((near - at - (corner() - at) * 150 / 200).manhattanLength(), 2) << "from 150 % to 200 %";
    QTest::keyClick(picture, Qt::Key_Minus);
    QTest::keyClick(picture, Qt::Key_Plus);
    QTest::keyClick(picture, Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(window.Zoom(), 4);
}

TEST_F(FrmMainMovingTest, TheWindowFillsTheScreenAndComesBackAsItWas) {
    const QSize before = window.size();
    QTest::keyClick(picture, Qt::Key_F11);
    EXPECT_TRUE(window.isFullScreen() && find<QAction>(u"miViewFullScreen"_s)->isChecked());
    window.close();
    EXPECT_EQ(Settings.Window.WindowState, 0);
    EXPECT_EQ(Settings.Window.WindowPos[2], before.width() * 15);
}

} // namespace
