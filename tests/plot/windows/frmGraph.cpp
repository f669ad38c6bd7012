#include "plot/windows/frmGraph.h"
#include "FullDisk.h"
#include "GivenPrinters.h"
#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "platform/base/Codepage.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/PictureBox.h"
#include "result/ModelTest.h"
#include "view/clsMouse.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QtTest>

namespace {

struct GraphWindowTest : ModelTest {
    GraphWindowTest() {
        open(twoSquares(), 1);
        Dialogs::Testing::Start();
    }
    ~GraphWindowTest() override {
        mdApplication::UnloadGraphWindows();
        EXPECT_EQ(Dialogs::Testing::UnexpectedCount() + Dialogs::Testing::UnusedCount(), 0);
        Dialogs::Testing::Stop();
    }
    /// A window with the graph of nodes 1, 3 and 6, shown.
    frmGraph& graphOf(int type) {
        clsMouse picked;
        for (const int node : {0, 2, 5})
            picked.Add(node, PickedKind::Nodes);
        auto* window = new frmGraph(&owner, model, settings, printers, [](const QString&) {});
        EXPECT_TRUE(window->Initialize(type, picked));
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
        return *window;
    }
    static PictureBox& pictureOf(const frmGraph& window) { return *window.findChild<PictureBox*>(u"picScreen"_s); }
    static void trigger(const frmGraph& window, const QString& name) {
        auto* action = window.findChild<QAction*>(name);
        ASSERT_TRUE(action && action->isEnabled()) << name.toStdString();
        action->trigger();
    }
    QByteArray saved(const frmGraph& window, const QString& name, bool fails = false) {
        const QString path = folder.Path(name);
        Dialogs::Testing::QueueFile(path);
        if (fails)
            Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
        trigger(window, u"save"_s);
        return TestFolder::Read(path);
    }

