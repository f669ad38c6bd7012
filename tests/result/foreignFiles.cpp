// Files of other solvers: the same small result in each format, what is left out of it or refused, and files that are
// cut or damaged.
#include "ForeignSample.h"
#include "ModelTest.h"

#include "result/VrfWriter.h"

#include <random>

using namespace mdVelorinResultModel;

namespace {

struct Format {
    const char* name;
    QByteArray bytes;
};

std::vector<Format> formats() {
    return {{"old text.vtk", sample::legacyVtk(true, false)},
            {"old binary.vtk", sample::legacyVtk(false, false)},
            {"new text.vtk", sample::legacyVtk(true, true)},
            {"new binary.vtk", sample::legacyVtk(false, true)}};
}

class ForeignFileTest : public ModelTest {
protected:
    bool load(const QByteArray& bytes, const QString& name = u"file.vrf"_s) {
        QFile::remove(folder.Path(name)); // a file written over waits for the disk
        return LoadResultFile(folder.Write(bytes, name), model);
    }

    /// All of the last step, as text.
    static QString described(ResultModel shown) {
        EXPECT_TRUE(LoadStep(shown.StepCount - 1, 0, shown, true, -1));
        QString text;
        const auto list = [&text](const auto& numbers) {
            for (const auto number : numbers)
                text += QString::number(number) + u' ';
            text += u'\n';
        };
        list(shown.Mesh.Nodes.X);
        list(shown.Mesh.Nodes.Y);
        list(shown.Mesh.Elements.FirstCorner);
        list(shown.Mesh.Elements.NodeIndex);
        list(shown.Mesh.Elements.ElementType);
        for (int i = 0; i < shown.ItemCount; ++i) {
            const ItemInfo& item = shown.Items.at(i);
            text += u"%1|%2|%3: "_s.arg(item.Name).arg(item.ElementType).arg(item.Flags);
            list(shown.ItemData.at(i).Values);
        }
        return text + shown.Steps.back().Name;
    }

    /// Whatever the bytes are: refused, or all that can be asked for is there.
    void expectSound(const QByteArray& bytes) {
        if (!load(bytes))
            return;
        for (int step = 0; step < model.StepCount; ++step)
            ASSERT_TRUE(LoadStep(step, 0, model, false, -1));
        for (const std::int32_t node : model.Mesh.Elements.NodeIndex)
            ASSERT_LT(std::uint32_t(node), std::uint32_t(model.Mesh.NodeCount));
    }
};

const QString sampleText = u"0 1 2 0 1 2 \n0 0 0 1 1 1 \n0 4 7 10 \n0 1 4 3 1 2 5 1 5 4 \n0 0 0 \n"
                           "U X|-1|1: 0 0.5 1 0 0.5 1 \nU Y|-1|2: 0 -0.25 0.5 0.125 0.001 -2.5 \n"
                           "U Z|-1|0: 0 0 0 0 0 0 \nT at|-1|0: 1 2 3.5 -4 5e+10 6 \nE|0|0: 71 73 74 \nTime : 2.500"_s;

TEST_F(ForeignFileTest, EachFormatGivesTheSameAndSoDoesItsConversion) {
    for (const auto& [name, bytes] : formats()) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(load(bytes));
        EXPECT_EQ(described(model), sampleText);
        EXPECT_EQ(model.Note, u"読まなかったもの: 点要素 1、線要素 1"_s);
        const QString converted = folder.Path(u"converted.vrf"_s), again = folder.Path(u"again.vrf"_s);
        ASSERT_EQ(VrfWriter::Write(model, converted), std::nullopt);
        ASSERT_TRUE(LoadResultFile(converted, model));
        EXPECT_EQ(described(model), sampleText);
        ASSERT_EQ(VrfWriter::Write(model, again), std::nullopt);
        EXPECT_EQ(TestFolder::Read(again), TestFolder::Read(converted));
    }
}

TEST_F(ForeignFileTest, CutOrDamagedFilesAreRefusedOrSound) {
    std::mt19937 random{7};
    for (const auto& [name, bytes] : formats()) {
        SCOPED_TRACE(name);
        for (qsizetype length = 0; length < bytes.size(); ++length)
            expectSound(bytes.first(length));
        for (int round = 0; round < 400; ++round) {
            QByteArray bent = bytes;
            for (auto left = random() % 3 + 1; left > 0; --left)
                bent[qsizetype(random() % unsigned(bent.size()))] = char(random() % 2 ? '0' + random() % 10 : random());
            expectSound(bent);
        }
    }
}

