#include "WindowTest.h"
#include "platform/base/NativePath.h"
#include "platform/base/WholeFile.h"

#include "view/pickedValues.h"

#include <QAction>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QToolTip>

using mdApplication::Settings;

namespace {

using Ids = std::vector<int>;

/// Two unit squares side by side, not displaced and without colours and legends.
struct FrmMainPickingTest : WindowTest {
    void SetUp() override {
        Settings.Window.ScaleMode = 1;
        window.resize(900, 700);
        openFirst(path);
        // Opening has set what is drawn to its defaults.
        Settings.Displacement = {.Legend = false, .Fiducial = 0};
        Settings.Contour.Legend = Settings.Vector.Legend = false;
        window.repaint();
    }
    QPoint at(double x, double y) {
        const DevicePoint place = mdApplication::Current.View.CoordConverter->WorldToDevice(float(x), float(y));
        return {place.X, place.Y};
    }
    Ids selected() const {
        Ids ids;
        for (int i = 0; i < window.Selection.Count(); ++i)
            ids.push_back(window.Selection.Item(i));
        return ids;
    }
    Ids drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) {
        QTest::mousePress(picture, Qt::LeftButton, keys, from);
        move(to);
        QTest::mouseRelease(picture, Qt::LeftButton, keys, to);
        return selected();
    }
    Ids click(QPoint place, Qt::KeyboardModifiers keys = {}) { return drag(place, place, keys); }
    void move(QPoint to) {
        QMouseEvent event(QEvent::MouseMove, to, picture->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(picture, &event);
    }
    bool isMarked(QPoint place) { return picture->ShownImage().pixel(place) != picture->Image().pixel(place); }
    bool isBare() { return picture->ShownImage() == picture->Image(); }

    const QString path = folder.Write(twoSquares().Bytes());
};

TEST_F(FrmMainPickingTest, ClickAndDragPickWithShiftAndCtrl) {
    constexpr auto shift = Qt::ShiftModifier, ctrl = Qt::ControlModifier;
    EXPECT_EQ(click(at(1, 0)), Ids{1});
    EXPECT_EQ(click(at(2, 1), shift), (Ids{1, 5}));
    EXPECT_EQ(click(at(1, 0), ctrl), Ids{5});
    EXPECT_EQ(click(at(2, 1), ctrl | shift), Ids{5}) << "Shift wins";
    EXPECT_EQ(drag(at(-0.2, -0.2), at(1.2, 0.2)), (Ids{0, 1}));
    EXPECT_EQ(drag(at(2.05, 1.1), at(0.8, -0.1), ctrl), (Ids{0, 2, 4, 5}));
    EXPECT_EQ(drag(at(-0.1, 0.9), at(0.1, 1.1), shift), (Ids{0, 2, 3, 4, 5}));
    // A click where it ends while it is shorter than the tolerance, which is 2 on so narrow a screen; else a rectangle
    // with 2 around it. A click reaches 4.
    for (const auto& [from, to, picked] : {std::tuple(QPoint(5, 0), QPoint(4, 1), Ids{}),
                                           {{5, 0}, {4, 0}, {1}},
                                           {{5, 0}, {3, 0}, {}},
                                           {{4, 0}, {3, 2}, {}},
                                           {{4, 0}, {2, 0}, {1}}})
        EXPECT_EQ(drag(at(1, 0) + from, at(1, 0) + to), picked);
    mdApplication::Model.CurrentItem = 1;
    EXPECT_EQ(click(at(1.5, 0.5)), Ids{1});
}

TEST_F(FrmMainPickingTest, MarksAndBandStandOverThePictureOnly) {
    click(at(1, 0));
    EXPECT_TRUE(isMarked(at(1, 0)) && !isMarked(at(2, 0)));
    QTest::mousePress(picture, Qt::LeftButton, {}, at(0.2, 0.8));
    move(at(0.6, 0.4));
    EXPECT_TRUE(isMarked(at(0.5, 0.5)));
    const QImage wide = picture->ShownImage().copy();
    for (const QPoint& to : {at(0.3, 0.7), at(-0.1, 1.2), at(9, 9), at(0.6, 0.4)})
        move(to);
    EXPECT_TRUE(picture->ShownImage() == wide) << "the band follows the mouse";
    window.repaint();
    EXPECT_TRUE(picture->ShownImage() == wide);
    QTest::mouseRelease(picture, Qt::LeftButton, {}, at(0.6, 0.4));
    EXPECT_TRUE(isBare());
    mdApplication::Model.CurrentItem = 1;
    click(at(1.5, 0.5));
    QTest::keyClick(picture, Qt::Key_Down);
    ASSERT_EQ(mdApplication::Model.CurrentStep, 1);
    EXPECT_EQ(selected(), Ids{1}) << "kept where the element does not exist";
    EXPECT_TRUE(isBare());
    QTest::keyClick(picture, Qt::Key_Up);
    EXPECT_TRUE(isMarked(at(1.5, 0.5)));
}

TEST_F(FrmMainPickingTest, TipAndStatusBarTellTheValues) {
    const auto* picked = find<QLabel>(u"stbStatus_5"_s);
    EXPECT_FALSE(picked->isVisible());
    drag(at(-0.2, -0.2), at(2.2, 1.2));
    EXPECT_EQ(picked->text(), mdPicking::SummaryText(mdApplication::Model, {}, window.Selection));
    EXPECT_TRUE(picked->isVisible() && picked->text().startsWith(u"節点 6 個: 最小 "_s));
    const auto rest = [this](QPoint place) {
        emit picture->MouseMoved(place);
        return QTest::qWaitFor([] { return QToolTip::isVisible(); }, 1000);
    };
    EXPECT_TRUE(rest(at(1, 0) + QPoint(2, 1)));
    EXPECT_TRUE(QToolTip::text().contains(u"節点 2<br"_s) || QToolTip::text().contains(u"節点 2\n"_s));
    QTest::keyClick(picture, Qt::Key_Down);
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); })) << "another picture";
    EXPECT_FALSE(rest(at(0.5, 0.5))) << "nothing there";
    find<QAction>(u"miViewPointTip"_s)->trigger();
    EXPECT_FALSE(rest(at(1, 0))) << "switched off";
    click(at(0.5, 0.5));
    EXPECT_FALSE(picked->isVisible());
}

