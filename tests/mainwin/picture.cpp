// Pictures that leave the window, and the commands that make them again, run by a shell.
#include "mainwin/WindowTest.h"

#include "platform/base/NativePath.h"
#include "platform/device/PictureNote.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QProcess>
#include <QSpinBox>
#include <QTimer>
#include <filesystem>

using mdApplication::Current;
using mdApplication::Settings;

namespace {

struct PictureTest : WindowTest {
    PictureTest() {
        // A name that a shell would take apart.
        const QString name = NativePath::Text("it's $1 %d \xff"
                                              "二.vrf");
        std::filesystem::rename(NativePath::Of(folder.Write(twoSquares().Bytes())), NativePath::Of(folder.Path(name)));
        openFirst(folder.Path(name));
    }
    ~PictureTest() override {
        window.close();
        // The toolkit could not remove names that are not UTF-8.
        std::filesystem::remove_all(NativePath::Of(folder.Path(u"."_s)).parent_path());
    }
    /// Has a shell run the line in the folder of the test.
    void runLine(const QString& line) {
        QProcess shell;
        shell.setWorkingDirectory(folder.Path(u"."_s));
        shell.start(u"bash"_s, {u"-c"_s, u"PATH=" VELORIN_BINARY_DIR "/bin:$PATH\n"_s + line});
        EXPECT_TRUE(shell.waitForFinished());
        EXPECT_EQ(shell.readAllStandardError(), "") << line.toStdString();
    }
    /// The picture that the copied command makes.
    QImage made() {
        find<QAction>(u"miFilePictureCommand"_s)->trigger();
        runLine(QApplication::clipboard()->text());
        const std::filesystem::path file = NativePath::Of(folder.Path(NativePath::Text("it's $1 _d \xff"
                                                                                       "二.png")));
        std::filesystem::rename(file, NativePath::Of(folder.Path(u"made.png"_s)));
        return QImage(folder.Path(u"made.png"_s)).convertToFormat(QImage::Format_RGB32);
    }
    void expectSame(const char* when) {
        window.repaint();
        EXPECT_TRUE(made() == picture->Image()) << when << ": " << QApplication::clipboard()->text().toStdString();
    }
    /// Saves the picture by its dialogs under the name and gives its file.
    QByteArray saved(const QString& name, int dotsPerInch) {
        QTimer::singleShot(0, &window, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            dialog->findChild<QSpinBox*>(u"txtDpi"_s)->setValue(dotsPerInch);
            QTest::keyClick(dialog->findChild<QWidget*>(u"Command1_0"_s), Qt::Key_Space);
        });
        Dialogs::Testing::QueueFile(folder.Path(name));
        find<QAction>(u"miFilePicture"_s)->trigger();
        return TestFolder::Read(folder.Path(name));
    }
};

TEST_F(PictureTest, TheCopiedCommandMakesTheVeryPicture) {
    expectSame("as opened");
    window.resize(700, 420);
    expectSame("in a window of another size with the scale kept");
    window.SetZoom(4);
    Settings.Style.LineStyles[0] = {7, 2, 0xff8000};
    Settings.Style.FontStrings[2] = u"\"ＭＳ 明朝\", 14, b"_s;
    Settings.Style.RealFormat = u"0.0 '$(x)'"_s;
    Settings.Contour.ColorIndex = 5;
    Settings.Contour.Automatic = false;
    Settings.Contour.MaxValue = 0.1f;
    Settings.Vector.ItemSets = {{u"a, 'b'"_s, 0, 0}};
    Settings.Vector.ItemSetCount = 1;
    Settings.Vector.DefaultItemSet = 0;
    Settings.ValueDisplay = true;
    expectSame("zoomed in, with looks of its own");
    Settings.Window.FadeMesh = Settings.HeaderDisplay = Settings.Contour.LegendName = true;
    Settings.Contour.Range = ContourRange::Visible;
    Settings.Contour.Preset = ColorPreset::Viridis;
    window.SetZoom(-7);
    expectSame("with edges that fade and the range of what is visible");
    Settings.Window.Mesh = Settings.HeaderDisplay = false;
    Settings.Difference = {0, true, true, true, true};
    Settings.Window.ScaleMode = int(PlotScaleMode::Automatic);
    find<QAction>(u"miViewScaleAutomatic"_s)->trigger();
    Settings.Contour.LegendRange = true;
    window.ExecuteCommand(u"miToolsSlideShow"_s);
    QTest::keyClick(picture, Qt::Key_Down);
    expectSame("in a slide show");
}

TEST_F(PictureTest, ASavedPictureTellsHowOthersAreMadeLikeIt) {
    window.SetZoom(3);
    const QImage fine = QImage::fromData(saved(u"fine.png"_s, 192)).convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(fine.size(), picture->Image().size() * 2);
    EXPECT_EQ(fine.dotsPerMeterX(), 7559);
    EXPECT_EQ(NativePath::Absolute(Settings.Window.PictureFolder), NativePath::Absolute(folder.Path(u"."_s)));
    folder.Write(twoSquares().Bytes(), u"other.vrf"_s);
    saved(u"a.svg"_s, 96);
    saved(u"a.pdf"_s, 96);
    for (const QString& name : {u"fine.png"_s, u"a.svg"_s, u"a.pdf"_s}) {
        const QByteArray whole = TestFolder::Read(folder.Path(name));
        runLine(u"velorin-batch render other.vrf -o like.png --like "_s + name);
        const QImage like = QImage(folder.Path(u"like.png"_s)).convertToFormat(QImage::Format_RGB32);
        EXPECT_TRUE(like == (name == u"fine.png" ? fine : picture->Image())) << name.toStdString();
        EXPECT_EQ(TestFolder::Read(folder.Path(name)), whole) << "the name in the note is not written to";
    }
}

TEST_F(PictureTest, EscLeavesNoFile) {
    VrfBuilder file = twoSquares();
    file.elements.assign(3000, {});
    for (std::size_t e = 0; e < file.elements.size(); ++e)
        for (std::size_t k = 0; k < 100; ++k)
            file.elements[e].push_back(qint32((e * k + k * k) % 6 + 1));
    file.steps = {{0, {}, std::vector<qint32>(file.elements.size(), 1), {{1, 2, 3, 4, 5, 6}, {}}}};
    window.FirstStep(folder.Write(file.Bytes()));
    QTimer esc;
    QObject::connect(&esc, &QTimer::timeout, &window, [this] {
        if (!QApplication::activeModalWidget())
            QTest::keyClick(&window, Qt::Key_Escape);
    });
    esc.start(100);
    saved(u"large.png"_s, 2400);
    EXPECT_FALSE(QFile::exists(folder.Path(u"large.png"_s)));
    EXPECT_TRUE(find<QLabel>(u"stbStatus_1"_s)->text().contains(u"中止"_s));
}

} // namespace