/// A mesh in the older VTK form: points, then cells of one type.
QByteArray meshOf(const QByteArray& points, int count, const QByteArray& cells, int cellCount, int numbers, int type) {
    QByteArray types;
    for (int c = 0; c < cellCount; ++c)
        types += QByteArray::number(type) + ' ';
    const auto number = [](int value) { return QByteArray::number(value); };
    return "# vtk DataFile Version 2.0\n\nASCII\nDATASET UNSTRUCTURED_GRID\nPOINTS " + number(count) + " float\n" +
           points + "\nCELLS " + number(cellCount) + ' ' + number(numbers) + '\n' + cells + "\nCELL_TYPES " +
           number(cellCount) + '\n' + types + "\nPOINT_DATA " + number(count) + "\nSCALARS s float\n" +
           QByteArray("1 ").repeated(std::min(count, 99));
}

TEST_F(ForeignFileTest, WhatBecomesOfEachKindOfCell) {
    struct {
        int type;
        QByteArray cell;
        std::vector<int> nodes, firsts;
    } const rows[] = {{5, "3 0 1 2", {0, 1, 2}, {0, 3}},
                      {8, "4 0 1 2 3", {0, 1, 3, 2}, {0, 4}},                        // pixel
                      {7, "5 0 1 2 3 4", {0, 1, 2, 3, 4}, {0, 5}},                   // polygon
                      {22, "6 0 1 2 3 4 5", {0, 3, 1, 4, 2, 5}, {0, 6}},             // quadratic triangle
                      {28, "9 0 1 2 3 4 5 6 7 8", {0, 4, 1, 5, 2, 6, 3, 7}, {0, 8}}, // with a centre
                      {4, "4 3 1 0 2", {3, 1, 1, 0, 0, 2}, {0, 2, 4, 6}},            // poly-line
                      {21, "3 0 1 2", {0, 2, 2, 1}, {0, 2, 4}}};                     // quadratic line
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        const int nodes = row.cell.left(1).toInt();
        ASSERT_TRUE(
            load(meshOf("0 5 0 1 5 0 2 5 1 0 5 1 1 5 2 0 5 2 3 5 0 3 5 1 4 5 4", 9, row.cell, 1, nodes + 1, row.type)))
            << model.Note.toStdString();
        EXPECT_EQ(model.Mesh.Elements.NodeIndex, QList<std::int32_t>(row.nodes.begin(), row.nodes.end()));
        EXPECT_EQ(model.Mesh.Elements.FirstCorner, QList<std::int32_t>(row.firsts.begin(), row.firsts.end()));
        EXPECT_EQ(model.Mesh.Nodes.Y.at(8), 4) << "x and z, as all lies at y = 5";
        EXPECT_EQ(model.LineElementsOnly, row.type == 4 || row.type == 21);
    }
}

TEST_F(ForeignFileTest, RefusalsSayWhy) {
    const QByteArray square = "0 0 0 1 0 0 1 1 0 0 1 0";
    const std::pair<QByteArray, QString> rows[] = {
        {meshOf("0 0 0 1 0 -9 1 1 0 0 2 0", 4, "4 0 1 2 3", 1, 5, 10), u"面外の座標の最大 X = 1"_s},
        {meshOf("0 0 0 7 0 -0.5 7 7 0 0 7 0", 4, "4 0 1 2 3", 1, 5, 9), u"面外の座標の最大 Z = -0.5"_s},
        {meshOf(square, 4, "4 0 1 2 3", 1, 5, 77), u"平面の要素がありません"_s},
        {meshOf(square, 4, "4 0 1 2 4", 1, 5, 9), u"節点がありません"_s},
        {meshOf(square, 4, "4 0 1 2 3", 1, 5, 9).replace("POINT_DATA", "POINT_DOTA"), u"値がありません"_s},
        {meshOf(square, 4, "4 0 1 2 3", 1, 5, 9).replace("UNSTRUCTURED_GRID", "RECTILINEAR_GRID"), u"RECTILINEAR"_s},
        {meshOf(square, 2000000000, "4 0 1 2 3", 1, 5, 9).first(200), QString()}};
    for (const auto& [bytes, why] : rows) {
        EXPECT_FALSE(load(bytes)) << why.toStdString();
        EXPECT_TRUE(model.Note.contains(why)) << model.Note.toStdString() << " for " << why.toStdString();
        EXPECT_TRUE(IsFileClosed(model));
    }
}

} // namespace
