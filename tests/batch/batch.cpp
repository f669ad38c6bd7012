#include "BatchTest.h"
#include "result/ForeignSample.h"

#include "ConfigurationFolder.h"
#include "LittleMemory.h"
#include "OtherProgram.h"
#include "batch/commandSupport.h"
#include "platform/base/NativePath.h"
#include "platform/base/WholeFile.h"
#include "platform/device/PictureNote.h"
#include "platform/raster/PngFile.h"
#include "property/propertyFile.h"
#include "result/mdVelorinResultModel.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QJsonArray asJson(const QByteArray& text) {
    return QJsonDocument::fromJson("[" + text + "]").array();
}

class RenderTest : public BatchTest {
protected:
    /// The trace of a picture of 200 by 100 with nothing on it but lines.
    QByteArray traceOf(const QString& options, const QString& name = u"out.trace"_s) {
        const QString line = u"render FILE --size 200x100 --set contour/values/automatic=False "
                             "--set contour/values/div=0 --set displacement/fid=0 -o "_s;
        EXPECT_EQ(run(line + folder.Path(name) + u' ' + options), 0) << errors.constData();
        return fileBytes(name);
    }
};

TEST_F(BatchTest, InfoAndMeshTellWhatTheFileHolds) {
    QJsonObject info = json(u"info FILE"_s);
    EXPECT_EQ(info.take(u"file"_s), path);
    EXPECT_EQ(QJsonArray{info}, asJson(R"({"magic": "VRF10", "version": 100, "title": "試験", "nodes": 6, "elements": 2,
        "lineElementsOnly": false, "noDisplacement": false, "displacementItemX": 1, "displacementItemY": 1,
        "firstStepOffset": 213,
        "items": [{"number": 1, "name": "変位", "elementType": -1, "flags": 3},
                  {"number": 2, "name": "応力", "elementType": 2, "flags": 0}],
        "steps": [{"number": 1, "name": "初期", "time": 0, "offset": 213},
                  {"number": 2, "name": "Time : 1.250", "time": 1.25, "offset": 301}]})"));
    QJsonObject mesh = json(u"mesh FILE"_s);
    EXPECT_EQ(mesh[u"elements"][1], asJson(R"({"type": 2, "nodes": [2, 3, 6, 5],
        "neighbours": [null, null, null, 1], "centre": [1.5, 0.5]})")[0]);
    mesh = json(u"mesh --step 2 FILE"_s);
    EXPECT_EQ(mesh[u"active"].toArray(), asJson("true, true, false, true, true, false"));
    EXPECT_EQ(mesh[u"elements"][1][u"type"], -1);
    VrfBuilder file = withoutSteps();
    file.items[0].flags = 0;
    file.title = u"\"\\\u0001"_s;
    file.nodes[1] = {std::numeric_limits<double>::infinity(), 1e-7};
    file.elements = {{1, 0, -5}};
    path = folder.Write(file.Bytes());
    info = json(u"info FILE"_s);
    EXPECT_TRUE(info[u"displacementItemX"].isNull());
    EXPECT_EQ(info[u"title"], file.title);
    mesh = json(u"mesh FILE"_s);
    EXPECT_EQ(mesh[u"nodes"].toArray(), asJson("[0,0], [null, 1e-7], [2,0], [0,1], [1,1], [2,1]"));
    EXPECT_EQ(mesh[u"elements"][0][u"nodes"].toArray(), asJson("1, null, null"));
}

TEST_F(BatchTest, ValuesOfEveryQuery) {
    const QString difference = u"2 --item 変位 --reference 1 --query "_s;
    const std::pair<QString, QByteArray> cases[] = {
        {u"2 --item 変位"_s, "1,2\n2,4\n3,6\n4,8\n5,10\n6,12\n"},
        {difference + u"item"_s, "1,1\n2,2\n3,3\n4,4\n5,5\n6,6\n"},
        {difference + u"node"_s, "1,1\n2,2\n3,0\n4,4\n5,5\n6,0\n"},
        {difference + u"displacement-y"_s, "1,1\n2,2\n3,3\n4,4\n5,5\n6,6\n"},
        {u"1 --item 2 --query element"_s, "1,0\n2,10\n"},
        {u"1 --item 2 --reference 1 --query element"_s, "1,0\n2,0\n"},
    };
    for (const auto& [options, values] : cases) {
        EXPECT_EQ(run(u"values FILE --step "_s + options), 0) << errors.constData();
        EXPECT_EQ(output, "number,value\n" + values) << options.toStdString();
    }
    VrfBuilder file = twoSquares();
    const float most = std::numeric_limits<float>::max(), least = std::numeric_limits<float>::denorm_min();
    file.steps[0].values[0] = {0.1f, -1e-7f, 16777216, most, least, std::nan("")};
    path = folder.Write(file.Bytes());
    EXPECT_EQ(run(u"values FILE --step 1 --item 1"_s), 0);
    EXPECT_TRUE(output.startsWith("number,value\n1,0.1\n2,-1e-7\n3,16777216\n"));
    const QJsonObject object = json(u"values FILE --json --step=1 --item=1"_s);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(float(object[u"values"][i].toDouble()), float(file.steps[0].values[0][std::size_t(i)]));
    EXPECT_EQ(float(object[u"max"].toDouble()), most);
    EXPECT_TRUE(object[u"values"][5].isNull());
}

