#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "app/settingsStore.h"
#include "mainwin/LongWork.h"
#include "platform/Dialogs.h"
#include "platform/PictureBox.h"
#include "result/VrfBuilder.h"
#include "result/mdVelorinResultModel.h"

#include <QAction>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <gtest/gtest.h>

using mdApplication::Settings;

namespace {

class FrmMainTest : public testing::Test {
protected:
    FrmMainTest() {
        // A copy, since the drawing settings are kept beside the file.
        EXPECT_TRUE(QFile::copy(QStringLiteral(VELORIN_SOURCE_DIR "/demo/plate.vrf"), platePath));
        Settings = {};
        Dialogs::Testing::Start();
    }
    ~FrmMainTest() override {
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount(), 0);
        Dialogs::Testing::Stop();
    }

    void openPlate() {
        window.FirstStep(platePath);
        ASSERT_TRUE(window.IsOpen());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    /// Runs `act`, which is to show the one message `text`.
    void expectMessage(const QString& text, const std::function<void()>& act) {
        Dialogs::Testing::QueueAnswer(Dialogs::Answer::Ok);
        act();
        EXPECT_EQ(Dialogs::Testing::UnusedCount(), 0);
        const auto asked = Dialogs::Testing::Asked();
        ASSERT_FALSE(asked.isEmpty());
        EXPECT_EQ(asked.last().Text, text);
        EXPECT_EQ(asked.last().Flags, Dialogs::Style::Stop);
    }
    void expectClosed() {
        EXPECT_FALSE(window.IsOpen());
        EXPECT_EQ(window.windowTitle(), u"Velorin - (未定義)"_qs);
        for (const QString& name : {u"miViewZoomIn"_qs, u"miViewZoomOut"_qs, u"miViewZoomOff"_qs})
            EXPECT_FALSE(action(name)->isEnabled()) << name.toStdString();
        EXPECT_TRUE(isBlank());
    }

    template<typename Widget>
    Widget* find(const QString& name) {
        Widget* found = window.findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QAction* action(const QString& name) { return find<QAction>(name); }
    QString panel(int number) { return find<QLabel>(u"stbStatus_%1"_qs.arg(number))->text(); }
    QScrollBar* bar(int index) { return find<QScrollBar>(u"scrScroll_%1"_qs.arg(index)); }
    PictureBox* picture() { return find<PictureBox>(u"picScreen"_qs); }
    bool isBlank() {
        QImage blank = picture()->Image();
        blank.fill(Qt::white);
        return blank == picture()->Image();
    }
    /// From the leftmost to the rightmost pixel of the mesh's colour.
    int meshWidth() {
        const QImage& image = picture()->Image();
        int left = image.width(), right = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) == qRgb(0, 128, 0)) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
        return right - left;
    }
    void resizeTo(int width, int height) {
        window.resize(width, height);
        QApplication::processEvents();
    }
    static int currentStep() { return mdApplication::Model.CurrentStep; }

    TestFolder folder;
    const QString platePath = folder.Path(u"plate.vrf"_qs);
    frmMain window;
};

TEST_F(FrmMainTest, OpensTheFileOfTheCommandOrTheCommandLine) {
    expectClosed();
    for (const auto& answer : {std::optional<QString>(), std::optional(folder.Write(twoSquares().Bytes()))}) {
        Dialogs::Testing::QueueFile(answer);
        action(u"miFileOpen"_qs)->trigger();
        EXPECT_EQ(window.windowTitle(), answer ? u"Velorin - model"_qs : u"Velorin - (未定義)"_qs);
    }
    openPlate();
    EXPECT_EQ(window.windowTitle(), u"Velorin - plate"_qs);
    EXPECT_EQ(panel(3), u"0.05"_qs);
    EXPECT_EQ(panel(4), u"100 %"_qs);
    EXPECT_FALSE(isBlank());
    EXPECT_EQ(picture()->Image().size(), picture()->size() * picture()->devicePixelRatioF());
}

