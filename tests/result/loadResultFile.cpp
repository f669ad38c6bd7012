#include "ModelTest.h"

#include <limits>

using namespace mdVelorinResultModel;

namespace {

struct LoadResultFileTest : ModelTest {
    bool load(const QByteArray& bytes) { return LoadResultFile(folder.Write(bytes), model); }
};

TEST_F(LoadResultFileTest, WhatIsMissingHasItsStandIn) {
    VrfBuilder file = twoSquares();
    file.magic = "vRf10";
    file.items = {{u"a"_s, -1, 4}, {{}, -1, 1}, {u"c"_s, -1, 3}};
    file.elements = {{2, 3, 0}, {1, 99, 3, 3}, {}, {5}, {2, 3}};
    file.steps = {{0, {}, {1, 1, 1, 1, 1}, {{}, {}, {}}}, {12345.678, {}, {}, {}}};
    ASSERT_TRUE(load(file.Bytes()));
    EXPECT_EQ(model.Magic, u"VRF10");
    EXPECT_EQ(model.Items.at(1).Name, u"Item - 2");
    EXPECT_EQ(model.Steps.at(0).Name, u"Time : 0.000");
    EXPECT_EQ(model.Steps.at(1).Name, u"Time : 1.235E4");
    EXPECT_EQ(model.CurrentStep, -1);
    EXPECT_EQ(std::pair(model.DisplacementItemX, model.DisplacementItemY), std::pair(1, 2)) << "the first of a kind";
    // Missing and false nodes count in the divisor alone.
    EXPECT_EQ(model.Mesh.Elements.CentreX, (QList<float>{1, 1, 0, 1, 1.5}));
    EXPECT_EQ(model.Mesh.Elements[0].NodeIndex[2], -1);
    const NodeRecord shared = model.Mesh.Nodes[2];
    EXPECT_EQ(std::vector(shared.ElementIndex.begin(), shared.ElementIndex.end()), (std::vector{0, 1, 1, 4}));
    EXPECT_EQ(std::vector(shared.CornerIndex.begin(), shared.CornerIndex.end()), (std::vector{1, 2, 3, 1}));
    EXPECT_EQ(model.Mesh.Nodes[3].ElementCount, 0);
    EXPECT_FALSE(model.LineElementsOnly || model.NoDisplacement);

    file.title.clear();
    file.items.resize(1);
    file.elements = {{2, 3}, {5}, {}};
    file.steps.clear();
    ASSERT_TRUE(load(file.Bytes()));
    EXPECT_EQ(model.Title, u"試験") << "an empty title keeps that of the file before";
    EXPECT_TRUE(model.LineElementsOnly && model.NoDisplacement && model.StepCount == 0);
}

TEST_F(LoadResultFileTest, AnotherKindOfFileLeavesTheOpenOneAlone) {
    ASSERT_TRUE(load(twoSquares().Bytes()));
    for (const QString& path :
         {folder.Write("VRF11 and more", u"other.vrf"_s), folder.Path(u"missing.vrf"_s), folder.Path(u"."_s)})
        EXPECT_FALSE(LoadResultFile(path, model)) << path.toStdString();
    EXPECT_TRUE(LoadStep(1, 0, model, false, -1));
}

TEST_F(LoadResultFileTest, CountsThatTheFileCannotHoldAreRefused) {
    for (const qint32 count : {0, -1, 0x7fffffff, std::numeric_limits<qint32>::min(), 1000}) {
        for (auto field : {&VrfBuilder::itemCount, &VrfBuilder::nodeCount, &VrfBuilder::elementCount}) {
            VrfBuilder file = twoSquares();
            ASSERT_TRUE(load(file.Bytes()));
            file.*field = count;
            EXPECT_FALSE(load(file.Bytes())) << count;
            EXPECT_TRUE(IsFileClosed(model) && model.FileName.isEmpty());
            EXPECT_FALSE(LoadStep(0, 0, model, false, -1));
        }
        QByteArray bytes = twoSquares().Bytes(), field;
        VrfBuilder::put(field, count);
        for (const qsizetype offset : {9, 157}) // of the title's length and the first element's node count
            EXPECT_TRUE(count < 1 || !load(QByteArray(bytes).replace(offset, 4, field))) << offset << ' ' << count;
    }
}

/// Each real file cut at many places: refused while mesh or items are cut, and otherwise every step loads.
TEST_F(LoadResultFileTest, RealFilesCutShort) {
    for (const char* name : {"/demo/plate.vrf", "/demo/tunnel.vrf", "/tests/data/heat.vrf", "/tests/data/truss.vrf"}) {
        const QByteArray bytes = TestFolder::Read(QStringLiteral(VELORIN_SOURCE_DIR) + QLatin1StringView(name));
        const QString cut = folder.Write(bytes);
        ResultModel whole;
        ASSERT_TRUE(LoadResultFile(cut, whole));
        for (qint64 length = bytes.size() / 197 * 197; length >= 0; length -= 197) {
            ASSERT_TRUE(QFile::resize(cut, length));
            const bool opened = LoadResultFile(cut, model);
            EXPECT_EQ(opened, length >= whole.FirstStepOffset - 16) << length;
            if (!opened)
                continue;
            EXPECT_LE(model.StepCount, whole.StepCount);
            EXPECT_EQ(LoadStep(model.StepCount - 1, 0, model, false, 0), model.StepCount > 0) << length;
        }
    }
}

} // namespace
