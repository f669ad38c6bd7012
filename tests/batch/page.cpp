// Pages as the companion writes them.
#include "BatchTest.h"
#include "Golden.h"

#include <QProcess>
#include <QStandardPaths>

namespace {

class PageTest : public BatchTest {
protected:
    QByteArray page(const QString& options, const QString& name = u"out.trace"_s) {
        QFile::remove(folder.Path(name));
        EXPECT_EQ(run(u"page FILE -o "_s + folder.Path(name) + u' ' + options), 0) << errors.constData();
        return fileBytes(name);
    }
    /// Nothing but lines: one of 100 units across and one of 50 down from its left end.
    static VrfBuilder lines() {
        VrfBuilder file = withoutSteps();
        file.items = {{u"応力"_s, -1, 0}};
        file.nodes = {{0, 0}, {100, 0}, {0, -50}};
        file.elements = {{1, 2}, {1, 3}};
        return file;
    }
};

const QString quiet = u"--set contour/values/automatic=False --set contour/values/div=0 --set displacement/fid=0 "_s;

TEST_F(PageTest, SheetDocumentOutlineAndLabels) {
    const QString whole = quiet + u"--paper 80x100mm --margin 10,10.04,9.96,50 "_s;
    const QByteArray text = "TextColor 0x00000000\nText ";
    // The world is 2.2 by 1.2 with its margin: 272.7 dots a unit across the sheet of 80 mm, and 181.8 along it.
    QByteArray trace = page(whole + u"--orientation portrait --frame 0.5 --label 0=%step% --label 17,Arial,9=a=b"_s);
    EXPECT_TRUE(trace.startsWith("ClipRect 100 100 700 500\nSaveDC\n")) << trace.constData();
    EXPECT_TRUE(trace.contains("MoveTo 127 436\nLineTo 400 436\n")) << trace.constData();
    EXPECT_TRUE(
        trace.contains(QByteArray("RestoreDC\nClipNone\nPen 0 5 0x00000000\nStockBrush 5\nRectangle 100 100 700 500\n"
                                  "SaveDC\nFont 42 700 0 0 0 0 \"ＭＳ Ｐ明朝\"\n" +
                                  text + "0 0 \"1\"\n")))
        << trace.constData();
    EXPECT_TRUE(trace.contains(QByteArray("Font 32 400 0 0 0 0 \"Arial\"\n" + text + "652 468 \"a=b\"\n")));
    trace = page(whole + u"--frame 0"_s);
    EXPECT_TRUE(trace.startsWith("ClipRect 100 100 900 300\n") &&
                trace.contains("\nPen 0 1 0x00000000\nStockBrush 5\n"));
    EXPECT_EQ(page(whole + u"--orientation landscape --frame 0.04"_s), trace);
    EXPECT_TRUE(page(u"--paper letter"_s).startsWith("ClipRect 200 200 2594 1959\n"));
    EXPECT_TRUE(page(u"--paper a1"_s).startsWith("ClipRect 200 200 8210 5740\n"));
    // Without room the labels alone are left.
    for (const QString& margin : {u"60,0,40,0"_s, u"0,70,0,50"_s})
        EXPECT_EQ(page(u"--paper 80x100 --frame 1 --label 9=a --margin "_s + margin).indexOf("SaveDC"), 0);

    QString labels;
    for (int i = 0; i < 18; ++i)
        labels += u"--label %1=%file%・%1 "_s.arg(i);
    const QString shown = u"--paper A5 --frame 0.3 --margin 25,20,15,30 "_s + labels;
    EXPECT_TRUE(Golden().MatchesText(u"traces/page.trace"_s, page(shown)));
    const QImage picture = QImage::fromData(page(shown + u"--dpi 60"_s, u"o.png"_s));
    EXPECT_TRUE(Golden().MatchesPicture(u"pictures/page.png"_s, picture, {1, 40}));
}

TEST_F(PageTest, LinesAreAsLongAsTheScaleSays) {
    const QString sheet = u"--paper 70x120 --margin 5,5,5,5 "_s;
    path = folder.Write(lines().Bytes());
    // Across in dots of a tenth of a millimetre, and whether there is room for it in 110 by 60 mm.
    const struct {
        QString Options;
        int Length;
        bool Fits;
    } cases[] = {{u"--scale 1:1"_s, 1000, true},
                 {u"--scale 1:1.25 --unit mm"_s, 800, true},
                 {u"--scale 1:20 --unit cm"_s, 500, true},
                 {u"--scale 1:0.9"_s, 1112, false},
                 {u"--scale 1:10 --unit m"_s, 100000, false}};
    for (const auto& c : cases) {
        const QByteArray trace = page(sheet + c.Options);
        const QByteArray ends = QByteArray::number(600 - c.Length / 2.0, 'f', 0);
        EXPECT_TRUE(trace.contains(QByteArray("MoveTo " + ends + ' '))) << c.Options.toStdString() << trace.constData();
        EXPECT_EQ(errors.contains(": the model does not fit on the page at 1:"), !c.Fits) << c.Options.toStdString();
        EXPECT_EQ(errors.count('\n'), c.Fits ? 0 : 1);
    }
    if (QStandardPaths::findExecutable(u"pdftoppm"_s).isEmpty())
        GTEST_SKIP() << "no pdftoppm";
    page(sheet + u"--scale 1:1"_s, u"o.pdf"_s);
    constexpr int perMm = 50;
    ASSERT_EQ(QProcess::execute(u"pdftoppm"_s, {u"-r"_s, QString::number(perMm * 25.4), u"-gray"_s, u"-singlefile"_s,
                                                folder.Path(u"o.pdf"_s), folder.Path(u"o"_s)}),
              0);
    const QImage image = QImage(folder.Path(u"o.pgm"_s)).convertToFormat(QImage::Format_Grayscale8);
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.constScanLine(y)[x] < 128)
                ink |= QRect(x, y, 1, 1);
    // The pen of line elements is half a millimetre wide and has round ends.
    EXPECT_NEAR(double(ink.width()) / perMm - 0.5, 100, 0.05);
    EXPECT_NEAR(double(ink.height()) / perMm - 0.5, 50, 0.05);
}

