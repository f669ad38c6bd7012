#include "BatchTest.h"

#include "Golden.h"

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
    EXPECT_TRUE(graph(history + u"--nodes 3,1"_s, u".txt"_s).startsWith("HISTORY\t\""));
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
    for (const auto& [list, each] : {std::pair(u"5,1-3,2"_s, u"5,1,2,3"_s), {u"6-4,5-5,1,6-2"_s, u"6,5,4,1,3,2"_s}})
        EXPECT_EQ(graph(history + u"--nodes "_s + list), graph(history + u"--nodes "_s + each));
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
    const QString start = u"graph FILE -o "_s + folder.Path(u"refused.csv"_s) + u" --type "_s;
    for (const char* options : {"x --item 1 --nodes 1", "history --nodes 1", "history --item 1",
                                "history --item 1 --nodes 1 --elements 1", "history --item 1 --nodes 1 --reference 0"})
        EXPECT_EQ(run(start + QString::fromLatin1(options)), 2) << options;
    for (const char* list : {"0", "1,", ",1", "1,,2", "x", "-1", "1-", "1-2-3", "0-2", "2-0", "+1", "1-99999999999"})
        EXPECT_EQ(run(start + u"history --item 1 --nodes="_s + QString::fromLatin1(list)), 2) << list;
    for (const char* options : {"1 --nodes 7", "1 --nodes 1-2000000000", "1 --nodes 2147483647-2147483646",
                                "2 --elements 3", "3 --nodes 1", "1 --nodes 1 --reference 3"})
        expectUnusable(start + u"history --item "_s + QString::fromLatin1(options), path, "無効なパラメータです。 (");
    EXPECT_FALSE(QFile::exists(folder.Path(u"refused.csv"_s)));
}

/// Pictures with text on them are compared as pixels, the others as traces.
TEST_F(GraphTest, PicturesOfTheDemoModels) {
    struct {
        QString name, model, options;
    } const cases[] = {
        {u"graph-history"_s, u"plate"_s, u"history --item 6 --nodes 2,7-9,5"_s},
        {u"graph-upwards"_s, u"tunnel"_s, u"distribution --item 2 --nodes 1,3,28-38"_s},
        {u"graph-difference"_s, u"plate"_s, u"history --item 8 --elements 1-2 --reference 3"_s},
        {u"graph-across"_s, u"plate"_s, u"distribution --item 6 --nodes 1,2,7-39"_s},
    };
    for (const auto& c : cases) {
        path = folder.Write(TestFolder::Read(QStringLiteral(VELORIN_SOURCE_DIR "/demo/%1.vrf").arg(c.model)),
                            c.model + u".vrf");
        const QString options = u"--size 500x400 --type "_s + c.options;
        const bool isPicture = c.name == u"graph-across";
        const QByteArray made = graph(options, isPicture ? u".png"_s : u".trace"_s);
        EXPECT_TRUE(isPicture ? Golden().MatchesPicture(u"pictures/graph-across.png"_s, QImage::fromData(made), {1, 40})
                              : Golden().MatchesText(u"traces/%1.trace"_s.arg(c.name), made));
    }
}

} // namespace