TEST_F(FrmMainTest, UnusableFilesAreToldAndCloseTheOpenOne) {
    const QString missing = folder.Path(u"none.vrf"_qs);
    for (const QString& path : QStringList{missing, u'"' + platePath + u'"', folder.Path(u"."_qs)})
        expectMessage(u"無効なパラメータです。"_qs, [&] { window.FirstStep(path); });
    openPlate();
    expectMessage(u"無効なパラメータです。"_qs, [&] { window.FirstStep(missing); });
    EXPECT_EQ(window.windowTitle(), u"Velorin - plate"_qs);
    for (const QByteArray& bytes : {QByteArray("no result"), QByteArray(), twoSquares().Bytes().left(190)}) {
        const QString other = folder.Write(bytes, u"other.vrf"_qs);
        window.FirstStep(platePath);
        window.SetZoom(3);
        expectMessage(other + u"\r\nファイルの形式が不正です。"_qs, [&] { window.FirstStep(other); });
        expectClosed();
        EXPECT_EQ(panel(3) + panel(4), QString());
        resizeTo(window.width() + 10, window.height());
        expectClosed();
    }
    window.FirstStep(platePath);
    EXPECT_EQ(panel(4), u"100 %"_qs);
}

TEST_F(FrmMainTest, ArrowKeysWalkThroughTheSteps) {
    QTest::keyClick(&window, Qt::Key_Down);
    openPlate();
    const int last = mdApplication::Model.StepCount - 1;
    struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int step;
    } const strokes[] = {{Qt::Key_Up, Qt::NoModifier, 0},           {Qt::Key_Down, Qt::NoModifier, 1},
                         {Qt::Key_Down, Qt::ControlModifier, last}, {Qt::Key_Down, Qt::NoModifier, last},
                         {Qt::Key_Down, Qt::ControlModifier, last}, {Qt::Key_Up, Qt::NoModifier, last - 1},
                         {Qt::Key_Left, Qt::NoModifier, last - 1},  {Qt::Key_Up, Qt::ControlModifier, 0}};
    for (const auto& stroke : strokes) {
        const int before = currentStep();
        const QImage shown = picture()->Image().copy();
        QTest::keyClick(picture(), stroke.key, stroke.modifiers);
        EXPECT_EQ(currentStep(), stroke.step);
        EXPECT_EQ(panel(3), QString::number((stroke.step + 1) * 0.05));
        EXPECT_EQ(picture()->Image() == shown, before == stroke.step);
    }
}

TEST_F(FrmMainTest, ZoomCommandsEnableTheBarsFromTheFirstStepIn) {
    openPlate();
    EXPECT_FALSE(action(u"miViewZoomOff"_qs)->isEnabled());
    action(u"miViewZoomOut"_qs)->trigger();
    EXPECT_EQ(panel(4), u"75 %"_qs);
    EXPECT_FALSE(bar(0)->isEnabled() || bar(1)->isEnabled());
    action(u"miViewZoomOff"_qs)->trigger();
    EXPECT_EQ(window.Zoom(), 0);
    action(u"miViewZoomIn"_qs)->trigger();
    EXPECT_EQ(panel(4), u"125 %"_qs);
    EXPECT_TRUE(bar(0)->isEnabled() && bar(1)->isEnabled());
    EXPECT_EQ(bar(0)->pageStep(), 80);
    EXPECT_EQ(bar(0)->value(), 50);
    EXPECT_EQ(bar(1)->value(), 50);
    const QImage centred = picture()->Image().copy();
    bar(1)->setValue(100);
    EXPECT_FALSE(picture()->Image() == centred);
    action(u"miViewZoomOff"_qs)->trigger();
    EXPECT_FALSE(bar(0)->isEnabled() || bar(1)->isEnabled());
    window.SetZoom(100);
    EXPECT_EQ(panel(4), u"1600 %"_qs);
    EXPECT_FALSE(action(u"miViewZoomIn"_qs)->isEnabled());
    window.SetZoom(-100);
    EXPECT_EQ(panel(4), u"8.33 %"_qs);
    EXPECT_FALSE(action(u"miViewZoomOut"_qs)->isEnabled());
}