TEST_F(FrmMainPickingTest, ALostReleaseEndsTheDragWithoutAPick) {
    click(at(1, 0));
    const QImage marked = picture->ShownImage().copy();
    QTest::mousePress(picture, Qt::LeftButton, {}, at(0.2, 0.8));
    move(at(0.6, 0.4));
    EXPECT_FALSE(picture->ShownImage() == marked);
    QTest::keyClick(picture, Qt::Key_Escape);
    QTest::mouseRelease(picture, Qt::LeftButton, {}, at(1.2, -0.2));
    EXPECT_EQ(selected(), Ids{1});
    EXPECT_TRUE(picture->ShownImage() == marked);
}

TEST_F(FrmMainPickingTest, ThePopupComesByMouseAndKeys) {
    auto* popup = find<QMenu>(u"pbPopup"_s);
    for (const Qt::Key key : {Qt::Key(), Qt::Key_Menu, Qt::Key_F10}) {
        if (key)
            QTest::keyClick(picture, key, key == Qt::Key_F10 ? Qt::ShiftModifier : Qt::NoModifier);
        else
            QTest::mouseClick(picture, Qt::RightButton);
        EXPECT_TRUE(popup->isVisible()) << key;
        popup->hide();
    }
}

TEST_F(FrmMainPickingTest, AFileOpenedAnewBeginsWithoutSelection) {
    click(at(1, 0));
    window.FirstStep(path);
    EXPECT_TRUE(selected().empty() && isBare());
    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    window.FirstStep(folder.Write("no result", u"other.vrf"_s));
    EXPECT_EQ(drag(at(-0.1, -0.1), at(2.1, 1.1)), Ids{}) << "nothing is open";
}

TEST_F(FrmMainPickingTest, TheFirstDroppedFileIsOpenedAfterTheDrop) {
    const auto drop = [this](const QStringList& urls) {
        QMimeData data;
        data.setUrls(QUrl::fromStringList(urls));
        QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(picture, &enter);
        QDropEvent event({5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(picture, &event);
        EXPECT_EQ(enter.isAccepted(), event.isAccepted());
        return event.isAccepted() && event.dropAction() == Qt::CopyAction;
    };
    const QString elsewhere = u"https://example.org/a.vrf"_s, other = folder.Path(NativePath::Text("\xff.vrf"));
    EXPECT_EQ(WholeFile::Write(other, twoSquares().Bytes()), std::nullopt);
    EXPECT_FALSE(drop({elsewhere}));
    EXPECT_TRUE(drop({elsewhere, u"file://"_s + folder.Path(u"%FF.vrf"_s), u"file://"_s + path}));
    EXPECT_EQ(mdApplication::Model.FileName, path);
    QApplication::processEvents();
    EXPECT_EQ(mdApplication::Model.FileName, other);
    std::filesystem::remove(NativePath::Of(other));
}

} // namespace
