#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "platform/Dialogs.h"
#include "platform/PictureBox.h"
#include "result/ResultModel.h"
#include "result/VrfBuilder.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <gtest/gtest.h>

using mdApplication::Settings;

namespace {

using Ids = std::vector<int>;

/// The window with two unit squares side by side, not displaced and without colours and legends.
class FrmMainPickingTest : public testing::Test {
protected:
    FrmMainPickingTest() {
        Settings = {};
        Settings.Window.ScaleMode = 1;
        Dialogs::Testing::Start();
        VrfBuilder file = twoSquares();
        file.items.push_back({u"一"_qs, 1, 0});
        for (VrfBuilder::Step& step : file.steps)
            step.values.push_back({7});
        window.resize(900, 700);
        path = folder.Write(file.Bytes());
        window.FirstStep(path);
        picture = window.findChild<PictureBox*>(u"picScreen"_qs);
    }
    ~FrmMainPickingTest() override {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount(), 0);
        Dialogs::Testing::Stop();
    }
    void SetUp() override {
        ASSERT_TRUE(window.IsOpen());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        // Opening has set what is drawn to its defaults.
        Settings.Displacement = {.Legend = false, .Fiducial = 0};
        Settings.Contour.Legend = Settings.Vector.Legend = false;
        window.repaint();
    }
    /// Where a world position is to be seen: the world's whole width is fitted into the picture, or its whole height.
    QPoint at(double x, double y) {
        const PlotRect& world = window.DocPlotter().Window();
        const double across = picture->width() / double(world.Width());
        const double down = picture->height() / -double(world.Height());
        const double scale = std::min(across, down);
        return {qRound(picture->width() * 0.5 + (x - double(world.CentreX())) * scale),
                qRound(picture->height() * 0.5 - (y - double(world.CentreY())) * scale)};
    }
    Ids selected() const {
        Ids ids;
        for (int i = 0; i < window.Selection.Count(); ++i)
            ids.push_back(window.Selection.Item(i));
        return ids;
    }
    Ids click(QPoint place, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(picture, Qt::LeftButton, keys, place);
        return selected();
    }
    Ids drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) {
        QTest::mousePress(picture, Qt::LeftButton, keys, from);
        hold(to);
        QTest::mouseRelease(picture, Qt::LeftButton, keys, to);
        return selected();
    }
    void hold(QPoint to) { move(to, Qt::LeftButton); }
    void move(QPoint to, Qt::MouseButtons held) {
        QMouseEvent event(QEvent::MouseMove, to, picture->mapToGlobal(to), Qt::NoButton, held, {});
        QApplication::sendEvent(picture, &event);
    }
    bool isMarked(QPoint place) { return picture->ShownImage().pixel(place) != picture->Image().pixel(place); }
    /// Nothing is shown over the picture.
    bool isBare() { return picture->ShownImage() == picture->Image(); }

    TestFolder folder;
    QString path;
    frmMain window;
    PictureBox* picture = nullptr;
};

TEST_F(FrmMainPickingTest, ClickAndDragPickWithShiftAndCtrl) {
    EXPECT_EQ(click(at(1, 0)), Ids{1});
    EXPECT_EQ(click(at(2, 1), Qt::ShiftModifier), (Ids{1, 5}));
    EXPECT_EQ(click(at(1, 0), Qt::ControlModifier), Ids{5});
    EXPECT_EQ(click(at(1, 0), Qt::ControlModifier | Qt::ShiftModifier), (Ids{1, 5}));
    EXPECT_EQ(click(at(1, 0), Qt::ControlModifier | Qt::ShiftModifier), (Ids{1, 5})) << "Shift wins";
    EXPECT_EQ(click(at(0.5, 0.5), Qt::ControlModifier), (Ids{1, 5}));
    EXPECT_EQ(drag(at(-0.2, -0.2), at(1.2, 0.2)), (Ids{0, 1}));
    EXPECT_EQ(drag(at(2.05, 1.1), at(0.8, -0.1), Qt::ControlModifier), (Ids{0, 2, 4, 5}));
    EXPECT_EQ(drag(at(-0.1, 0.9), at(0.1, 1.1), Qt::ShiftModifier), (Ids{0, 2, 3, 4, 5}));
    EXPECT_EQ(click(at(0.5, 0.5)), Ids{});
    mdApplication::Model.CurrentItem = 1;
    EXPECT_EQ(click(at(1.5, 0.5)), Ids{1});
    EXPECT_EQ(click(at(0.5, 0.5)), Ids{}) << "of another type";
    mdApplication::Model.CurrentItem = 2;
    EXPECT_EQ(drag(at(-0.1, -0.1), at(2.1, 1.1)), Ids{0});
}

