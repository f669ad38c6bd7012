#include "BatchTest.h"

#include "Golden.h"

#include <sys/stat.h>

namespace {

class GraphTest : public BatchTest {
protected:
    /// What `graph` wrote into a file with this ending.
    QByteArray graph(const QString& options, const QString& ending = u".csv"_s) {
        const QString out = u"o"_s + ending;
        EXPECT_EQ(run(u"graph FILE -o "_s + folder.Path(out) + u' ' + options), 0) << errors.constData();
        EXPECT_TRUE(output.isEmpty() && errors.isEmpty());
        return fileBytes(out);
    }
    static QByteArray ansi(const char* text) { return Codepage::Encode(QString::fromUtf8(text)); }
};

const QString history = u"--type history --item 1 "_s, distribution = u"--type distribution --item 1 "_s;

TEST_F(GraphTest, NumbersOfBothKinds) {
    const QByteArray csv = ansi("HISTORY,\"変位時系列図\",\"経過時間\",\"変位\"\r\n,\"節点 : 3\",\"節点 : 1\"\r\n"
                                "0.00000E0,3.00000E0,1.00000E0\r\n1.25000E0,6.00000E0,2.00000E0\r\n");
    EXPECT_EQ(graph(history + u"--nodes 3,1"_s), csv);
    const qsizetype first = csv.indexOf('\n');
    EXPECT_EQ(graph(history + u"--nodes 3,1"_s, u".txt"_s),
              csv.left(first).replace(',', '\t') + csv.mid(first)); // only the first line has tabs
    // From 1 to 6 and from 0 to 1.25, in steps of a fifth of 1 and of 0.5.
    EXPECT_EQ(graph(history + u"--nodes 3,1"_s, u".json"_s),
              "{\"type\":\"history\",\"item\":\"変位\",\"title\":\"変位時系列図\",\"orientation\":0,"
              "\"base\":{\"max\":1.5,\"min\":0,\"major\":0.5,\"minor\":0.1},"
              "\"plot\":{\"max\":6,\"min\":1,\"major\":1,\"minor\":0.2},"
              "\"series\":[{\"label\":\"節点 : 3\",\"base\":[0,1.25],\"plot\":[3,6]},"
              "{\"label\":\"節点 : 1\",\"base\":[0,1.25],\"plot\":[1,2]}]}\n");
    EXPECT_TRUE(graph(history + u"--nodes 3,1 --reference 1"_s)
                    .endsWith("\r\n0.00000E0,0.00000E0,0.00000E0\r\n1.25000E0,3.00000E0,1.00000E0\r\n"));
    EXPECT_TRUE(graph(u"--type history --item 応力 --elements 2,1"_s)
                    .endsWith("\r\n0.00000E0,1.00000E1,0.00000E0\r\n1.25000E0,0.00000E0,0.00000E0\r\n"));
    // Upwards, from the top.
    EXPECT_TRUE(graph(distribution + u"--nodes 1,4 --reference 2"_s, u".json"_s)
                    .endsWith("\"series\":[{\"label\":\"ステップ : 1\",\"base\":[1,0],\"plot\":[-4,-1]},"
                              "{\"label\":\"ステップ : 2\",\"base\":[1,0],\"plot\":[0,0]}]}\n"));
    path = folder.Write(withoutSteps().Bytes());
    EXPECT_EQ(graph(distribution + u"--nodes 1-6"_s), ansi("HORIZONTAL,\"変位分布図\",\"位置\",\"変位\"\r\n"));
    EXPECT_FALSE(graph(history + u"--nodes 1-6"_s, u".png"_s).isEmpty());
}

TEST_F(GraphTest, ListsKeepTheirOrderAndEachNumberOnce) {
    const auto labels = [&](const char* list) {
        const QList<QByteArray> lines = graph(history + u"--nodes "_s + QString::fromLatin1(list)).split('\n');
        return Codepage::Decode(lines.value(1)).remove(u"節点 : "_s).remove(u'"').trimmed();
    };
    EXPECT_EQ(labels("5,1-3,2"), u",5,1,2,3");
    EXPECT_EQ(labels("6-4,5-5,1,6-2"), u",6,5,4,1,3,2");
}

TEST_F(GraphTest, StyleFileGoesOverTheDefaultsAndTheTitleOverBoth) {
    const QString style =
        folder.Write("CPS10#\r\n[GENERAL]\r\n orientation=1\r\n backcolor=0x0000ff00\r\n[SCALE_PLOT]\r\n"
                     " auto=0\r\n max=9\r\n min=-1\r\n mscale=5\r\n hscale=0.5\r\n",
                     u"s.style"_s);
    const QString options = distribution + u"--nodes 1-3 --title <%item%|%name%|%title%|%file%> --style "_s + style;
    EXPECT_TRUE(graph(options).startsWith(ansi("VERTICAL,\"<変位|分布図|試験|二つ.vrf>\",")));
    EXPECT_TRUE(graph(options, u".json"_s)
                    .contains("\"orientation\":1,\"base\":{\"max\":2,\"min\":0,\"major\":0.5,\"minor\":0.1},"
                              "\"plot\":{\"max\":9,\"min\":-1,\"major\":5,\"minor\":0.5}"));
    const QImage picture = QImage::fromData(graph(options + u" --size 300x200"_s, u".PNG"_s));
    EXPECT_EQ(picture.size(), QSize(300, 200));
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(0, 255, 0));
    expectUnusable(u"graph FILE -o "_s + folder.Path(u"n.csv"_s) + u' ' + options + u".none"_s, style + u".none"_s, "");
}

