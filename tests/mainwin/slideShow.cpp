#include "WindowTest.h"

#include "property/propertyFile.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolBar>

using mdApplication::Model;
using mdApplication::Settings;

namespace {

struct SlideShowTest : WindowTest {
    SlideShowTest() {
        VrfBuilder file = twoSquares();
        file.steps.push_back({2, {}, {1, 2}, {{9, 8, 7, 6, 5, 4}, {3}}});
        openFirst(folder.Write(file.Bytes()));
        Settings.Window.Mesh = false;
        Settings.SlideShow.Interval = 10;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(picture, key, modifiers); }
    void trigger(const QString& command) { find<QAction>(command)->trigger(); }
    /// The commands of the show that can be used, by their letters; after "+" the bars that show.
    QString state() {
        QString text;
        for (const QString& name : {u"Restart"_s, u"Pause"_s, u"Stop"_s, u"ShowProp"_s})
            text += find<QAction>(u"miSlide"_s + name)->isEnabled() ? name.left(1) : QString();
        text += find<QWidget>(u"miDrawStep@tbSlideShow"_s)->isEnabled() ? u"D+"_s : u"+"_s;
        for (const QString& bar : {u"mbGeneral"_s, u"tbGeneral"_s, u"tbSlideShow"_s})
            text += find<QWidget>(bar)->isVisible() ? bar.left(3) : QString();
        return text;
    }
    void waitForStep(int step) {
        EXPECT_TRUE(QTest::qWaitFor([=] { return Model.CurrentStep == step; }));
    }

    const QString off = u"RSD+mbGtbG"_s, paused = u"RSSD+tbS"_s, running = u"PS+tbS"_s;
};

TEST_F(SlideShowTest, BeginsHaltedMovesOnWithTheTimerAndEndsAsItBegan) {
    Model.CurrentStep = 1;
    window.Selection.Add(0, PickedKind::Nodes);
    const ContourSettings own = Settings.Contour;
    EXPECT_EQ(state(), off);
    key(Qt::Key_F6);
    EXPECT_EQ(state(), paused);
    EXPECT_EQ(window.windowTitle().section(u" - "_s, 0, 0) + window.windowTitle().section(u' ', -1),
              u"Velorin[スライドショー]"_s);
    EXPECT_EQ(Model.CurrentStep + window.Selection.Count(), 0);
    QTimer::singleShot(0, &window, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        dialog->findChild<QLineEdit*>(u"txtDivide"_s)->setText(u"9"_s);
        QTest::keyClick(dialog->findChild<QWidget*>(u"Command1_0"_s), Qt::Key_Space);
    });
    trigger(u"miSlideShowProp"_s);
    EXPECT_EQ(Settings.Contour.MaxValue + float(Settings.Contour.Divide), 12 + 9);
    // A list index chosen with the keys, also while the timer runs; behind the last step comes the first.
    key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Model.CurrentStep, 2);
    Settings.SlideShow.Interval = 10000;
    trigger(u"miSlideRestart"_s);
    EXPECT_EQ(state(), running);
    key(Qt::Key_Up);
    EXPECT_EQ(Model.CurrentStep, 1);
    trigger(u"miSlidePause"_s);
    EXPECT_EQ(state(), paused);
    Settings.SlideShow.Interval = 1;
    trigger(u"miSlideRestart"_s);
    for (const int step : {2, 0, 1})
        waitForStep(step);
    EXPECT_EQ(find<QLabel>(u"tbSlideShow_note"_s)->text().left(5), u"2 / 3"_s);
    // Any other command halts it as well.
    window.ExecuteCommand(u"miViewRefresh"_s);
    EXPECT_EQ(state(), paused);
    find<QToolBar>(u"tbSlideShow"_s)->hide();
    EXPECT_EQ(state(), paused) << "the bar comes back";
    window.close();
    EXPECT_TRUE(window.isVisible()) << "the close ends the show alone";
    EXPECT_EQ(state(), off);
    EXPECT_EQ(Settings.Contour, own);
    EXPECT_FALSE(window.windowTitle().endsWith(u']'));
}

TEST_F(SlideShowTest, AnotherFileEndsItAndWhatItHeldIsNotSaved) {
    const QString before = Model.FileName;
    key(Qt::Key_F6);
    ASSERT_FALSE(Settings.Contour.Automatic);
    window.FirstStep(folder.Write(twoSquares().Bytes(), u"b.vrf"_s));
    EXPECT_EQ(state(), off);
    ApplicationSettings saved;
    ResultModel file = Model;
    file.FileName = before;
    propertyFile::LoadPropertyFile(saved, file);
    EXPECT_TRUE(saved.Contour.Automatic);
}

TEST_F(SlideShowTest, EscWhileTheRangeIsSoughtLeavesTheWindowAsItWas) {
    /// A file on a slow disk.
    struct SlowSteps final : StepSource {
        SlowSteps() : StepSource({30, 2, 2}) {}
        qint64 typesAt(std::int32_t, qint64, std::span<std::int32_t>) const override { return 0; }
        std::int32_t countOf(std::int32_t, std::int32_t) const override { return 6; }
        qint64 valuesAt(std::int32_t, std::int32_t, qint64, std::span<float>) const override {
            QThread::msleep(50);
            return 0;
        }
    };
    Model.Source = std::make_shared<const SlowSteps>();
    Model.StepCount = 30;
    QTimer::singleShot(550, &window, [this] { key(Qt::Key_Escape); });
    key(Qt::Key_F6);
    EXPECT_EQ(state(), off);
    EXPECT_TRUE(Settings.Contour.Automatic);
}

} // namespace
