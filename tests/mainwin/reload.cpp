// The open file in the hands of another process: overwritten, cut, moved, grown, while the window steps and plays.
#include "WindowTest.h"

#include "platform/film/FilmFile.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QProcess>
#include <QTimer>

using mdApplication::Model;
using mdApplication::Settings;

namespace {

/// Step k has the value k + 1 everywhere.
QByteArray countingSteps(int count, double factor = 1) {
    VrfBuilder file = twoSquares();
    file.steps.clear();
    for (int k = 0; k < count; ++k)
        file.steps.push_back({double(k), {}, {1, 2}, {std::vector<double>(6, factor * (k + 1)), {factor * (k + 1)}}});
    return file.Bytes();
}

struct ReloadTest : WindowTest {
    ReloadTest() { Settings.Window.AutoSave = false; }
    QString run(const QString& script) {
        QProcess shell;
        shell.setWorkingDirectory(QFileInfo(path).path());
        shell.start(u"/bin/sh"_s, {u"-c"_s, script});
        EXPECT_TRUE(shell.waitForFinished() && shell.exitCode() == 0) << script.toStdString();
        return script;
    }
    void trigger(const QString& command) { find<QAction>(command)->trigger(); }
    QString told() { return find<QLabel>(u"stbStatus_1"_s)->text(); }
    int steps() { return find<QComboBox>(u"miDrawStep@tbGeneral"_s)->count(); }
    /// What shows belongs together.
    bool isWhole(float factor = 1) const {
        return Model.ItemData.at(0).Values == QList<float>(6, factor * float(Model.CurrentStep + 1));
    }