TEST_F(GraphTest, RefusesWhatItCannotDraw) {
    const QString out = folder.Path(u"refused.csv"_s), start = u"graph FILE -o "_s + out + u' ';
    for (const char* options :
         {"--item 1 --nodes 1", "--type history --nodes 1", "--type history --item 1", "--type x --item 1 --nodes 1",
          "--type history --item 1 --nodes 1 --elements 1", "--type history --item 1 --nodes 1 --reference 0"})
        EXPECT_EQ(run(start + QString::fromLatin1(options)), 2) << options;
    for (const char* list : {"0", "1,", ",1", "1,,2", "x", "-1", "1-", "1-2-3", "0-2", "2-0", "+1", "1-99999999999"})
        EXPECT_EQ(run(start + history + u"--nodes="_s + QString::fromLatin1(list)), 2) << list;
    EXPECT_EQ(run(u"graph FILE -o "_s + out + u".bmp "_s + history + u"--nodes 1"_s), 2);
    EXPECT_TRUE(errors.contains(".png, .svg, .pdf, .trace, .csv, .txt or .json"));
    for (const char* options : {"1 --nodes 7", "1 --nodes 1-2000000000", "1 --nodes 2147483647-2147483646",
                                "2 --elements 3", "3 --nodes 1", "1 --nodes 1 --reference 3"})
        expectUnusable(start + u"--type history --item "_s + QString::fromLatin1(options), path,
                       "無効なパラメータです。 (");
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(GraphTest, OutputThatCannotBeWrittenStays) {
    const QString pipe = folder.Path(u"pipe.csv"_s);
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit(), 0600), 0);
    expectUnusable(u"graph FILE -o "_s + pipe + u' ' + history + u"--nodes 1"_s, pipe, "");
    EXPECT_FALSE(QFileInfo(pipe).isFile());
}

/// Pictures with text on them are compared as pixels, the others as traces; a changed option must change either.
TEST_F(GraphTest, PicturesOfTheDemoModels) {
    struct {
        QString name, model, options, changed;
    } const cases[] = {
        {u"graph-history.trace"_s, u"plate"_s, u"history --item 6 --nodes 2,7-9,5"_s, u"--reference 2"_s},
        {u"graph-upwards.trace"_s, u"tunnel"_s, u"distribution --item 2 --nodes 1,3,28-38"_s, u"--reference 12"_s},
        {u"graph-difference.trace"_s, u"plate"_s, u"history --item 8 --elements 1-2 --reference 3"_s,
         u"--reference 4"_s},
        {u"graph-across.png"_s, u"plate"_s, u"distribution --item 6 --nodes 1,2,7-39"_s, u"--title x"_s},
    };
    for (const auto& c : cases) {
        QFile model(QStringLiteral(VELORIN_SOURCE_DIR "/demo/") + c.model + u".vrf");
        ASSERT_TRUE(model.open(QIODevice::ReadOnly));
        path = folder.Write(model.readAll(), c.model + u".vrf");
        const QString options = u"--size 500x400 --type "_s + c.options + u' ',
                      ending = c.name.mid(c.name.indexOf(u'.'));
        const QByteArray made = graph(options, ending);
        EXPECT_NE(graph(options + c.changed, ending), made) << c.name.toStdString();
        EXPECT_TRUE(ending == u".trace"
                        ? Golden().MatchesText(u"traces/"_s + c.name, made)
                        : Golden().MatchesPicture(u"pictures/"_s + c.name, QImage::fromData(made), {1, 40}));
    }
}

} // namespace
