// Files of other solvers: the same small result in each format, what is left out of it or refused, and files that are
// cut or damaged.
#include "ForeignSample.h"
#include "ModelTest.h"

#include "result/VrfWriter.h"
#include "result/readers/TextStretches.h"

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
            {"new binary.vtk", sample::legacyVtk(false, true)},
            {"text.vtu", sample::xmlVtk({})},
            {"inline.vtu", sample::xmlVtk({sample::Packing::Inline})},
            {"inline zlib.vtu", sample::xmlVtk({sample::Packing::Inline, sample::Packing::Zlib, true, true})},
            {"appended zlib.vtu", sample::xmlVtk({sample::Packing::Appended, sample::Packing::Zlib})},
            {"raw.vtu", sample::xmlVtk({sample::Packing::AppendedRaw, sample::Packing::Plain, true})},
            {"raw lz4.vtu", sample::xmlVtk({sample::Packing::AppendedRaw, sample::Packing::Lz4, false, true})},
            {"text 2.msh", sample::gmsh(true, false)},
            {"binary 2.msh", sample::gmsh(false, false)},
            {"text 4.msh", sample::gmsh(true, true)},
            {"binary 4.msh", sample::gmsh(false, true)},
            {"short text.frd", sample::frd(0)},
            {"long text.frd", sample::frd(1)},
            {"singles.frd", sample::frd(2)},
            {"doubles.frd", sample::frd(3)}};
}

class ForeignFileTest : public ModelTest {
protected:
    ~ForeignFileTest() override { TextStretches::StretchBytes = usualStretch; }

    bool load(const QByteArray& bytes, const QString& name = u"file.vrf"_s) {
        QFile::remove(folder.Path(name)); // a file written over waits for the disk
        return LoadResultFile(folder.Write(bytes, name), model);
    }

    const qint64 usualStretch = TextStretches::StretchBytes;

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

    /// Of the last step one by one, which some formats read from where they stand; then as they come with the step.
    static void expectSingleValuesAsLoaded(ResultModel shown) {
        const std::shared_ptr<const StepSource> source = shown.Source;
        const std::int32_t step = shown.StepCount - 1;
        QList<QList<float>> single(shown.ItemCount);
        for (std::int32_t item = 0; item < shown.ItemCount; ++item)
            for (float& value : single[item] = QList<float>(source->ValueCount(step, item)))
                source->ReadValues(step, item, &value - single[item].constData(), {&value, 1});
        ASSERT_TRUE(LoadStep(step, 0, shown, true, -1));
        for (std::int32_t item = 0; item < shown.ItemCount; ++item)
            EXPECT_EQ(single.at(item), shown.ItemData.at(item).Values) << item;
    }