TEST_F(RenderTest, WritesEachFormat) {
    // Without a wish vectors are finer, on the same paper.
    const struct {
        QString name, options;
        QByteArray size;
    } cases[] = {
        {u"o.SVG"_s, u"--dpi 144"_s, "width=\"133.33\" height=\"66.67\" viewBox=\"-0.5 -0.5 200 100\""},
        {u"o.pdf"_s, u"--dpi 144"_s, "/MediaBox [0 0 100.000000 50.000000]"},
        {u"o.svg"_s, {}, "width=\"200\" height=\"100\" viewBox=\"-0.5 -0.5 2600 1300\""},
        {u"o.pdf"_s, {}, "/MediaBox [0 0 150.000000 75.000000]"},
    };
    for (const auto& c : cases)
        EXPECT_TRUE(traceOf(c.options, c.name).contains(c.size)) << c.size.constData();
    for (const auto& [options, dots] : {std::pair(QString(), 3780), {u"--dpi 144"_s, 5669}}) {
        const QImage image = QImage::fromData(traceOf(options, u"o.png"_s), "PNG");
        EXPECT_EQ(image.size(), QSize(200, 100));
        EXPECT_EQ(image.dotsPerMeterX(), dots);
    }
}

TEST_F(RenderTest, FollowsItsOptions) {
    const QByteArray plain = traceOf({});
    // The world is 2.2 by 1.2 with its margin: 83.3 dots a unit, centred.
    EXPECT_TRUE(plain.contains("MoveTo 17 92\nLineTo 100 92\n"));
    EXPECT_TRUE(traceOf(u"--zoom -3"_s).contains("MoveTo 58 71\nLineTo 100 71\n"));
    traceOf(u"--steps 1:2"_s, u"a%d.trace"_s);
    EXPECT_EQ(fileBytes(u"a1.trace"_s), plain);
    EXPECT_EQ(fileBytes(u"a2.trace"_s), traceOf(u"--step 2"_s));
    traceOf(u"--steps 1:2:2"_s, u"c%04d.trace"_s);
    EXPECT_FALSE(fileBytes(u"c0001.trace"_s).isEmpty() || QFile::exists(folder.Path(u"c0002.trace"_s)));
}

TEST_F(RenderTest, FollowsThePropertyFileUnlessToldNotTo) {
    const auto leftWith = [this](const QByteArray& elements) {
        folder.Write("<?xml version=\"1.0\"?><VRFPROPERTY>" + elements + "</VRFPROPERTY>",
                     QFileInfo(path).fileName() + u".property"_s);
    };
    const QByteArray plain = traceOf({});
    leftWith("<currentstep>1</currentstep><displacement><orgmesh>True</orgmesh></displacement>");
    EXPECT_EQ(traceOf(u"--no-property"_s), plain);
    EXPECT_EQ(traceOf({}), traceOf(u"--step 2 --no-property"_s)) << "the step that the file was left at";
    EXPECT_EQ(traceOf(u"--step 1"_s), plain) << "the command line goes before the file";
    EXPECT_NE(traceOf({}), plain);
    // A step that it alone names may be gone; what the command line names may not.
    leftWith("<currentstep>2147483647</currentstep><difference><std>2147483647</std><cnt>True</cnt></difference>");
    EXPECT_TRUE(traceOf({}).contains("MoveTo 17 92\nLineTo 100 92\n"));
    EXPECT_EQ(traceOf(u"--step 1"_s), plain);
    const QString start = u"render FILE -o "_s + folder.Path(u"o.png"_s);
    expectUnusable(start + u" --step 3"_s, path, "無効なパラメータです。 (--step: no step 3 among 2)");
    expectUnusable(start + u" --set difference/std=2147483647"_s, path,
                   "無効なパラメータです。 (--set difference/std: no step 2147483647 among 2)");
}

