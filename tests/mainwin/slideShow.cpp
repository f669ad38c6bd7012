#include "WindowTest.h"

#include "platform/film/FilmFile.h"

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
        return text + QString::number(window.Selection.Count());
    }
    /// Works in the dialog that opens next.
    void inDialog(const std::function<void(QWidget&)>& work) {
        QTimer::singleShot(0, &window, [work] { work(*QApplication::activeModalWidget()); });
    }
    ~SlideShowTest() override { window.close(); }

    const QString off = u"RSD+mbGtbG0"_s, paused = u"RSSD+tbS0"_s, running = u"PS+tbS0"_s;
};

TEST_F(SlideShowTest, BeginsHaltedMovesOnWithTheTimerAndEndsAsItBegan) {
    const ContourSettings own = Settings.Contour;
    window.Selection.Add(0, PickedKind::Nodes);
    key(Qt::Key_F6);
    EXPECT_EQ(state(), paused);
    EXPECT_TRUE(window.windowTitle().endsWith(u" [スライドショー]"_s));
    inDialog([](QWidget& dialog) {
        dialog.findChild<QLineEdit*>(u"txtDivide"_s)->setText(u"9"_s);
        QTest::keyClick(dialog.findChild<QWidget*>(u"Command1_0"_s), Qt::Key_Space);
    });
    trigger(u"miSlideShowProp"_s);
    EXPECT_EQ(Settings.Contour.MaxValue + float(Settings.Contour.Divide), 12 + 9);
    // The keys choose a step while it runs as well; behind the last one comes the first.
    Settings.SlideShow.Interval = 10000;
    trigger(u"miSlideRestart"_s);
    EXPECT_EQ(state(), running);
    key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Model.CurrentStep, 2);
    key(Qt::Key_PageUp);
    EXPECT_EQ(Model.CurrentStep, 1);
    key(Qt::Key_PageDown);
    for (const bool full : {true, false}) {
        key(Qt::Key_F11);
        EXPECT_EQ(window.isFullScreen(), full);
        EXPECT_EQ(state(), running) << "the show goes on";
    }
    window.ExecuteCommand(u"miViewRefresh"_s);
    EXPECT_EQ(state(), paused) << "any command halts it";
    Settings.SlideShow.Interval = 1;
    trigger(u"miSlideRestart"_s);
    for (const int step : {0, 1, 2})
        EXPECT_TRUE(QTest::qWaitFor([=] { return Model.CurrentStep == step; }));
    EXPECT_EQ(find<QLabel>(u"tbSlideShow_note"_s)->text().left(5), u"3 / 3"_s);
    find<QToolBar>(u"tbSlideShow"_s)->hide();
    EXPECT_EQ(state(), running) << "the bar comes back";
    window.close();
    EXPECT_TRUE(window.isVisible() && Settings.Contour == own) << "the close ends the show alone";
    EXPECT_EQ(state(), off);
}

TEST_F(SlideShowTest, AnotherFileEndsItAndWhatItHeldIsNotSaved) {
    const QString before = Model.FileName;
    key(Qt::Key_F6);
    ASSERT_FALSE(Settings.Contour.Automatic);
    window.FirstStep(folder.Write(twoSquares().Bytes(), u"b.vrf"_s));
    EXPECT_EQ(state(), off);
    window.FirstStep(before);
    EXPECT_TRUE(Settings.Contour.Automatic);
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
}

TEST_F(SlideShowTest, ExportsAFilmOfTheSizeOfThePictureOrNone) {
    if (FilmFile::Unavailable())
        GTEST_SKIP();
    key(Qt::Key_F6);
    const QString path = folder.Path(u"a.avi"_s);
    for (const bool chosen : {false, true}) {
        inDialog([=](QWidget& dialog) { QTest::keyClick(&dialog, chosen ? Qt::Key_Return : Qt::Key_Escape); });
        if (chosen) {
            Dialogs::Testing::QueueFile(path);
            Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
        }
        trigger(u"miSlideExport"_s);
        EXPECT_EQ(QFile::exists(path), chosen);
        EXPECT_EQ(Model.CurrentStep, chosen ? 2 : 0) << "the step of the last frame";
    }
    EXPECT_EQ(Dialogs::Testing::Asked().last().Text, u"a.avi\r\nAVIファイルを作成しました。"_s);
    // The size stands at a fixed place of such a file.
    const QByteArray film = TestFolder::Read(path);
    const auto at = [&film](qsizetype place) { return qFromLittleEndian<qint32>(film.constData() + place); };
    EXPECT_EQ(QSize(at(64), at(68)), picture->Image().size() + QSize(1, 1));
}

} // namespace
