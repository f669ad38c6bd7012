// Files that change while they are open, and what counts of one that is still being written.
#include "ModelTest.h"

#include <QDir>
#include <filesystem>

using namespace mdVelorinResultModel;

namespace {

using FileLookTest = ModelTest;

/// Step k has the value k + 1 everywhere.
VrfBuilder countingSteps(int count) {
    VrfBuilder file = twoSquares();
    file.steps.clear();
    for (int k = 0; k < count; ++k)
        file.steps.push_back({double(k), {}, {1, 2}, {std::vector<double>(6, k + 1), {double(k + 1)}}});
    return file;
}

TEST_F(FileLookTest, WhatBecameOfAFileIsToldAndWhatWasOpenedIsTrustedOnlyAsLongAsItHolds) {
    const QByteArray bytes = countingSteps(50).Bytes(), other = QByteArray(bytes.size(), 'x');
    const QString path = folder.Path(u"model.vrf"_s), beside = folder.Path(u"beside.vrf"_s);
    const auto rewrite = [&](const QByteArray& content) { folder.Write(content); };
    const auto putInPlace = [&](const QByteArray& content) {
        folder.Write(content, u"beside.vrf"_s);
        std::filesystem::rename(beside.toStdString(), path.toStdString());
    };
    QByteArray rerun = bytes + "more";
    rerun.replace(bytes.size() / 2, 200, QByteArray(200, 'x'));
    const struct {
        std::function<void()> Change;
        FileChange Expected;
        bool Holds;
    } cases[] = {
        {[] {}, FileChange::None, true},
        {[&] { rewrite(bytes + "more"); }, FileChange::Grown, true},
        {[&] { rewrite(rerun); }, FileChange::Replaced, false},
        {[&] { rewrite(other); }, FileChange::Replaced, false},
        {[&] { rewrite(bytes.first(200)); }, FileChange::Replaced, false},
        {[&] { rewrite({}); }, FileChange::Replaced, false},
        {[&] { putInPlace(bytes + "more"); }, FileChange::Grown, true},
        {[&] { putInPlace(other); }, FileChange::Replaced, true},
        {[&] { QFile::remove(path); }, FileChange::Gone, true},
    };
    for (const auto& change : cases) {
        folder.Write(bytes);
        // Else the file's new time may be the old one.
        std::filesystem::last_write_time(path.toStdString(),
                                         std::filesystem::file_time_type::clock::now() - std::chrono::seconds(5));
        ASSERT_TRUE(LoadResultFile(path, model));
        FileFollower follower;
        follower.Follow(path, model.Look);
        change.Change();
        const auto number = &change - cases;
        EXPECT_EQ(follower.Look(), change.Expected) << number;
        EXPECT_EQ(StillHolds(model, 49), change.Holds) << number;
    }
}

TEST_F(FileLookTest, OfAFileThatGrowsByteByByteOnlyWholeStepsCountWhenTheNextLookFoundThem) {
    const QByteArray bytes = countingSteps(3).Bytes();
    std::vector<qsizetype> ends;
    for (int count = 0; count <= 3; ++count)
        ends.push_back(countingSteps(count).Bytes().size());
    QFile file(folder.Write({}));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    FileFollower follower;
    ResultModel earlier;
    follower.Follow(file.fileName(), FileLook(ReadHandle::Open(file.fileName())));
    for (qsizetype size = 1; size <= bytes.size(); ++size) {
        ASSERT_EQ(file.write(bytes.constData() + size - 1, 1), 1);
        EXPECT_EQ(follower.Look(), FileChange::Grown);
        EXPECT_EQ(follower.SettledBytes(), size - 1);
        const auto whole = int(std::ranges::count_if(ends, [=](qsizetype end) { return end < size; })) - 1;
        ASSERT_EQ(LoadSettledFile(file.fileName(), size - 1, model), whole >= 0) << size;
        if (whole < 0)
            continue;
        // Read on from where the file ended some bytes ago it is the same, also when it was opened with half a step.
        ResultModel extended;
        ASSERT_EQ(ExtendSettledFile(earlier, size - 1, extended), bool(earlier.Source)) << size;
        if (size % 7 == 0 || !earlier.Source) {
            ASSERT_TRUE(LoadResultFile(file.fileName(), earlier));
        }
        for (ResultModel* each : {&model, &extended}) {
            if (!each->Source || whole == 0)
                continue;
            ASSERT_EQ(each->StepCount, whole) << size;
            ASSERT_TRUE(LoadStep(whole - 1, 1, *each, false, 0));
            EXPECT_EQ(each->ItemData.at(0).Values, QList<float>(6, float(whole)));
            EXPECT_EQ(each->ItemData.at(1).Values, QList<float>(1, float(whole)));
        }
    }
    // A step that was opened half is not to be trusted when there is more of it.
    folder.Write(bytes.first(ends[2] + 30));
    ASSERT_TRUE(LoadResultFile(file.fileName(), model));
    EXPECT_TRUE(StillHolds(model, 2)) << "the file is as it was";
    folder.Write(bytes);
    EXPECT_TRUE(StillHolds(model, 1) && !StillHolds(model, 2));
}

TEST_F(FileLookTest, StepAndItemAreFoundAgain) {
    ResultModel after;
    open(countingSteps(3), 2, 1);
    VrfBuilder file = countingSteps(5);
    file.items = {{u"応力"_s, -1, 0}, {u"新規"_s, -1, 0}, {u"応力"_s, 2, 0}};
    for (VrfBuilder::Step& step : file.steps)
        step.values.push_back({1});
    ASSERT_TRUE(LoadResultFile(folder.Write(file.Bytes(), u"b.vrf"_s), after));
    const auto place = [&](bool toTheEnd) {
        const StepAndItem found = SamePlace(model, after, toTheEnd);
        return std::pair(found.Step, found.Item);
    };
    EXPECT_EQ(place(false), std::pair(2, 2));
    EXPECT_EQ(place(true).first, after.StepCount - 1);
    after.StepCount = 2;
    after.Items[2].Name = after.Items[0].Name = u"別"_s;
    EXPECT_EQ(place(false), std::pair(1, 0));
}

} // namespace