    const QString path = folder.Path(u"model.vrf"_s);
};

TEST_F(ReloadTest, WhatIsDoneToTheFileIsToldAndCtrlRReadsItAnew) {
    const struct {
        QString Script;
        QString Told;     ///< part of it
        bool StepsOn;     ///< in what was opened
        int StepsThen;    ///< after the reload; 0: it fails
        float Factor = 1; ///< then
    } cases[] = {
        {u"cat 5.vrf > model.vrf"_s, u"追加"_s, true, 5},
        {u"mv 5.vrf model.vrf"_s, u"追加"_s, true, 5},
        {u"cat other.vrf > model.vrf"_s, u"書き換え"_s, false, 3, 7},
        {u"mv other.vrf model.vrf"_s, u"書き換え"_s, true, 3, 7},
        {u"head -c 300 5.vrf > model.vrf"_s, u"書き換え"_s, false, 1},
        {u"echo nothing > model.vrf"_s, u"書き換え"_s, false, 0},
        {u"rm model.vrf"_s, u"開くことが"_s, true, 0},
    };
    for (const auto& change : cases) {
        folder.Write(countingSteps(3));
        folder.Write(countingSteps(5), u"5.vrf"_s);
        folder.Write(countingSteps(3, 7), u"other.vrf"_s);
        openFirst(path);
        QTest::keyClick(picture, Qt::Key_Down);
        window.Selection.Add(3, PickedKind::Nodes);
        window.SetZoom(2);
        const PlotRect view = mdApplication::Current.View.ViewBounds;
        QTest::qWait(20);
        SCOPED_TRACE(run(change.Script).toStdString());
        EXPECT_TRUE(QTest::qWaitFor([&] { return told().contains(change.Told); })) << told().toStdString();
        QTest::keyClick(picture, Qt::Key_Down);
        EXPECT_EQ(Model.CurrentStep, change.StepsOn ? 2 : 1);
        EXPECT_EQ(find<QComboBox>(u"miDrawStep@tbGeneral"_s)->currentIndex(), Model.CurrentStep);
        EXPECT_TRUE(isWhole());
        if (change.StepsThen > 0) {
            QTest::keyClick(&window, Qt::Key_R, Qt::ControlModifier);
            EXPECT_EQ(told(), u"読み直しました。"_s);
            EXPECT_EQ(steps(), change.StepsThen);
            EXPECT_EQ(Model.CurrentStep, std::min(change.StepsOn ? 2 : 1, change.StepsThen - 1));
        } else {
            Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
            trigger(u"miViewReload"_s);
            EXPECT_TRUE(Dialogs::Testing::Asked().last().Text.endsWith(u"読み直すことができません。"_s));
        }
        EXPECT_TRUE(window.IsOpen() && isWhole(change.Factor));
        EXPECT_EQ(window.Selection.Count(), 1);
        EXPECT_EQ(mdApplication::Current.View.ViewBounds, view);
    }
}

TEST_F(ReloadTest, AGrowingFileIsFollowedAndNoHalfStepShows) {
    folder.Write(countingSteps(2));
    folder.Write(countingSteps(5).sliced(countingSteps(2).size()), u"rest"_s);
    openFirst(path);
    trigger(u"miViewFollow"_s);
    EXPECT_TRUE(Settings.Window.FollowFile);
    Settings.Contour.Range = ContourRange::AllSteps;
    QTest::keyClick(picture, Qt::Key_Down);
    QProcess writer;
    writer.setWorkingDirectory(QFileInfo(path).path());
    writer.start(u"/bin/sh"_s, {u"-c"_s, u"i=1; while [ $i -le 252 ]; do tail -c +$i rest | head -c 23 >> model.vrf;"
                                         " sleep 0.05; i=$((i + 23)); done"_s});
    std::vector<int> seen;
    const auto isAtTheEnd = [&] {
        EXPECT_TRUE(isWhole() && Model.CurrentStep == steps() - 1 && Settings.Contour.MaxValue == float(steps()));
        if (seen.empty() || seen.back() != steps())
            seen.push_back(steps());
        return steps() == 5;
    };
    EXPECT_TRUE(QTest::qWaitFor(isAtTheEnd, 10000)) << told().toStdString();
    EXPECT_GT(seen.size(), 2u) << "one after the other";
    EXPECT_TRUE(writer.state() == QProcess::NotRunning || writer.waitForFinished());
    // Another step than the last one stays.
    QTest::keyClick(picture, Qt::Key_Up);
    folder.Write(countingSteps(8).chopped(5));
    EXPECT_TRUE(QTest::qWaitFor([&] { return steps() == 7; }));
    EXPECT_EQ(Model.CurrentStep, 3);
    // A new calculation: the old picture stays until there is a step of it.
    folder.Write(countingSteps(1, 3).chopped(5));
    QTest::qWait(1500);
    EXPECT_TRUE(steps() == 7 && isWhole());
    folder.Write(countingSteps(1, 3));
    EXPECT_TRUE(QTest::qWaitFor([&] { return steps() == 1; }));
    EXPECT_TRUE(isWhole(3) && Settings.Contour.MaxValue == 3);
}

TEST_F(ReloadTest, AShowHaltsAtAChangedFileAndNoFilmIsMadeOfIt) {
    folder.Write(countingSteps(3));
    openFirst(path);
    QTest::qWait(20);
    trigger(u"miToolsSlideShow"_s);
    Settings.SlideShow.Interval = 20;
    trigger(u"miSlideRestart"_s);
    folder.Write(countingSteps(3, 7));
    EXPECT_TRUE(QTest::qWaitFor([&] { return find<QAction>(u"miSlideRestart"_s)->isEnabled(); }));
    EXPECT_TRUE(told().contains(u"Ctrl+R"_s) && isWhole());
    if (FilmFile::Unavailable())
        GTEST_SKIP();
    Dialogs::Testing::QueueFile(folder.Path(u"a.avi"_s));
    QTimer::singleShot(0, &window, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    expectMessage(told(), [this] { trigger(u"miSlideExport"_s); });
    EXPECT_FALSE(QFile::exists(folder.Path(u"a.avi"_s)));
    window.close();
}

} // namespace