TEST_F(FrmMainTest, ResizeKeepsOrFitsTheScaleAsTheModeSays) {
    openPlate();
    // Each further open finds the settings in the file that the one before has left.
    Settings.Displacement.Fiducial = 0;
    Settings.Contour.Legend = false;
    resizeTo(700, 600);
    window.FirstStep(platePath);
    const int wide = meshWidth();
    EXPECT_GT(wide, 300);
    resizeTo(900, 800);
    EXPECT_EQ(picture()->Image().size(), picture()->size() * picture()->devicePixelRatioF());
    EXPECT_EQ(meshWidth(), wide) << "fixed";
    Settings.Window.ScaleMode = 1;
    window.FirstStep(platePath);
    const int fitted = meshWidth();
    EXPECT_GT(fitted, wide + 50) << "fitted anew for a new file";
    resizeTo(700, 600);
    EXPECT_EQ(meshWidth(), wide) << "automatic";
}

TEST_F(FrmMainTest, AllIsFoundAgainAfterClosing) {
    openPlate();
    action(u"miContourColor1"_qs)->trigger();
    action(u"miViewMesh"_qs)->trigger();
    QTest::keyClick(&window, Qt::Key_Down, Qt::ControlModifier);
    window.close();
    mdVelorinResultModel::CloseResultFile(mdApplication::Model); // as the end of the program does

    settingsStore::LoadSettings(Settings, {}, {});
    frmMain next;
    next.FirstStep(platePath);
    EXPECT_EQ(Settings.Contour.ColorIndex, 0);
    EXPECT_FALSE(Settings.Window.Mesh);
    EXPECT_EQ(mdApplication::Model.CurrentStep, mdApplication::Model.StepCount - 1);
    QAction* recent = next.findChild<QAction*>(u"recent-0"_qs);
    ASSERT_NE(recent, nullptr);
    recent->trigger();
    EXPECT_EQ(mdApplication::Model.FileName, platePath);
}

TEST(LongWork, EscStopsItAndTheWindowStaysAlive) {
    QWidget window;
    window.show();
    int turns = 0;
    QTimer::singleShot(20, [&] {
        EXPECT_TRUE(LongWork::IsRunning());
        ++turns;
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    LongWork work(u"work"_qs, [](const QString&) {});
    EXPECT_FALSE(work.Run([](const LongWork::Progress& progress) {
        while (progress(1, 2))
            QThread::msleep(1);
    }));
    EXPECT_EQ(turns, 1);
    EXPECT_FALSE(LongWork::IsRunning());
}

TEST_F(FrmMainTest, MouseShowsWorldCoordinatesAndZoomsAtItsPlace) {
    emit picture()->MouseMoved({30, 30});
    EXPECT_EQ(panel(2), QString()) << "no file yet";
    openPlate();
    const QPoint place(picture()->width() / 4, picture()->height() / 3);
    const auto coordinates = [this, &place] {
        emit picture()->MouseMoved(place);
        const QStringList parts = panel(2).split(u", "_qs);
        return QPointF(parts.value(0).toDouble(), parts.value(1).toDouble());
    };
    const QPointF before = coordinates();
    emit picture()->ZoomWheel(place, 2);
    EXPECT_EQ(window.Zoom(), 2);
    const double dot = window.DocPlotter().Window().Width() / picture()->width();
    EXPECT_NEAR(coordinates().x(), before.x(), 2 * dot);
    EXPECT_NEAR(coordinates().y(), before.y(), 2 * dot);
    EXPECT_GT(std::abs(before.x()) + std::abs(before.y()), 4 * dot);
}

} // namespace