TEST_F(RenderTest, TakesGeneralSettingsOfAnExportedRegistry) {
    const QByteArray key = "[HKEY_CURRENT_USER\\Software\\Ordvane\\Velorin\\1.0\\Settings";
    const QString settings =
        folder.Write("REGEDIT4\r\n\r\n" + key + "]\r\n\"Real Format\"=\"0.00000\"\r\n\"Font-3\"=\"Courier, 20\"\r\n" +
                         key + "\\Graph]\r\n\"Font-0\"=\"Courier, 20\"\r\n",
                     u"s.reg"_s);
    const QString legend = u"--set contour/values/automatic=True --set contour/values/div=2 --settings "_s;
    const QByteArray trace = traceOf(legend + settings);
    EXPECT_TRUE(trace.contains("\"Courier\"") && trace.contains("1.00000\"")) << trace.constData();
    const QString graph = u"graph FILE --type history --item 1 --nodes 1 -o "_s + folder.Path(u"g.trace"_s);
    EXPECT_EQ(run(graph + u" --settings "_s + settings), 0);
    EXPECT_TRUE(fileBytes(u"g.trace"_s).contains("\"Courier\""));
    EXPECT_EQ(run(graph), 0);
    EXPECT_FALSE(fileBytes(u"g.trace"_s).contains("\"Courier\"")) << "the user's own settings are as they were";
    expectUnusable(graph + u" --settings none.reg"_s, u"none.reg"_s, "");
}

TEST_F(RenderTest, GoesOnWithoutSettingsThatAnotherProgramHoldsAndSaysSo) {
    const ConfigurationFolder own;
    const QString file = folder.Write("REGEDIT4\n[HKEY_CURRENT_USER\\bent]\n\"name\"=\"\"", u"s.reg"_s);
    EXPECT_EQ(run(u"registry import "_s + file), 0);
    folder.Write("<VRFPROPERTY/>", QFileInfo(path).fileName() + u".property"_s);
    const QByteArray plain = traceOf({}), store = Registry::StorePath().toUtf8();
    EXPECT_EQ(errors, "");
    const OtherProgram other;
    ASSERT_TRUE(other.Does("UPDATE vals SET name = char(10); BEGIN EXCLUSIVE"));
    EXPECT_EQ(traceOf({}), plain);
    EXPECT_EQ(errors, store + ": another program holds it; its settings are not used\n");
    expectUnusable(u"registry export "_s + file, Registry::StorePath(), "another program holds it");
    ASSERT_TRUE(other.Does("ROLLBACK"));
    EXPECT_EQ(run(u"registry export "_s + file), 0);
    EXPECT_EQ(errors, store + ": 1 keys or values with impossible names are left out\n");
}

TEST_F(RenderTest, WhatAPictureSaysOfItselfIsNotTrusted) {
    const QString line = u"velorin-batch render /nowhere.vrf -o /nowhere.trace --step 2 --mesh off"_s;
    const QByteArray wanted = traceOf(u"--step 2 --mesh off"_s);
    QImage image(1, 1, QImage::Format_RGB32);
    const QByteArray png = PngContent(image, line).Bytes;
    const QString like = folder.Write(png, u"p.png"_s);
    EXPECT_EQ(traceOf(u"--like "_s + like), wanted);
    EXPECT_EQ(traceOf(u"--mesh on --like "_s + like), traceOf(u"--step 2"_s)) << "what is typed goes before";
    EXPECT_FALSE(QFile::exists(u"/nowhere.trace"_s));
    const QString render = u"render FILE -o "_s + folder.Path(u"o.trace"_s) + u" --like "_s;
    for (qsizetype size = 0; size < png.indexOf("off") + 3; ++size)
        expectUnusable(render + folder.Write(png.first(size), u"cut.png"_s), folder.Path(u"cut.png"_s),
                       "it does not tell how it was made");
    for (const auto& [note, problem] : {std::pair(u"velorin-batch render a --settings b"_s,
                                                  "its command has an option that is unknown here: --settings"),
                                        {u"velorin-batch render a --step"_s, "its command ends without a value"},
                                        {u"rm -r 'a"_s, "its note is no command"}})
        expectUnusable(render + folder.Write(PictureNote::Element(note), u"p.svg"_s), folder.Path(u"p.svg"_s), problem);
    expectUnusable(render + u"none.png"_s, u"none.png"_s, "");
}