TEST_F(PageTest, TakesSheetAndLooksButNoLabelsOfAnExportedRegistry) {
    const auto written = [this](const QByteArray& values) -> QString {
        return u"--settings "_s + folder.Write("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Ordvane\\Velorin\\1.0\\"
                                               "Settings]\r\n\"Orientation\"=dword:1\r\n\"Mesh\"=dword:0\r\n"
                                               "\"Margin\"=hex:64,0,0,0,c8,0,0,0,64,0,0,0,64,0,0,0\r\n"
                                               "\"Frame\"=dword:1\r\n\"Scale Denominator\"=\"7\"\r\n" +
                                                   values,
                                               u"s.reg"_s);
    };
    const QByteArray label = "\r\n[HKEY_CURRENT_USER\\Software\\Ordvane\\Velorin\\1.0\\Settings\\Labels\\Item-1]\r\n"
                             "\"Print\"=dword:1\r\n\"Text\"=\"x\"\r\n";
    const QByteArray a3 = page(written("\"Paper Size\"=dword:8\r\n" + label));
    EXPECT_TRUE(a3.startsWith("ClipRect 100 200 2870 4100\n") && a3.endsWith("ClipNone\nSaveDC\nRestoreDC\n"));
    EXPECT_EQ(page(u"--paper A3 --orientation portrait --margin 10,20,10,10 --mesh off"_s), a3);
    const QString unknown = written("\"Paper Size\"=dword:4d2\r\n");
    EXPECT_TRUE(page(unknown).startsWith("ClipRect 100 200 2000 2870\n"));
    EXPECT_EQ(
        errors.toStdString(),
        QByteArray(folder.Path(u"s.reg"_s).toUtf8() + ": paper 1234 is not known, the page is A4\n").toStdString());
    EXPECT_TRUE(page(unknown + u" --paper A5"_s).startsWith("ClipRect 100 200 1380 2000\n") && errors.isEmpty());
}

TEST_F(PageTest, ManyAndLongLabelsInEveryFormat) {
    path = folder.Write(lines().Bytes());
    QString labels = u"--label 4=x"_s + u"%file%"_s.repeated(15000);
    for (int i = 0; i < 1000; ++i)
        labels += u" --label %1,bent,font,1e30=%title%"_s.arg(i % 18);
    for (const QString& name : {u"o.pdf"_s, u"o.svg"_s, u"o.png"_s, u"o.trace"_s})
        EXPECT_GT(page(labels, name).size(), 1000);
    EXPECT_EQ(fileBytes(u"o.trace"_s).count("\nText "), 1001);
    page(u"--label 0=縦%title% --label 1=b"_s, u"o.pdf"_s);
    EXPECT_FALSE(fileBytes(u"o.pdf"_s).contains("/Subtype /Image"));
    expectUnusable(u"page FILE -o "_s + folder.Path(u"no/o.pdf"_s), folder.Path(u"no/o.pdf"_s), "");
}

TEST_F(PageTest, WrongUsageIsToldAndNothingWritten) {
    const QString options =
        u"paper A|paper 0x10|paper 10|paper 10x10x10|paper infx10|paper 6000x10|orientation up|margin 1,2,3|"
        "margin 1,2,3,nan|margin 1,2,3,-1|margin 1,2,3,1000|frame -1|frame x|label 18=a|label a|label -1=a|label =a|"
        "scale 1:0|scale 1:-2|scale 1:nan|scale 1:inf|scale 2|scale 2:1|unit in|unit MM|dpi 72"_s;
    for (const QString& option : options.split(u'|')) {
        EXPECT_EQ(run(u"page FILE -o "_s + folder.Path(u"o.trace"_s) + u" --"_s + option), 2) << option.toStdString();
        EXPECT_EQ(errors.count('\n'), 1) << errors.constData();
    }
    EXPECT_EQ(run(u"page FILE -o "_s + folder.Path(u"o.png"_s) + u" --paper A0 --paper 5000x10 --dpi 300"_s), 2);
    EXPECT_FALSE(QFile::exists(folder.Path(u"o.trace"_s)) || QFile::exists(folder.Path(u"o.png"_s)));
    EXPECT_EQ(run(u"page --help"_s), 0);
    EXPECT_TRUE(output.contains("--scale <1:N>") && output.contains("%date%"));
}

} // namespace