TEST_F(FrmMainPickingTest, ShortDragsAreClicksWhereTheyEnd) {
    // The offscreen screen and the window are narrower than 1250 pixels: a tolerance of 2.
    const QPoint node = at(1, 0);
    EXPECT_EQ(drag(node + QPoint(5, 0), node + QPoint(4, 1)), Ids{}) << "4.1 away";
    EXPECT_EQ(drag(node + QPoint(5, 0), node + QPoint(4, 0)), Ids{1}) << "as far as a click reaches";
    EXPECT_EQ(drag(node + QPoint(5, 0), node + QPoint(3, 0)), Ids{}) << "a rectangle, with 2 around it";
    EXPECT_EQ(drag(node + QPoint(4, 0), node + QPoint(2, 0)), Ids{1});
}

TEST_F(FrmMainPickingTest, MarksAndBandStandOverThePictureOnly) {
    const QImage before = picture->Image().copy();
    EXPECT_TRUE(isBare());
    click(at(1, 0));
    EXPECT_TRUE(isMarked(at(1, 0)));
    EXPECT_FALSE(isMarked(at(2, 0)));
    QTest::mousePress(picture, Qt::LeftButton, {}, at(0.2, 0.8));
    hold(at(0.6, 0.4));
    EXPECT_TRUE(isMarked(at(0.5, 0.5)));
    const QImage wide = picture->ShownImage().copy();
    hold(at(0.3, 0.7));
    EXPECT_FALSE(isMarked(at(0.5, 0.5)));
    EXPECT_TRUE(isMarked(at(0.25, 0.75)));
    hold(at(-0.1, 1.2));
    hold(at(9, 9));
    hold(at(0.6, 0.4));
    EXPECT_TRUE(picture->ShownImage() == wide);
    window.repaint();
    EXPECT_TRUE(picture->ShownImage() == wide) << "drawn anew it is the same";
    QTest::mouseRelease(picture, Qt::LeftButton, {}, at(0.6, 0.4));
    EXPECT_TRUE(isBare());
    EXPECT_TRUE(picture->Image() == before);
    mdApplication::Model.CurrentItem = 1;
    click(at(1.5, 0.5));
    EXPECT_TRUE(isMarked(at(1.5, 0.5)));
    QTest::keyClick(picture, Qt::Key_Down);
    ASSERT_EQ(mdApplication::Model.CurrentStep, 1);
    EXPECT_EQ(selected(), Ids{1}) << "kept where the element does not exist";
    EXPECT_TRUE(isBare());
    QTest::keyClick(picture, Qt::Key_Up);
    EXPECT_TRUE(isMarked(at(1.5, 0.5)));
}

TEST_F(FrmMainPickingTest, ALostReleaseEndsTheDragWithoutAPick) {
    click(at(1, 0));
    const QImage marked = picture->ShownImage().copy();
    const std::function<void()> losses[] = {
        [this] { move(at(0.7, 0.3), Qt::NoButton); },
        [this] {
            QEvent event(QEvent::WindowDeactivate);
            QApplication::sendEvent(&window, &event);
        },
    };
    for (const auto& lose : losses) {
        QTest::mousePress(picture, Qt::LeftButton, {}, at(0.2, 0.8));
        hold(at(0.6, 0.4));
        EXPECT_FALSE(picture->ShownImage() == marked);
        lose();
        EXPECT_TRUE(picture->ShownImage() == marked);
        hold(at(1.2, -0.2));
        QTest::mouseRelease(picture, Qt::LeftButton, {}, at(1.2, -0.2));
        EXPECT_EQ(selected(), Ids{1});
        EXPECT_TRUE(picture->ShownImage() == marked);
    }
}

TEST_F(FrmMainPickingTest, AFileOpenedAnewBeginsWithoutSelection) {
    click(at(1, 0));
    window.FirstStep(path);
    EXPECT_EQ(selected(), Ids{});
    EXPECT_TRUE(isBare());
    click(at(1, 0));
    Dialogs::Testing::QueueAnswer(Dialogs::Answer::Ok);
    window.FirstStep(folder.Write("no result", u"other.vrf"_qs));
    EXPECT_EQ(selected(), Ids{});
    EXPECT_TRUE(isBare());
    EXPECT_EQ(click(at(1, 0)), Ids{}) << "nothing is open";
    EXPECT_EQ(drag(at(-0.1, -0.1), at(2.1, 1.1)), Ids{});
    EXPECT_TRUE(isBare());
}

TEST_F(FrmMainPickingTest, TheFirstDroppedFileIsOpenedAfterTheDrop) {
    const QString other = folder.Write(twoSquares().Bytes(), u"二つ.vrf"_qs);
    const auto drop = [this](const QString& first) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(first), QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(picture, &enter);
        QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(picture, &event);
    };
    drop(other);
    EXPECT_EQ(mdApplication::Model.FileName, path);
    QApplication::processEvents();
    EXPECT_EQ(mdApplication::Model.FileName, other);
    Dialogs::Testing::QueueAnswer(Dialogs::Answer::Ok);
    drop(folder.Path(u"."_qs));
    QApplication::processEvents();
    EXPECT_EQ(Dialogs::Testing::Asked().last().Text, u"無効なパラメータです。"_qs);
    EXPECT_EQ(mdApplication::Model.FileName, other);
}

} // namespace