TEST_F(RenderTest, AConvertedResultGivesTheSamePicture) {
    for (const QByteArray& bytes : {twoSquares().Bytes(), sample::legacyVtk(false, true)}) {
        path = folder.Write(bytes, u"given"_s);
        const QByteArray expected = traceOf({});
        EXPECT_EQ(run(u"convert FILE "_s + folder.Path(u"made.vrf"_s)), 0);
        EXPECT_EQ(errors,
                  bytes.startsWith("VRF") ? QByteArray() : path.toUtf8() + ": 読まなかったもの: 点要素 1、線要素 1\n");
        path = folder.Path(u"made.vrf"_s);
        EXPECT_EQ(traceOf({}), expected);
    }
}

TEST_F(BatchTest, WrongUsageIsTold) {
    const QString out = folder.Path(u"o.png"_s);
    QStringList wrong = u"|draw FILE|info FILE FILE|info FILE --json|mesh FILE --step 0|values FILE --step 1|"
                        "graph FILE -o o.bmp --type history --item 1 --nodes 1|values FILE --step 1 --item 1 "
                        "--reference x|values none.vrf --step 1 --item 1 --query x|info FILE --derive max|convert "
                        "FILE|convert FILE a.vtu|render FILE|"
                        "render FILE -o o.bmp"_s.split(u'|');
    const QString options = u"size 0x10|size 40000x10|steps 1:2|steps 1:2:0|mesh yes|scale-mode 1|zoom 10|"
                            "dpi 2000000000|set contour/legend|set contour/legends=1|view 1,2,3|view 1,2,-3,4|scale 0|"
                            "slide-show 1|style line-1=1,5,0|style font-9=x|style header=steps"_s;
    for (const QString& option : options.split(u'|'))
        wrong.append(u"render FILE -o "_s + out + u" --"_s + option);
    for (const QString& line : wrong) {
        EXPECT_EQ(run(line), 2) << line.toStdString();
        EXPECT_TRUE(output.isEmpty() && !errors.isEmpty()) << line.toStdString();
    }
    EXPECT_FALSE(QFile::exists(out));
    for (const QString& help : {u"--help"_s, u"info --help"_s, u"--version"_s}) {
        EXPECT_EQ(run(help), 0);
        EXPECT_TRUE(output.contains("velorin-batch") && errors.isEmpty());
    }
}

TEST_F(BatchTest, UnusableInputIsOneLineFromThePathOn) {
    constexpr char badParameter[] = "無効なパラメータです。", badFormat[] = "ファイルの形式が不正です。";
    path = QDir::current().relativeFilePath(path); // is told as it was given
    for (const QString& line : QStringList{u"mesh FILE --step=3"_s, u"values FILE --step=1 --item=3"_s,
                                           u"values FILE --step=1 --item=1 --reference=9"_s,
                                           u"render FILE --steps=3:9 -o "_s + folder.Path(u"%d.png"_s)})
        expectUnusable(line, path, badParameter);
    const QString nowhere = folder.Path(u"none/o.png"_s);
    expectUnusable(u"render FILE -o "_s + nowhere, nowhere, "");
    for (const QString& file : {folder.Path(u"none.vrf"_s), folder.Path(u"."_s)})
        expectUnusable(u"info "_s + file, file, badParameter);
    path = folder.Write("VRF11");
    expectUnusable(u"mesh FILE"_s, path, badFormat);
}

#ifndef __SANITIZE_ADDRESS__
TEST_F(BatchTest, LittleMemoryEndsTheWorkAndNotTheProgram) {
    VrfBuilder file = twoSquares();
    file.nodes.resize(200000);
    for (VrfBuilder::Step& step : file.steps)
        step.values[0].resize(file.nodes.size(), 1);
    path = folder.Write(file.Bytes());
    const QString lines[] = {u"info FILE"_s, u"mesh FILE --step 2"_s,
                             u"values FILE --step 2 --item 1 --reference 1 --query displacement-x --json"_s,
                             u"graph FILE --type history --item 1 --nodes 1-200000 -o "_s + folder.Path(u"o.csv"_s),
                             u"render FILE --set value/disp=True --no-property -o "_s + folder.Path(u"o.trace"_s)};
    int stopped = 0;
    for (rlim_t mebibytes = 1; mebibytes < 24; mebibytes += 2)
        for (const QString& line : lines) {
            const int status = [&] {
                const LittleMemory limit(mebibytes);
                return run(line);
            }();
            EXPECT_TRUE(status == 0 || errors == "velorin-batch: out of memory\n") << errors.constData();
            stopped += status;
        }
    EXPECT_GT(stopped, 10);
}
#endif

