#include "WindowTest.h"

#include "LittleMemory.h"
#include "app/settingsStore.h"
#include "mainwin/windowPlace.h"
#include "result/mdVelorinResultModel.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

using mdApplication::Model;
using mdApplication::Settings;

namespace {

struct FrmMainTest : WindowTest {
    FrmMainTest() {
        // A copy, since the drawing settings are kept beside the file.
        EXPECT_TRUE(QFile::copy(QStringLiteral(VELORIN_SOURCE_DIR "/demo/plate.vrf"), platePath));
    }
    void openPlate() { openFirst(platePath); }
    void expectClosed() {
        EXPECT_EQ(window.windowTitle(), u"Velorin - (未定義)"_s);
        EXPECT_FALSE(window.IsOpen() || find<QAction>(u"miViewZoomIn"_s)->isEnabled());
        EXPECT_EQ(panel(3) + panel(4), QString());
        QImage blank = picture->Image();
        blank.fill(Qt::white);
        EXPECT_EQ(picture->Image(), blank);
    }
    void trigger(const QString& command) { find<QAction>(command)->trigger(); }
    QString panel(int number) { return find<QLabel>(u"stbStatus_%1"_s.arg(number))->text(); }
    /// Place and page of both scroll bars.
    QString bars() {
        const auto *across = find<QScrollBar>(u"scrScroll_0"_s), *down = find<QScrollBar>(u"scrScroll_1"_s);
        if (!across->isEnabled() && !down->isEnabled())
            return u"off"_s;
        return u"%1/%2 %3/%4"_s.arg(across->value()).arg(across->pageStep()).arg(down->value()).arg(down->pageStep());
    }
    double scale() {
        double across = 0, down = 0;
        mdApplication::Current.View.CoordConverter->WorldLengthToDevice(1, 1, across, down);
        return across;
    }
    void resizeTo(int width, int height) {
        window.resize(width, height);
        QApplication::processEvents();
    }