    /// Whatever the file holds: refused, of a cut one for that reason, or all that can be asked for is there.
    void expectSound(const QString& path, bool isCut) {
        if (!LoadResultFile(path, model)) {
            EXPECT_TRUE(!isCut || !IsResultFile(path) || model.Note.contains(u"ファイルが途中で終わっています。") ||
                        model.Note == u"平面の要素がありません。" || model.Note == u"計算結果の値がありません。")
                << model.Note.toStdString();
            return;
        }
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
    std::vector<Format> all = formats(), again = all;
    all.insert(all.end(), again.begin(), again.end());
    for (const auto& [name, bytes] : all) {
        SCOPED_TRACE(name);
        if (&bytes == &all[again.size()].bytes)
            TextStretches::StretchBytes = 24; // no line is in one alone
        ASSERT_TRUE(load(bytes)) << model.Note.toStdString();
        QString expected = sampleText, note = u"読まなかったもの: 点要素 1、線要素 1"_s;
        if (QByteArray(name).endsWith(".frd")) {
            expected.replace(u"U "_s, u"DISP "_s).remove(u"E|0|0: 71 73 74 \n"_s);
            for (int c = 7; c > 0; --c)
                expected.insert(expected.indexOf(u"Time"_s), u"MANY C%1|-1|0: 1.5 1.5 1.5 1.5 1.5 1.5 \n"_s.arg(8 - c));
            note.remove(u"点要素 1、"_s);
        }
        EXPECT_EQ(described(model), expected);
        EXPECT_EQ(model.Note, note);
        expectSingleValuesAsLoaded(model);
        const QString converted = folder.Path(u"converted.vrf"_s), second = folder.Path(u"again.vrf"_s);
        ASSERT_EQ(VrfWriter::Write(model, converted), std::nullopt);
        ASSERT_TRUE(LoadResultFile(converted, model));
        EXPECT_EQ(described(model), expected);
        ASSERT_EQ(VrfWriter::Write(model, second), std::nullopt);
        EXPECT_EQ(TestFolder::Read(second), TestFolder::Read(converted));
    }
}

TEST_F(ForeignFileTest, CutOrDamagedFilesAreRefusedOrSound) {
    std::mt19937 random{7};
    for (const auto& [name, bytes] : formats()) {
        SCOPED_TRACE(name);
        TextStretches::StretchBytes = random() % 2 ? 40 : usualStretch;
        // Bent and cut where it lies, which no disk is waited for.
        QFile file(folder.Write(bytes, QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        const auto put = [&file](qsizetype place, char byte) { return file.seek(place) && file.putChar(byte); };
        for (int round = 0; round < 200; ++round) {
            const qsizetype places[] = {qsizetype(random() % unsigned(bytes.size())),
                                        qsizetype(random() % unsigned(bytes.size()))};
            for (const qsizetype place : places)
                ASSERT_TRUE(put(place, char(random() % 2 ? '0' + random() % 10 : random())));
            expectSound(file.fileName(), false);
            for (const qsizetype place : places)
                ASSERT_TRUE(put(place, bytes[place]));
        }
        for (qsizetype length = bytes.size(); length-- > 0;) {
            SCOPED_TRACE(length);
            ASSERT_TRUE(file.resize(length));
            expectSound(file.fileName(), true);
        }
    }
}

TEST_F(ForeignFileTest, OfAGrowingFileNoHalfStepCounts) {
    for (const auto& [name, bytes] : formats()) {
        const QByteArrayView ending = QByteArrayView(name).last(4);
        if (ending == ".vtu" && !QByteArrayView(name).startsWith("raw"))
            continue; // what lacks its last tag isn't read at all
        SCOPED_TRACE(name);
        ASSERT_TRUE(load(bytes));
        ResultModel whole = model;
        QFile file(folder.Write(bytes, QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        int shown = 0;
        for (qsizetype length = bytes.size(); length > 0; length -= 1 + length % 3) {
            ASSERT_TRUE(file.resize(length));
            if (!LoadSettledFile(file.fileName(), length, model))
                continue;
            for (std::int32_t step = 0; step < model.StepCount; ++step) {
                ASSERT_TRUE(LoadStep(step, 0, model, true, -1) && LoadStep(step, 0, whole, true, -1));
                for (qsizetype item = 0; item < model.ItemData.size(); ++item)
                    if (model.ItemData.at(item).Count > 0) {
                        ASSERT_EQ(model.Items.at(item).Name, whole.Items.at(item).Name);
                        ASSERT_EQ(model.ItemData.at(item).Values, whole.ItemData.at(item).Values) << length;
                        ++shown;
                    }
            }
        }
        EXPECT_GT(shown, whole.ItemCount - 1) << "at least the whole one";
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

TEST_F(ForeignFileTest, ASeriesIsOfOneMeshAndOfItsOwnFolder) {
    const sample::Packing zlib{sample::Packing::Inline, sample::Packing::Zlib};
    const auto series = [this](const QByteArray& members) {
        QByteArray file = "<VTKFile type=\"Collection\"><Collection>";
        for (const QByteArray& member : members.split(' '))
            file += "<DataSet timestep=\"" + member.left(1) + "\" file=\"" + member.mid(1) + "\"/>";
        return load(file + "</Collection></VTKFile>", u"s.pvd"_s);
    };
    folder.Write(sample::xmlVtk({}), u"a.vtu"_s);
    folder.Write(sample::xmlVtk(zlib).replace("Name=\"E\"", "Name=\"F\""), u"b.vtu"_s);
    const QByteArray points = "Points\" NumberOfComponents=\"3\" format=\"ascii\">\n";
    folder.Write(sample::xmlVtk({}).replace(QByteArray(points + '0'), QByteArray(points + '7')), u"moved.vtu"_s);
    ASSERT_TRUE(series("1a.vtu 2b.vtu 3none.vtu 4../a.vtu 5./b.vtu")) << model.Note.toStdString();
    EXPECT_EQ(model.Note, u"読まなかったもの: 点要素 1、線要素 1、見つからないファイル 1、フォルダの外のファイル 1"_s);
    EXPECT_EQ(model.StepCount, 3);
    const auto has = [this](const QString& name) {
        EXPECT_TRUE(LoadStep(1, 0, model, true, -1));
        return std::ranges::any_of(model.Items, [&](const ItemInfo& item) {
            return item.Name == name && model.ItemData.at(&item - model.Items.constData()).Count == 3;
        });
    };
    EXPECT_TRUE(has(u"F"_s) && !has(u"E"_s)) << "the second step has the one and lacks the other";
    const auto lookNow = [this] { return model.Look.ChangeTo(ReadHandle::Open(model.FileName)); };
    EXPECT_EQ(lookNow(), FileChange::None);
    folder.Write("<VTKFile type=\"UnstructuredGrid\"><UnstructuredGrid><Piece NumberOfP", u"none.vtu"_s);
    EXPECT_EQ(lookNow(), FileChange::Replaced) << "a part that was not there is, half written";
    ASSERT_TRUE(series("1a.vtu 2b.vtu 3none.vtu"));
    EXPECT_EQ(std::pair(model.StepCount, model.Note),
              std::pair(2, u"読まなかったもの: 点要素 1、線要素 1、終わりまで書かれていないファイル 1"_s));
    QFile::remove(folder.Path(u"none.vtu"_s));
    EXPECT_FALSE(StillHolds(model, 0));
    ASSERT_TRUE(series("1a.vtu 1b.vtu")) << "two parts of one step";
    EXPECT_EQ(std::tuple(model.StepCount, model.Mesh.NodeCount, model.Mesh.ElementCount), std::tuple(1, 12, 6));
    for (const auto& [members, why] : {std::pair("1none.vtu 2/a.vtu", u"フォルダの外のファイル 1"_s),
                                       std::pair("1a.vtu 2moved.vtu", u"メッシュが異なります"_s),
                                       std::pair("1a.vtu 2s.pvd", u"s.pvd: データセット Collection"_s)}) {
        EXPECT_FALSE(series(members));
        EXPECT_TRUE(model.Note.contains(why)) << model.Note.toStdString();
    }
}

TEST_F(ForeignFileTest, ValuesAtTheNodesOfEachElementAreTheirMean) {
    // Of the line, the quadrilateral and a triangle; one value is beyond the element's nodes, one element is unknown.
    ASSERT_TRUE(load(sample::gmsh(true, false) +
                     "$ElementNodeData\n1\n\"N\"\n1\n2.5\n3\n3\n1\n4\n3 2 1 2\n2 4 3 4 5 6\n"
                     "4 4 6 7 8 9\n99 1 5\n$EndElementNodeData\n"));
    ASSERT_TRUE(LoadStep(1, 0, model, true, -1));
    EXPECT_EQ(model.Items.back().Name, u"N");
    EXPECT_EQ(model.ItemData.back().Values, (QList<float>{2, 4, 7, 6, 5, 8}));
    ASSERT_TRUE(LoadStep(0, 0, model, true, -1));
    EXPECT_EQ(model.ItemData.back().Count, 0) << "there is none in the first step";
}

TEST_F(ForeignFileTest, StressesGiveTheirEquivalentAndPrincipalOnes) {
    VrfBuilder file = twoSquares();
    const auto names =
        u"S XX|S YY|S XY|Stress XX|Stress YY|Stress ZZ|Stress XY|Stress YZ|Stress XZ|E XX|E YY|E XY"_s.split(u'|');
    file.items.clear();
    for (const QString& name : names)
        file.items.push_back({name, -1, 0});
    // By hand: in the plane; turned about one axis after the other from 50, 20, -10; all alike; nothing.
    const std::vector<std::vector<double>> columns{{100, 0, 0, 3},
                                                   {0, 0, 0, 3},
                                                   {0, 50, 0, 0},
                                                   {42.5, 50, 7, 0},
                                                   {-0.625, 20, 7, 0},
                                                   {18.125, -10, 7, 0},
                                                   {6.495190528383291, 0, 0, 0},
                                                   {16.237976320958225, 0, 0, 0},
                                                   {11.25, 0, 0, 0}};
    file.steps.resize(1);
    file.steps[0].values.assign(12, std::vector<double>(6));
    for (std::size_t item = 0; item < columns.size(); ++item)
        std::ranges::copy(columns[item], file.steps[0].values[item].begin());
    ASSERT_TRUE(LoadResultFile(folder.Write(file.Bytes()), model, {}, {true, true}));
    ASSERT_TRUE(LoadStep(0, 0, model, true, -1));
    const std::pair<QString, std::array<float, 4>> rows[] = {{u"S Mises"_s, {100, 86.60254F, 0, 3}},
                                                             {u"S P1"_s, {100, 50, 0, 3}},
                                                             {u"S P2"_s, {0, -50, 0, 3}},
                                                             {u"Stress Mises"_s, {51.96152F, 51.96152F, 0, 0}},
                                                             {u"Stress P1"_s, {50, 50, 7, 0}},
                                                             {u"Stress P2"_s, {20, 20, 7, 0}},
                                                             {u"Stress P3"_s, {-10, -10, 7, 0}}};
    ASSERT_EQ(model.ItemCount, 12 + std::ssize(rows)) << "none of strains";
    for (std::size_t row = 0; row < std::size(rows); ++row) {
        EXPECT_EQ(model.Items.at(qsizetype(12 + row)).Name, rows[row].first);
        for (std::size_t node = 0; node < 4; ++node)
            EXPECT_NEAR(model.ItemData.at(qsizetype(12 + row)).Values.at(qsizetype(node)), rows[row].second[node], 1e-4)
                << rows[row].first.toStdString() << " at " << node;
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
        {sample::xmlVtk({}).replace("<FieldData>", "<!DOCTYPE a [<!ENTITY b \"c\">]><FieldData>"), QString()},
        {sample::xmlVtk({sample::Packing::Inline})
             .replace("UInt64", "")
             .replace(">\n<Unstr", " compressor=\"xz\">\n<Unstr"),
         u"xz"_s},
        {sample::xmlVtk({}).replace("Points=\"6\"", "Points=\"2147483647\""), QString()},
        {meshOf(square, 2000000000, "4 0 1 2 3", 1, 5, 9).first(200), QString()}};
    for (const auto& [bytes, why] : rows) {
        EXPECT_FALSE(load(bytes)) << why.toStdString();
        EXPECT_TRUE(model.Note.contains(why)) << model.Note.toStdString() << " for " << why.toStdString();
        EXPECT_TRUE(IsFileClosed(model));
    }
}

} // namespace