TEST_F(BatchTest, AnOutputThatCannotBeWrittenIsTold) {
    for (const char16_t* line : {u"info", u"mesh", u"values --step 1 --item 1", u"values --help"}) {
        QFile full(u"/dev/full"_s);
        ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        QBuffer told;
        told.open(QIODevice::WriteOnly);
        EXPECT_EQ(batch::Run(QString::fromUtf16(line).split(u' ') + QStringList{path}, {full, told}), 1);
        EXPECT_EQ(told.data(), "standard output: No space left on device\n");
    }
    const QString pipe = folder.Path(u"pipe.csv"_s);
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit(), 0600), 0);
    expectUnusable(u"graph FILE --type history --item 1 --nodes 1 -o "_s + pipe, pipe, "");
    EXPECT_FALSE(QFileInfo(pipe).isFile());
}

TEST_F(BatchTest, NamesAreNoOrdersToATerminal) {
    const QString name = u"a\n\tb\x1b[2J\x7f\x9b\u202e"_s;
    run(u"info "_s + folder.Path(name));
    EXPECT_TRUE(errors.contains("a\\n\\tb\\u{1b}[2J\\u{7f}\\u{9b}\\u{202e}: ") && errors.count('\n') == 1)
        << errors.constData();
    VrfBuilder file = twoSquares();
    file.title = name.chopped(2); // the last ones are none of the code page
    path = folder.Write(file.Bytes(), name);
    EXPECT_EQ(json(u"info FILE"_s)[u"title"], file.title);
    for (const QByteArray& order : {QByteArray("\x1b"), QByteArray("\x7f"), QString(QChar(0x9b)).toUtf8()})
        EXPECT_FALSE(output.contains(order)) << order.toHex().toStdString();
}

TEST_F(RenderTest, NamesAreBytes) {
    const ConfigurationFolder configuration;
    for (const QByteArray& name : {QByteArray("\xff\xfe"), QByteArray("\x83\x65"), QByteArray("漢\xe6\xbc")}) {
        const TestFolder own;
        const QByteArray bytes = own.Path({}).toUtf8() + '/' + name;
        const QString start = NativePath::Text(bytes), shown = NativePath::Shown(start);
        path = start + u".vrf"_s;
        WholeFile::Write(path, twoSquares().Bytes());
        WholeFile::Write(start + u".style"_s, "[GENERAL]\r\nbackcolor=255\r\n");
        WholeFile::Write(start + u".reg"_s, "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\bent]\r\n");
        EXPECT_EQ(json(u"info FILE"_s)[u"file"], NativePath::Shown(path));
        ResultModel model;
        ASSERT_TRUE(mdVelorinResultModel::LoadResultFile(path, model));
        ApplicationSettings settings;
        model.CurrentStep = 1;
        EXPECT_EQ(propertyFile::SavePropertyFile(settings, model), QString());
        EXPECT_EQ(traceOf({}), traceOf(u"--step 2 --no-property"_s)) << "is read again";
        for (const char16_t* line :
             {u"render FILE --steps 1:2 -o OUT%d.trace", u"registry import OUT.reg", u"registry export OUT.reg",
              u"render FILE --settings OUT.reg -o OUT.svg",
              u"graph FILE --type history --item 1 --nodes 1 --style OUT.style --title %file% -o OUT.json"})
            EXPECT_EQ(run(QString::fromUtf16(line).replace(u"OUT"_s, start)), 0) << errors.constData();
        expectUnusable(u"info "_s + start, shown, "無効なパラメータです。");
        int written = 0;
        for (const auto& entry : std::filesystem::directory_iterator(own.Path({}).toStdString()))
            written += entry.path().filename().native().starts_with(name.toStdString());
        EXPECT_EQ(written, 8) << "and none under another name";
        std::filesystem::remove_all(own.Path({}).toStdString()); // which the toolkit can't
    }
}

TEST_F(RenderTest, DamagedNumbersStillMakePictures) {
    VrfBuilder file = twoSquares();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (const double damaged : {infinite, -1e300, 1e38, 1e30, 1e-45, std::nan("")}) {
        file.nodes[1] = {damaged, -damaged};
        file.steps[0].values[0][1] = file.steps[1].time = damaged;
        path = folder.Write(file.Bytes());
        for (const QString& name : {u"o.png"_s, u"o.svg"_s, u"o.trace"_s, u"o.json"_s}) {
            for (int fiducial = 1; fiducial <= 3 && name != u"o.json"; ++fiducial)
                EXPECT_FALSE(traceOf(u"--set displacement/fid=%1"_s.arg(fiducial), name).isEmpty()) << damaged;
            for (const QString& type : {u"history"_s, u"distribution"_s})
                EXPECT_EQ(run(u"graph FILE --item 1 --nodes 1-4 --type "_s + type + u" -o "_s + folder.Path(name)), 0)
                    << damaged << errors.constData();
        }
    }
}

} // namespace