    const QString platePath = folder.Path(u"plate.vrf"_s);
};

TEST_F(FrmMainTest, OpensTheFileOfTheCommandOrTheCommandLine) {
    for (const auto& answer : {std::optional<QString>(), std::optional(folder.Write(twoSquares().Bytes()))}) {
        expectClosed();
        Dialogs::Testing::QueueFile(answer);
        trigger(u"miFileOpen"_s);
    }
    EXPECT_EQ(window.windowTitle(), u"Velorin - model"_s);
    openPlate();
    EXPECT_EQ(window.windowTitle() + panel(3) + panel(4), u"Velorin - plate0.05100 %"_s);
}

TEST_F(FrmMainTest, UnusableFilesAreToldAndCloseTheOpenOne) {
    openPlate();
    for (const QString& path : {folder.Path(u"none.vrf"_s), QString(u'"' + platePath + u'"'), folder.Path(u"."_s)})
        expectMessage(u"無効なパラメータです。"_s, [&] { window.FirstStep(path); });
    EXPECT_EQ(window.windowTitle(), u"Velorin - plate"_s);
    for (const QByteArray& bytes : {QByteArray("no result"), QByteArray(), twoSquares().Bytes().left(190)}) {
        const QString other = folder.Write(bytes, u"other.vrf"_s);
        window.FirstStep(platePath);
        EXPECT_EQ(panel(4), u"100 %"_s);
        window.SetZoom(3);
        expectMessage(other + u"\r\nファイルの形式が不正です。"_s, [&] { window.FirstStep(other); });
        expectClosed();
        resizeTo(window.width() + 10, window.height());
        expectClosed();
    }
}

TEST_F(FrmMainTest, TheEmptyWindowHasLinksToFiles) {
    const auto* page = find<QWidget>(u"startPage"_s);
    window.show();
    EXPECT_TRUE(page->isVisible());
    Dialogs::Testing::QueueFile(platePath);
    QTest::keyClick(find<QWidget>(u"start_miFileOpen"_s), Qt::Key_Space);
    EXPECT_TRUE(window.IsOpen() && !page->isVisible());
    expectMessage(folder.Write("none", u"other.vrf"_s) + u"\r\nファイルの形式が不正です。"_s,
                  [&] { window.FirstStep(folder.Path(u"other.vrf"_s)); });
    EXPECT_TRUE(page->isVisible());
    auto* recent = find<QPushButton>(u"start_recent-0"_s);
    EXPECT_TRUE(recent->text().endsWith(u"plate.vrf"_s) && recent->toolTip() == platePath);
    QTest::mouseClick(recent, Qt::LeftButton);
    EXPECT_TRUE(window.IsOpen() && !page->isVisible());
    const QString gone = folder.Path(u"gone.vrf"_s);
    Dialogs::Testing::QueueFile(gone);
    expectMessage(gone + u"\r\nファイルの形式が不正です。\r\nファイルがありません。"_s,
                  [&] { trigger(u"miFileOpen"_s); });
}

TEST_F(FrmMainTest, AllStepsGiveTheRangeAndADenseMeshIsTold) {
    openPlate();
    EXPECT_FALSE(panel(1).contains(u"細かいメッシュを薄く"_s));
    Settings.Contour.Range = ContourRange::AllSteps;
    Settings.Contour.Automatic = false;
    emit find<QComboBox>(u"miDrawContourItem@tbGeneral"_s)->activated(5);
    EXPECT_FALSE(mdApplication::Current.LacksRange(5));
    const float all = Settings.Contour.MaxValue;
    QTest::keyClick(picture, Qt::Key_Down);
    EXPECT_TRUE(Settings.Contour.MaxValue == all && all > Model.Mesh.MaxValue);
    window.SetZoom(ZoomMin);
    EXPECT_TRUE(panel(1).contains(u"細かいメッシュを薄く"_s));
    trigger(u"miViewFadeMesh"_s);
    trigger(u"miViewFadeMesh"_s);
    EXPECT_EQ(panel(1), QString()) << "told once";
}

TEST_F(FrmMainTest, ArrowKeysWalkThroughTheSteps) {
    QTest::keyClick(&window, Qt::Key_Down);
    openPlate();
    const int last = Model.StepCount - 1;
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, int> strokes[] = {
        {Qt::Key_Up, Qt::NoModifier, 0},           {Qt::Key_Down, Qt::NoModifier, 1},
        {Qt::Key_Down, Qt::ControlModifier, last}, {Qt::Key_Down, Qt::NoModifier, last},
        {Qt::Key_Up, Qt::NoModifier, last - 1},    {Qt::Key_Left, Qt::NoModifier, last - 1},
        {Qt::Key_PageDown, Qt::NoModifier, last},  {Qt::Key_PageUp, Qt::NoModifier, last - 1},
        {Qt::Key_Up, Qt::ControlModifier, 0},      {Qt::Key_Down, Qt::AltModifier, 0},
        {Qt::Key_Down, Qt::ShiftModifier, 0}};
    for (const auto& [key, modifiers, step] : strokes) {
        const int before = Model.CurrentStep;
        const QImage shown = picture->Image().copy();
        QTest::keyClick(picture, key, modifiers);
        EXPECT_EQ(Model.CurrentStep, step);
        EXPECT_EQ(picture->Image() == shown, before == step);
    }
}

TEST_F(FrmMainTest, ZoomByCommandAndWheelMovesBarsAndCoordinates) {
    const QPoint place(picture->width() / 4, picture->height() / 3);
    const auto coordinates = [this, &place] {
        emit picture->MouseMoved(place);
        const QStringList parts = panel(2).split(u", "_s);
        return QPointF(parts.value(0).toDouble(), parts.value(1).toDouble());
    };
    EXPECT_EQ(coordinates(), QPointF()) << "no file yet";
    openPlate();
    const QPointF before = coordinates();
    EXPECT_GT(std::abs(before.x()) + std::abs(before.y()), 1);
    emit picture->ZoomWheel(place, 2);
    EXPECT_EQ(panel(4), u"150 %"_s);
    EXPECT_LT(QLineF(coordinates(), before).length(), 2 * window.DocPlotter().Window().Width() / picture->width());
    trigger(u"miViewZoomOff"_s);
    EXPECT_EQ(panel(4) + bars(), u"100 %off"_s);
    trigger(u"miViewZoomIn"_s);
    EXPECT_EQ(panel(4) + bars(), u"125 %50/80 50/80"_s);
    const QImage centred = picture->Image().copy();
    find<QScrollBar>(u"scrScroll_1"_s)->setValue(100);
    EXPECT_FALSE(picture->Image() == centred);
    window.SetZoom(100);
    EXPECT_FALSE(find<QAction>(u"miViewZoomIn"_s)->isEnabled());
}

TEST_F(FrmMainTest, ResizeKeepsOrFitsTheScaleAsTheModeSays) {
    openPlate();
    const double first = scale();
    resizeTo(600, 500);
    const double narrow = scale();
    EXPECT_LT(narrow, first) << "fitted until the window has its real size";
    window.FirstStep(platePath);
    resizeTo(900, 800);
    EXPECT_EQ(picture->Image().size(), picture->size() * picture->devicePixelRatioF());
    EXPECT_EQ(scale(), narrow) << "fixed";
    trigger(u"miViewZoomOff"_s);
    EXPECT_EQ(scale(), narrow) << "100 % is on already";
    QTest::keyClick(picture, Qt::Key_Home);
    const double fitted = scale();
    EXPECT_GT(fitted, narrow);
    trigger(u"miViewFitDisplaced"_s);
    EXPECT_LT(scale(), fitted);
    EXPECT_EQ(panel(4), u"100 %"_s);
    trigger(u"miViewFitDisplaced"_s);
    window.FirstStep(platePath);
    EXPECT_EQ(scale(), fitted) << "fitted anew for a new file";
    trigger(u"miViewScaleAutomatic"_s);
    resizeTo(600, 500);
    EXPECT_EQ(scale(), narrow) << "automatic";
}

TEST_F(FrmMainTest, ListsAndStatusBarSayWhatIsShownAndSaved) {
    folder.Write("<VRFPROPERTY><currentstep>98</currentstep><currentitem>7</currentitem>"
                 "<difference><std>30</std></difference></VRFPROPERTY>",
                 u"plate.vrf.property"_s);
    openPlate();
    const auto lists = [this]() -> QString {
        return find<QComboBox>(u"miDrawStep@tbGeneral"_s)->currentText() + u'|' +
               find<QComboBox>(u"miDrawContourItem@tbGeneral"_s)->currentText();
    };
    const QString told = u"ステップ 99 はこのファイルにありません。 基準ステップ 30 はこのファイルにありません。"_s;
    EXPECT_EQ(panel(1) + lists(), told + u'|');
    resizeTo(600, 500);
    EXPECT_EQ(panel(1), told) << "a new paint leaves it";
    QTest::keyClick(picture, Qt::Key_Down);
    EXPECT_EQ(panel(1) + lists(), u"ステップ - 1|変位X"_s);
    const auto save = [this] {
        Dialogs::Testing::QueueAnswer(MessageAnswer::Yes);
        trigger(u"miFileSaveLayout"_s);
        return panel(1);
    };
    EXPECT_EQ(save(), u"描画設定を保存しました。"_s);
    // Nobody can put a file in the place of a folder, not even the super-user.
    EXPECT_TRUE(QFile::remove(platePath + u".property"_s) && QDir().mkpath(platePath + u".property/a"_s));
    EXPECT_TRUE(save().contains(platePath));
    EXPECT_TRUE(QFile::remove(platePath));
    EXPECT_TRUE(save().contains(u"保存できません"_s));
}

TEST(WindowPlace, HoldsTheWindowWithinAScreen) {
    const std::array screens{QRect(0, 30, 1280, 770), QRect(1280, 0, 800, 1000)};
    const auto restored = [&](int left, int top, int width, int height) {
        constexpr int twips = windowPlace::TwipsPerPixel;
        return windowPlace::Restored({left * twips, top * twips, width * twips, height * twips}, {100, 50}, {0, 20},
                                     screens)
            .value_or(QRect());
    };
    EXPECT_EQ(restored(100, 100, 800, 600), QRect(100, 100, 800, 600));
    EXPECT_EQ(restored(0, 0, 9999, 99999), QRect(0, 30, 1280, 750)) << "larger than any screen";
    EXPECT_EQ(restored(1500, -400, 500, 600), QRect(1500, 0, 500, 600)) << "the title bar was out of reach";
    EXPECT_EQ(restored(-9000, 9000, 300, 200), QRect(0, 580, 300, 200)) << "the screen has gone";
    EXPECT_EQ(restored(10, 40, 99, 400), QRect()) << "never stored";
}

TEST_F(FrmMainTest, EscStopsAPaintAndThePictureBeforeStays) {
    openFirst(folder.Write(twoSquares().Bytes()));
    const QImage before = picture->Image().copy();
    // Figures of a hundred corners all over the picture, more than any machine paints in half a second.
    VrfBuilder file = twoSquares();
    file.elements.assign(20000, {});
    for (std::size_t e = 0; e < file.elements.size(); ++e)
        for (std::size_t k = 0; k < 100; ++k)
            file.elements[e].push_back(qint32((e * k + k * k) % 6 + 1));
    file.steps = {{0, {}, std::vector<qint32>(file.elements.size(), 1), {{1, 2, 3, 4, 5, 6}, {}}}};
    QTimer keys;
    QObject::connect(&keys, &QTimer::timeout, [this] { QTest::keyClick(&window, Qt::Key_Escape); });
    keys.start(50);
    window.FirstStep(folder.Write(file.Bytes(), u"crowded.vrf"_s));
    keys.stop();
    EXPECT_EQ(panel(1), u"描画を中止しました。"_s);
    EXPECT_EQ(picture->Image(), before);
    QTest::mouseClick(picture, Qt::LeftButton, {}, picture->rect().center());
    EXPECT_EQ(window.Selection.Count(), 0) << "what isn't painted can't be picked";
}

#ifndef __SANITIZE_ADDRESS__
TEST_F(FrmMainTest, WithoutMemoryThePictureBeforeStaysAndTheNextOneComes) {
    VrfBuilder file = twoSquares();
    file.nodes.resize(100000);
    for (VrfBuilder::Step& step : file.steps)
        step.values[0].resize(file.nodes.size(), 1);
    openFirst(folder.Write(file.Bytes()));
    const QImage before = picture->Image().copy();
    {
        const LittleMemory limit;
        trigger(u"miViewZoomIn"_s);
    }
    EXPECT_EQ(panel(1), u"メモリが足りないため、描画を中止しました。"_s);
    EXPECT_EQ(picture->Image(), before);
    trigger(u"miViewZoomOff"_s);
    EXPECT_EQ(panel(1) + panel(4), u"100 %"_s);
    const LittleMemory limit;
    expectMessage(Model.FileName + u"\r\nメモリが不足しています。"_s,
                  [this] { QTest::keyClick(&window, Qt::Key_Down); });
    EXPECT_TRUE(window.IsOpen());
    EXPECT_EQ(Model.CurrentStep, 0);
}
#endif

TEST_F(FrmMainTest, RecentFilesAreTrueNamesTheNewestFirst) {
    RecentFiles files;
    QStringList expected;
    for (int i = 0; i < 12; ++i)
        expected.prepend(folder.Write("x", u"R&D %1.vrf"_s.arg(i)));
    // Another file where case counts, and one that comes again.
    expected = QStringList{expected[4], folder.Write("y", u"r&d 3.vrf"_s)} + expected;
    for (qsizetype i = expected.size() - 1; i >= 0; --i)
        files.Add(expected[i]);
    EXPECT_EQ(files.Count(), 13);
    const auto entries = files.MenuEntries();
    ASSERT_EQ(entries.size(), 9u);
    EXPECT_EQ(entries[1].Description, expected[1]);
    EXPECT_TRUE(entries[1].Caption.startsWith(u"&2 - ") && entries[1].Caption.endsWith(u"r&&d 3.vrf"));
    files.Save();
    QFile::remove(expected[2]);
    RecentFiles again;
    again.Load();
    EXPECT_EQ(again.Count(), 9) << "ten are kept, one has gone";
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(again.Path(i), expected[i < 2 ? i : 3]);
}

TEST_F(FrmMainTest, AllIsFoundAgainAfterClosing) {
    openPlate();
    trigger(u"miContourColor1"_s);
    QTest::keyClick(&window, Qt::Key_Down, Qt::ControlModifier);
    window.close();
    mdVelorinResultModel::CloseResultFile(Model); // as the end of the program does

    settingsStore::LoadSettings(Settings, {}, {});
    frmMain next;
    next.FirstStep({});
    EXPECT_FALSE(next.IsOpen()) << "the last file comes back only when that is wanted";
    next.findChild<QAction*>(u"recent-0"_s)->trigger();
    EXPECT_EQ(Model.FileName, platePath);
    EXPECT_EQ(Settings.Contour.ColorIndex, 0);
    EXPECT_EQ(Model.CurrentStep, Model.StepCount - 1);
}

} // namespace
