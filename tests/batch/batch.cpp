#include "batch/commandLine.h"

#include "result/VrfBuilder.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>
#include <limits>

namespace {

QJsonArray asJson(const QByteArray& text) {
    return QJsonDocument::fromJson("[" + text + "]").array();
}

class BatchTest : public testing::Test {
protected:
    /// Runs a command line; what it wrote stands in `output` and `errors`.
    int run(const QStringList& arguments) {
        QBuffer outputBuffer(&output), errorBuffer(&errors);
        output.clear();
        errors.clear();
        outputBuffer.open(QIODevice::WriteOnly);
        errorBuffer.open(QIODevice::WriteOnly);
        return batch::Run(arguments, {outputBuffer, errorBuffer});
    }
    QJsonObject json(const QStringList& arguments) {
        EXPECT_EQ(run(arguments), 0) << errors.constData();
        EXPECT_TRUE(errors.isEmpty() && output.endsWith('\n'));
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(output, &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << output.constData();
        return document.object();
    }
    QByteArray csv(const QStringList& options) {
        EXPECT_EQ(run(QStringList{u"values"_qs, path} + options), 0) << errors.constData();
        return output;
    }
    void expectUnusable(const QStringList& arguments, const QString& file, const char* reason) {
        EXPECT_EQ(run(arguments), 1) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(errors.startsWith(QByteArray(file.toUtf8() + ": " + reason))) << errors.constData();
        EXPECT_EQ(errors.count('\n'), 1) << errors.constData();
        EXPECT_TRUE(errors.endsWith('\n') && output.isEmpty()) << output.constData();
    }
    QByteArray fileBytes(const QString& name) const {
        QFile file(folder.Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The trace of a picture of 200 by 100 with nothing on it but lines.
    QByteArray traceOf(const QStringList& options, const QString& name = u"out.trace"_qs) {
        EXPECT_EQ(run(QStringList{u"render"_qs, path, u"-o"_qs, folder.Path(name), u"--size"_qs, u"200x100"_qs,
                                  u"--set"_qs, u"contour/values/automatic=False"_qs, u"--set"_qs,
                                  u"contour/values/div=0"_qs, u"--set"_qs, u"displacement/fid=0"_qs} +
                      options),
                  0)
            << errors.constData();
        return fileBytes(name);
    }

    TestFolder folder;
    QString path = folder.Write(twoSquares().Bytes(), u"二つ.vrf"_qs);
    QByteArray output, errors;
};

TEST_F(BatchTest, InfoTellsWhatTheFileHolds) {
    QJsonObject info = json({u"info"_qs, path});
    EXPECT_EQ(info.take(u"file"_qs), path);
    EXPECT_EQ(QJsonArray{info}, asJson(R"({"magic": "VRF10", "version": 100, "title": "試験", "nodes": 6, "elements": 2,
        "lineElementsOnly": false, "noDisplacement": false, "displacementItemX": 1, "displacementItemY": 1,
        "firstStepOffset": 213,
        "items": [{"number": 1, "name": "変位", "elementType": -1, "flags": 3},
                  {"number": 2, "name": "応力", "elementType": 2, "flags": 0}],
        "steps": [{"number": 1, "name": "初期", "time": 0, "offset": 213},
                  {"number": 2, "name": "Time : 1.250", "time": 1.25, "offset": 301}]})"));
    VrfBuilder file = twoSquares();
    file.items[0].flags = 0;
    file.title = u"\"\\\u0001"_qs;
    file.steps[0].time = std::numeric_limits<double>::quiet_NaN();
    info = json({u"info"_qs, folder.Write(file.Bytes())});
    EXPECT_TRUE(info[u"displacementItemX"].isNull());
    EXPECT_EQ(info[u"title"], file.title);
    EXPECT_TRUE(info[u"steps"][0][u"time"].isNull());
}

TEST_F(BatchTest, MeshCountsFromOneAndShowsTheStepsOwnElements) {
    QJsonObject mesh = json({u"mesh"_qs, path});
    EXPECT_EQ(mesh[u"nodes"].toArray(), asJson("[0,0],[1,0],[2,0],[0,1],[1,1],[2,1]"));
    EXPECT_EQ(mesh[u"elements"][1], asJson(R"({"type": 2, "nodes": [2, 3, 6, 5],
        "neighbours": [null, null, null, 1], "centre": [1.5, 0.5]})")[0]);
    mesh = json({u"mesh"_qs, u"--step"_qs, u"2"_qs, path});
    EXPECT_EQ(mesh[u"active"].toArray(), asJson("true, true, false, true, true, false"));
    EXPECT_EQ(mesh[u"elements"][0][u"neighbours"].toArray(), asJson("null, null, null, null"));
    EXPECT_EQ(mesh[u"elements"][1][u"type"], -1);
    VrfBuilder file = twoSquares();
    file.nodes[1] = {std::numeric_limits<double>::infinity(), 1e-7};
    file.elements = {{1, 0, -5}};
    file.steps = {};
    mesh = json({u"mesh"_qs, folder.Write(file.Bytes())});
    EXPECT_EQ(mesh[u"nodes"][1].toArray(), asJson("null, 1e-7"));
    EXPECT_EQ(mesh[u"elements"][0][u"nodes"].toArray(), asJson("1, null, null"));
}

TEST_F(BatchTest, ValuesOfEveryQuery) {
    const QStringList second{u"--step"_qs, u"2"_qs, u"--item"_qs, u"変位"_qs};
    const QStringList difference = second + QStringList{u"--reference"_qs, u"1"_qs};
    EXPECT_EQ(csv(second), "number,value\n1,2\n2,4\n3,6\n4,8\n5,10\n6,12\n");
    EXPECT_EQ(csv(difference), "number,value\n1,1\n2,2\n3,3\n4,4\n5,5\n6,6\n");
    EXPECT_EQ(csv(difference + QStringList{u"--query"_qs, u"node"_qs}), "number,value\n1,1\n2,2\n3,0\n4,4\n5,5\n6,0\n");
    EXPECT_EQ(csv(difference + QStringList{u"--query"_qs, u"displacement-y"_qs}), csv(difference));
    EXPECT_EQ(csv(second + QStringList{u"--query"_qs, u"displacement-x"_qs}), csv(second));
    const QStringList stress{u"--item"_qs, u"2"_qs, u"--step"_qs, u"1"_qs};
    EXPECT_EQ(csv(stress), "number,value\n1,10\n");
    EXPECT_EQ(csv(stress + QStringList{u"--query"_qs, u"element"_qs}), "number,value\n1,0\n2,10\n");
    EXPECT_EQ(csv(stress + QStringList{u"--query"_qs, u"node"_qs}), "number,value\n1,0\n2,5\n3,10\n4,0\n5,5\n6,10\n");
    EXPECT_EQ(
        csv({u"--item"_qs, u"2"_qs, u"--step"_qs, u"2"_qs, u"--reference"_qs, u"1"_qs, u"--query"_qs, u"element"_qs}),
        "number,value\n1,0\n2,0\n");
}

TEST_F(BatchTest, RealsReadBackAndWhatIsNoNumberIsNullInJson) {
    VrfBuilder file = twoSquares();
    const float most = std::numeric_limits<float>::max();
    const std::vector<float> values{0.1f, -1e-7f, 1e20f, most, std::numeric_limits<float>::denorm_min(), 16777216};
    file.steps[0].values[0].assign(values.begin(), values.end());
    file.steps[1].values[0][2] = std::numeric_limits<double>::quiet_NaN();
    file.steps[1].values[0][3] = -std::numeric_limits<double>::infinity();
    path = folder.Write(file.Bytes());
    const QStringList first{u"--step"_qs, u"1"_qs, u"--item"_qs, u"1"_qs};
    const QJsonObject json1 = json(QStringList{u"values"_qs, path, u"--json"_qs} + first);
    const QList<QByteArray> lines = csv(first).split('\n');
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(float(json1[u"values"][qsizetype(i)].toDouble()), values[i]);
        EXPECT_EQ(std::strtof(lines[qsizetype(i) + 1].split(',')[1].constData(), nullptr), values[i]);
    }
    EXPECT_EQ(lines[1], "1,0.1");
    EXPECT_EQ(json1[u"count"], 6);
    EXPECT_EQ(float(json1[u"max"].toDouble()), most);
    const QJsonObject json2 = json({u"values"_qs, path, u"--json"_qs, u"--step=2"_qs, u"--item=1"_qs});
    EXPECT_EQ(json2[u"values"].toArray(), asJson("2, 4, null, null, 10, 12"));
    EXPECT_TRUE(json2[u"min"].isNull());
    EXPECT_EQ(json2[u"max"], 12);
}

TEST_F(BatchTest, RenderWritesEachFormat) {
    const QByteArray trace = traceOf({});
    EXPECT_TRUE(trace.startsWith("SaveDC\n") && trace.endsWith("RestoreDC\n"));
    EXPECT_GT(trace.count("LineTo"), 5);
    struct {
        QString name;
        QByteArray start;
    } const cases[] = {{u"o.png"_qs, "\x89PNG"}, {u"o.SVG"_qs, "<?xml"}, {u"o.pdf"_qs, "%PDF-"}};
    for (const auto& expected : cases)
        EXPECT_TRUE(traceOf({u"--dpi"_qs, u"144"_qs}, expected.name).startsWith(expected.start))
            << expected.name.toStdString();
    const QImage image(folder.Path(u"o.png"_qs));
    EXPECT_EQ(image.size(), QSize(200, 100));
    EXPECT_EQ(image.dotsPerMeterX(), 5669);
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_TRUE(fileBytes(u"o.SVG"_qs).contains("viewBox=\"0 0 200 100\""));
    EXPECT_TRUE(fileBytes(u"o.pdf"_qs).contains("/MediaBox [0 0 100.000000 50.000000]"));
}

TEST_F(BatchTest, RenderFollowsItsOptions) {
    const QByteArray plain = traceOf({});
    EXPECT_EQ(traceOf({u"--step"_qs, u"1"_qs, u"--item"_qs, u"変位"_qs, u"--zoom"_qs, u"0"_qs}), plain);
    // The world is 2.2 by 1.2 with its margin: 83.3 dots a unit, centred.
    EXPECT_TRUE(plain.contains("MoveTo 17 92\nLineTo 100 92\n"));
    EXPECT_TRUE(traceOf({u"--zoom"_qs, u"-3"_qs}).contains("MoveTo 58 71\nLineTo 100 71\n"));
    EXPECT_LT(traceOf({u"--step"_qs, u"2"_qs}).count("LineTo"), plain.count("LineTo"));
    EXPECT_EQ(traceOf({u"--mesh"_qs, u"OFF"_qs}).count("LineTo 100 8\n"), 1);
    EXPECT_NE(traceOf({u"--dpi"_qs, u"600"_qs}), plain);
    EXPECT_NE(traceOf({u"--set"_qs, u"displacement/fid=2"_qs}), plain);
}

TEST_F(BatchTest, StepsAreWrittenUnderTheirNumbers) {
    const QByteArray second = traceOf({u"--step"_qs, u"2"_qs});
    traceOf({u"--steps"_qs, u"1:2"_qs}, u"a%d.trace"_qs);
    EXPECT_EQ(fileBytes(u"a2.trace"_qs), second);
    EXPECT_FALSE(fileBytes(u"a1.trace"_qs).isEmpty());
    traceOf({u"--steps"_qs, u"2:2:5"_qs}, u"b%04d.trace"_qs);
    EXPECT_EQ(fileBytes(u"b0002.trace"_qs), second);
    traceOf({u"--steps"_qs, u"1:2:2"_qs}, u"c%03d.trace"_qs);
    EXPECT_FALSE(fileBytes(u"c001.trace"_qs).isEmpty() || QFile::exists(folder.Path(u"c002.trace"_qs)));
}

TEST_F(BatchTest, WrongUsageIsTold) {
    const QString out = folder.Path(u"o.png"_qs);
    const auto render = [&](const QString& option, const QString& value) {
        return QStringList{u"render"_qs, path, u"-o"_qs, out, option, value};
    };
    const QStringList values{u"values"_qs, path, u"--step"_qs, u"1"_qs, u"--item"_qs, u"1"_qs};
    const QList<QStringList> wrong{{},
                                   {u"draw"_qs, path},
                                   {u"info"_qs},
                                   {u"info"_qs, path, path},
                                   {u"info"_qs, path, u"--json"_qs},
                                   {u"mesh"_qs, path, u"--step"_qs, u"0"_qs},
                                   {u"mesh"_qs, path, u"--step"_qs},
                                   values.mid(0, 4),
                                   values + QStringList{u"--query"_qs, u"nodes"_qs},
                                   values + QStringList{u"--reference"_qs, u"x"_qs},
                                   {u"values"_qs, u"none.vrf"_qs, u"--step=1"_qs, u"--item=1"_qs, u"--query=x"_qs},
                                   {u"render"_qs, path},
                                   {u"render"_qs, path, u"-o"_qs, u"o.bmp"_qs},
                                   render(u"--size"_qs, u"0x10"_qs),
                                   render(u"--size"_qs, u"40000x10"_qs),
                                   render(u"--size"_qs, u"10"_qs),
                                   render(u"--steps"_qs, u"1:2"_qs),
                                   render(u"--steps"_qs, u"2:1"_qs),
                                   render(u"--steps"_qs, u"1:2:0"_qs),
                                   render(u"--mesh"_qs, u"yes"_qs),
                                   render(u"--scale-mode"_qs, u"1"_qs),
                                   render(u"--zoom"_qs, u"-8"_qs),
                                   render(u"--zoom"_qs, u"10"_qs),
                                   render(u"--dpi"_qs, u"2000000000"_qs),
                                   render(u"--set"_qs, u"contour/legend"_qs),
                                   render(u"--set"_qs, u"contour/legends=1"_qs)};
    for (const QStringList& arguments : wrong) {
        EXPECT_EQ(run(arguments), 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(output.isEmpty() && !errors.isEmpty()) << arguments.join(u' ').toStdString();
    }
    EXPECT_FALSE(QFile::exists(out));
    for (const QStringList& help : {QStringList{u"--help"_qs}, {u"info"_qs, u"--help"_qs}, {u"--version"_qs}}) {
        EXPECT_EQ(run(help), 0);
        EXPECT_TRUE(output.contains("velorin-batch") && errors.isEmpty());
    }
}

TEST_F(BatchTest, UnusableInputIsOneLineFromThePathOn) {
    constexpr char badParameter[] = "無効なパラメータです。", badFormat[] = "ファイルの形式が不正です。";
    const QByteArray whole = twoSquares().Bytes();
    const QString missing = folder.Path(u"none.vrf"_qs);
    const QStringList files{folder.Write(QByteArray(), u"empty.vrf"_qs), folder.Write("VRF11", u"other.vrf"_qs),
                            folder.Write(whole.left(190), u"cut.vrf"_qs)};
    for (const QString& command : {u"info"_qs, u"mesh"_qs}) {
        for (const QString& file : {missing, folder.Path(u"."_qs)})
            expectUnusable({command, file}, file, badParameter);
        for (const QString& file : files)
            expectUnusable({command, file}, file, badFormat);
    }
    // A path from the current folder is told as it was given.
    const QString relative = QDir::current().relativeFilePath(path);
    for (const QString& file : {path, relative}) {
        expectUnusable({u"mesh"_qs, file, u"--step=3"_qs}, file, badParameter);
        expectUnusable({u"values"_qs, file, u"--step=1"_qs, u"--item=3"_qs}, file, badParameter);
        expectUnusable({u"values"_qs, file, u"--step=1"_qs, u"--item=1"_qs, u"--reference=9"_qs}, file, badParameter);
        expectUnusable({u"render"_qs, file, u"-o"_qs, folder.Path(u"%d.png"_qs), u"--steps=3:9"_qs}, file,
                       badParameter);
    }
    const QString nowhere = folder.Path(u"none/o.png"_qs);
    expectUnusable({u"render"_qs, path, u"-o"_qs, nowhere}, nowhere, "");
}

TEST_F(BatchTest, DamagedNumbersStillMakeAPicture) {
    VrfBuilder file = twoSquares();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double damaged : {infinite, -1e300, 1e30, std::numeric_limits<double>::quiet_NaN()}) {
        file.nodes[1] = {damaged, -damaged};
        file.steps[0].values[0][3] = damaged;
        path = folder.Write(file.Bytes());
        for (const QString& name : {u"o.png"_qs, u"o.trace"_qs})
            for (const QString& fiducial : {u"1"_qs, u"2"_qs, u"3"_qs})
                EXPECT_FALSE(traceOf({u"--set"_qs, u"displacement/fid="_qs + fiducial}, name).isEmpty()) << damaged;
    }
}

} // namespace
