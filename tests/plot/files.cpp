// The plot's data and style files byte by byte, what is made of files written by hand, and a graph's numbers as text.
#include "TestFolder.h"
#include "plot/mdGraph.h"

#include <gtest/gtest.h>

namespace {

enum : int { Base = clsPlot::ScaleBase, Plot = clsPlot::ScalePlot, Both = clsPlot::ScaleBoth };

struct PlotFiles : testing::Test {
    const QString& written(const QByteArray& bytes) {
        EXPECT_EQ(folder.Write(bytes, u"表.txt"_s), path);
        return path;
    }
    QByteArray csvOf(const clsPlot& plot) {
        plot.CsvSave(path);
        return TestFolder::Read(path);
    }
    QByteArray styleOf(const clsPlot& plot) {
        plot.StyleSave(path);
        return TestFolder::Read(path);
    }
    static QByteArray dataFile(const char* name) {
        return TestFolder::Read(QStringLiteral(VELORIN_SOURCE_DIR "/tests/data/") + QString::fromLatin1(name));
    }

    TestFolder folder;
    const QString path = folder.Path(u"表.txt"_s); // its second byte in code page 932 is a backslash
};

void addPoints(clsPlot& plot, int series, const QString& label, const std::vector<std::pair<float, float>>& points) {
    for (const auto& [base, value] : points)
        plot.DataAdd(series, base, value);
    plot.SetDataLabel(series, label);
}

TEST_F(PlotFiles, DataComesBackToFourDigits) {
    clsPlot plot, back;
    plot.GraphTitle = u"温度"_s;
    addPoints(plot, 1, u"a\"b"_s, {{0, 1}, {0.1f, -2500.04f}, {1e-10f, 123456}});
    plot.DataLegendAdd();
    plot.SetDataLabel(2, u"空"_s);
    addPoints(plot, 3, u"x, y"_s, {{-0.0f, 2}});
    EXPECT_EQ(csvOf(plot), "TITLE,\"\x89\xb7\x93x\"\r\n\"a\"b\",1.000E0,-2.500E3,1.235E5\r\n,0.000E0,1.000E-1,1.000E-10"
                           "\r\n\"\x8b\xf3\"\r\n\r\n\"x, y\",2.000E0\r\n,0.000E0\r\n");
    back.CsvLoad(path, false);
    EXPECT_EQ(back.GraphTitle, u"温度"_s);
    // The quote in the first label leaves a quotation open that takes all values, and series 2 has none.
    EXPECT_EQ(csvOf(back), "TITLE,\"\x89\xb7\x93x\"\r\n\"\"\r\n\r\n\"\"\r\n\r\n\"x, y\",2.000E0\r\n,0.000E0\r\n");

    back.CsvLoad(written("Title,\"\nS, 1\n,2"), true);
    EXPECT_EQ(csvOf(back), "TITLE,\"\"\r\n\"S\",1.000E0\r\n,2.000E0\r\n\"\"\r\n\r\n\"x, y\",2.000E0\r\n,0.000E0\r\n");
    back.CsvLoad(folder.Path({}), true);
    EXPECT_EQ(back.DataLegendCount(), 3);
    back.CsvLoad(folder.Path({}), false);
    EXPECT_EQ(back.DataLegendCount(), 0);
}

TEST_F(PlotFiles, DataByHandIsReadLeniently) {
    clsPlot plot;
    const QByteArray byHand = dataFile("hand.csv");
    for (qsizetype length = 0; length <= byHand.size(); ++length)
        plot.CsvLoad(written(byHand.first(length)), false);
    // The fourth point has a plot value beyond range, the sixth plot value no base.
    EXPECT_EQ(csvOf(plot), "TITLE,\"last\"\r\n\"A, 1\",1.500E0,2.000E3,3.400E1,5.000E0\r\n"
                           ",0.000E0,1.000E-1,2.000E2,4.500E0\r\n\"B\",9.000E0\r\n,1.000E0\r\n");
}

TEST_F(PlotFiles, StyleComesBackButForTheGrid) {
    clsPlot plot, back;
    plot.PictureFolder = back.PictureFolder = folder.Path({});
    EXPECT_EQ(styleOf(plot), dataFile("default.style"));
    const QString picture = folder.Path(u"_back.bmp"_s);
    EXPECT_FALSE(QFile::exists(picture));

    plot.Picture = QImage(3, 2, QImage::Format_RGB32);
    plot.Picture.fill(QColor(1, 2, 3));
    plot.BackStyle = 3;
    plot.SetScaleMax(Plot, 12345.678f);
    plot.SetScaleMin(Plot, -0.0123456f);
    plot.SetScaleMScale(Plot, 0.01f); // the least without an exponent
    plot.SetScaleHScale(Plot, 1234.567f);
    plot.SetScaleFont(Base, nullptr);
    plot.SetScalePosReverse(Base, true);
    const QByteArray saved = styleOf(plot);
    for (const char* part : {"_back.bmp\r\n\r\n[SCALE_BASE]", "    glstyle=0\r\n    fcolor=", // no font, no keys of one
                             "    max=1.23457E4\r\n    min=-0.01235\r\n    mscale=0.010\r\n    hscale=1234.567\r\n"})
        EXPECT_TRUE(saved.contains(part)) << part;

    back.SetGridWidth(Both, 4);
    back.SetScaleFont(Base, nullptr);
    back.StyleLoad(path);
    EXPECT_EQ(back.Picture.convertToFormat(QImage::Format_RGB32), plot.Picture);
    plot.SetGridWidth(Both, 4);
    plot.SetGridColor(Both, 0);
    EXPECT_EQ(styleOf(back), styleOf(plot));
}

TEST_F(PlotFiles, StyleByHandIsReadLeniently) {
    clsPlot plot;
    plot.Picture = QImage(1, 1, QImage::Format_RGB32);
    // The minor step is beyond range but for its last digit, so what it was cut to stays.
    const QByteArray byHand = dataFile("hand.style");
    for (qsizetype length = 0; length <= byHand.size(); ++length) {
        plot.SetScaleFont(Base, nullptr);
        plot.StyleLoad(written(byHand.first(length)));
    }
    EXPECT_EQ(plot.Picture.width(), 1);
    plot.BackStyle = 5;
    EXPECT_EQ(styleOf(plot), dataFile("hand.saved.style"));

    plot.SetScaleFont(Both, std::make_shared<FontObject>(FontObject{.Name = u"x"_s}));
    plot.StyleLoad(written("[SCALE_PLOT]\nfsize=1e9\nfname=\nfbold=2\n[general]\nfitalic=1"));
    EXPECT_EQ(*plot.ScaleFont(Base), (FontObject{.Name = u"x"_s, .Size = 1638, .Bold = true}));
}

TEST_F(PlotFiles, GraphTextOfBothKinds) {
    Graph graph;
    graph.Plot.GraphTitle = u"T"_s;
    graph.Plot.SetScaleLabel(Plot, u"v"_s);
    EXPECT_EQ(mdGraph::GraphText(graph, u','), u"HISTORY,\"T\",\"\",\"v\"\r\n"_s);
    addPoints(graph.Plot, 1, u"節点 1"_s, {{0.1f, 1}, {2, -1234567}});
    addPoints(graph.Plot, 2, u"b"_s, {{9, 3e-7f}});
    EXPECT_TRUE(mdGraph::GraphText(graph, u'\t').endsWith(u"1.00000E-1,1.00000E0,3.00000E-7\r\n2.00000E0,-1.23457E6,"));
    graph.GraphType = GraphType::Distribution;
    graph.Plot.Orientation = 2;
    EXPECT_EQ(mdGraph::GraphText(graph, u'\t'),
              u"VERTICAL\t\"T\"\t\"\"\t\"v\"\r\n\"節点 1\"\t1.00000E-1\t2.00000E0\r\n\t1.00000E0\t-1.23457E6"
              "\r\n\"b\"\t9.00000E0\r\n\t3.00000E-7"_s);
}

} // namespace