    QWidget owner;
    GivenPrinters printers;
    ApplicationSettings settings;
};

TEST_F(GraphWindowTest, ListHidesSeriesAndKeysCloseListAndWindow) {
    const QPointer<frmGraph> window = &graphOf(GraphType::History);
    EXPECT_EQ(window->windowTitle(), u"変位 時系列図"_s);
    auto& list = *window->findChild<QListWidget*>(u"lstLegend"_s);
    const QImage all = pictureOf(*window).Image();
    EXPECT_FALSE(list.isVisible());
    trigger(*window, u"legend"_s);
    EXPECT_TRUE(list.isVisible());
    EXPECT_EQ(list.item(2)->text(), u"節点 : 6"_s);
    QTest::keyClick(&list, Qt::Key_Space);
    const QImage without = pictureOf(*window).Image();
    EXPECT_NE(without, all);
    for (const int entry : {1, 0}) {
        trigger(*window, u"mnuPop_%1"_s.arg(entry));
        EXPECT_EQ(list.item(1)->checkState(), entry == 0 ? Qt::Checked : Qt::Unchecked);
    }
    EXPECT_EQ(pictureOf(*window).Image(), all);
    QTest::mouseClick(&pictureOf(*window), Qt::LeftButton, {}, {3, 3});
    EXPECT_FALSE(list.isVisible());
    trigger(*window, u"legend"_s);
    QTest::keyClick(&list, Qt::Key_Escape);
    EXPECT_TRUE(window && !list.isVisible());
    QTest::keyClick(&pictureOf(*window), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);
}

TEST_F(GraphWindowTest, SavesAndCopiesNumbersAndPictures) {
    frmGraph& window = graphOf(GraphType::Distribution);
    EXPECT_TRUE(saved(window, u"g.csv"_s).startsWith("HORIZONTAL,"));
    EXPECT_EQ(Dialogs::Testing::Asked().last().Text, mdApplication::PathPart(model.FileName, 0) + u"*.csv");
    trigger(window, u"copy"_s);
    EXPECT_EQ(Codepage::Encode(QApplication::clipboard()->text().replace(u'\t', u',')) + "\r\n",
              TestFolder::Read(folder.Path(u"g.csv"_s)));
    const QImage shown = pictureOf(window).Image();
    trigger(window, u"image"_s);
    EXPECT_EQ(QApplication::clipboard()->image().convertedTo(shown.format()), shown);
    EXPECT_EQ(QImage::fromData(saved(window, u"g.PNG"_s)).convertedTo(shown.format()), shown);
    EXPECT_FALSE(saved(window, u"g.svg"_s).contains("<image"));
    EXPECT_TRUE(saved(window, u"g.pdf"_s).startsWith("%PDF"));
    EXPECT_EQ(pictureOf(window).Image(), shown);
    const FullDisk full(10);
    EXPECT_TRUE(saved(window, u"none.csv"_s, true).isEmpty());
}

TEST_F(GraphWindowTest, PrintsWithinTheMarginsOfThePage) {
    PrinterDescription& printer = printers.List[0];
    for (PrinterPaper& paper : printer.Papers)
        paper.Unprintable = {4, 5, 6, 7};
    settings.Page.Orientation = PlotPrinter::Portrait;
    settings.Page.Printer = u"trace"_s;
    settings.Page.Margin = {200, 300, 10, 500};
    frmGraph& window = graphOf(GraphType::History);
    const QImage shown = pictureOf(window).Image();
    trigger(window, u"print"_s);
    ASSERT_EQ(printers.Pages.size(), 1);
    EXPECT_EQ(printers.Pages[0].Title, u"Velorin 変位 時系列図"_s);
    // A4 at ten dots a millimetre, 4 and 5 mm of which lie before the printer's origin.
    EXPECT_TRUE(printers.Pages[0].Trace.contains("\nClipRect 160 250 2050 2420\n"));
    EXPECT_EQ(pictureOf(window).Image(), shown);
    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    printers.Result = {PrintResult::Refused, u"voll"_s};
    trigger(window, u"print"_s);
    EXPECT_EQ(Dialogs::Testing::Asked().last().Text, u"プリンタを開くことができません。\r\nvoll"_s);
    Dialogs::Testing::QueueAnswer(MessageAnswer::Ok);
    settings.Page.Printer = u"gone"_s;
    trigger(window, u"print"_s);
    EXPECT_EQ(Dialogs::Testing::Asked().last().Text, u"プリンタ[gone]を開くことができません。"_s);
}

TEST_F(GraphWindowTest, PointsUnderMouseAndKeysLeadBackAndTheLineFollowsTheStep) {
    frmGraph& window = graphOf(GraphType::History);
    PictureBox& picture = pictureOf(window);
    QSignalSpy chosen(&window, &frmGraph::PointChosen);
    picture.setFocus();
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_End, Qt::Key_Down, Qt::Key_Return})
        QTest::keyClick(&picture, key);
    EXPECT_EQ(picture.accessibleDescription(), u"節点 : 3, 経過時間 : 1.25, 変位 : 6"_s);
    const QImage marked = picture.ShownImage();
    EXPECT_NE(marked, picture.Image());
    QTest::mouseMove(&picture, {2, 2});
    EXPECT_NE(picture.ShownImage(), marked);
    QTest::mouseClick(&picture, Qt::LeftButton, {}, {2, 2});
    EXPECT_EQ(chosen.size(), 1) << "beside every curve";
    EXPECT_EQ(chosen.value(0), (QVariantList{1, PickedKind::Nodes, 2}));
    const QImage atStep1 = picture.ShownImage();
    model.CurrentStep = 0;
    window.StepChanged();
    EXPECT_NE(picture.ShownImage(), atStep1);
    trigger(window, u"stepLine"_s);
    settings.Graph.ShowCurrentStep = false;
    window.StepChanged();
    EXPECT_EQ(picture.ShownImage(), picture.Image());
}

TEST_F(GraphWindowTest, OddGraphsAndSizesAreDrawn) {
    frmGraph& first = graphOf(GraphType::History);
    first.resize(1, 1);
    first.resize(2000, 3);
    QApplication::processEvents();
    clsMouse nothing;
    frmGraph empty(&owner, model, settings, printers, [](const QString&) {});
    EXPECT_TRUE(empty.Initialize(GraphType::History, nothing) && empty.Invalid());
    empty.show();
    VrfBuilder file = twoSquares();
    for (VrfBuilder::Step& step : file.steps)
        step.values[0] = {NAN, INFINITY};
    file.steps.resize(1);
    open(file);
    settings.Graph.GraphFonts.fill(u"\"no such font\",9999"_s);
    for (const int styles : {0, 1000}) {
        settings.Graph.LegendStyles.resize(styles);
        mdApplication::NotifyGraphLayoutChanged(&first);
        graphOf(GraphType::Distribution);
    }
}

} // namespace
