#include "mainwin/DocumentReading.h"

#include "app/windows/ShowMessage.h"
#include "platform/base/NativePath.h"
#include "platform/base/ReadHandle.h"
#include "platform/widgets/LongWork.h"
#include "property/propertyFile.h"

#include <limits>
#include <new>

QString DocumentReading::FileHasChanged() {
    return tr("計算結果ファイルが書き換えられたため、読み込めません。[表示] - [ファイルを読み直す] (Ctrl+R) "
              "で読み直してください。");
}

/// Does what reads of a file of so many bytes: large ones on another thread. False when that was stopped.
bool DocumentReading::readWith(qint64 bytes, const QString& caption, const Read& read, bool givesWay) {
    constexpr qint64 bytesReadAtOnce = 16 << 20;
    if (bytes < bytesReadAtOnce) {
        read({});
        return true;
    }
    emit WindowWanted();
    LongWork work(caption + u" (Esc で中止)"_s, [this](const QString& text) { emit Progress(text); });
    work.SetGivesWay(givesWay);
    return work.Run(read);
}

DocumentReading::Outcome DocumentReading::Open(const QString& path, Opening& opening) {
    using namespace mdVelorinResultModel;
    ApplicationSettings asLeft = session.Settings;
    ResultModel& loaded = opening.Loaded;
    ResultModel named;
    named.FileName = NativePath::Absolute(path);
    propertyFile::LoadPropertyFile(asLeft, named);
    opening.Step = named.CurrentStep;
    opening.Item = named.CurrentItem;
    opening.Reference = asLeft.Difference.StandardStep;
    loaded.Title = session.Model.Title;
    const bool derives = asLeft.Window.DeriveStresses;
    // A series is as large as the files that it names.
    const bool isSeries = path.endsWith(u".pvd", Qt::CaseInsensitive);
    const qint64 bytes = isSeries ? std::numeric_limits<qint64>::max() : ReadHandle::Open(path).Size();
    bool good = false;
    try {
        const bool whole = readWith(bytes, tr("読み込み中..."), [&](const LoadProgress& progress) {
            // Of the time until the picture, about.
            constexpr int untilMesh = 60;
            good = LoadResultFile(path, loaded, PartOf(progress, 0, untilMesh), {derives, derives});
            if (good)
                mdVelorinResultModel::LoadStep(std::max(opening.Step, 0), std::max(opening.Item, 0), loaded, false,
                                               opening.Reference, PartOf(progress, untilMesh, 100));
        });
        if (!whole)
            return Outcome::Stopped;
    } catch (const std::bad_alloc&) {
        opening = {};
        return Outcome::NoMemory;
    }
    return good ? Outcome::Done : Outcome::Refused;
}

DocumentReading::Outcome DocumentReading::ReadAnew(qint64 bytes, bool following, Anew& anew) {
    using namespace mdVelorinResultModel;
    const ResultModel& open = session.Model;
    ResultModel& fresh = anew.Loaded;
    bool good = false;
    fresh.Title = open.Title;
    const Read read = [&](const LoadProgress& progress) {
        constexpr int untilMesh = 60;
        const LoadProgress meshProgress = PartOf(progress, 0, untilMesh);
        anew.Grown = following && ExtendSettledFile(open, bytes, fresh, meshProgress);
        if (!anew.Grown && !LoadSettledFile(open.FileName, bytes, fresh, meshProgress, open.Derived))
            return;
        const int reference = session.Settings.Difference.StandardStep;
        const StepAndItem place = SamePlace(open, fresh, following);
        // What shows of a file that has grown is still there, unless it was half, or its reference step has come.
        const bool stays =
            anew.Grown && place.Step == fresh.CurrentStep && std::max(place.Step, reference) < WholeSteps(open);
        if (!stays)
            mdVelorinResultModel::LoadStep(place.Step, place.Item, fresh, false, reference,
                                           PartOf(progress, untilMesh, 100));
        good = StillHolds(fresh, fresh.StepCount - 1);
    };
    try {
        if (!readWith(bytes, tr("読み直し中..."), read, following))
            return Outcome::Stopped;
    } catch (const std::bad_alloc&) {
        anew = {};
        return Outcome::NoMemory;
    }
    return good ? Outcome::Done : Outcome::Refused;
}

bool DocumentReading::LoadStep(std::int32_t step, std::int32_t item) {
    using enum Session::StepLoad;
    ResultModel next;
    Session::StepLoad outcome = Done;
    try {
        readWith(session.Model.Look.Size(), tr("ステップを読み込み中..."),
                 [&](const LoadProgress& progress) { outcome = session.ReadStep(step, item, next, progress); });
    } catch (const std::bad_alloc&) {
        next = {};
        mdApplication::ShowMessage(session.Model.FileName + tr("\r\nメモリが不足しています。"), MessageStyle::Stop);
        return false;
    }
    if (outcome == Done)
        session.Model = std::move(next);
    else
        emit Told(outcome == Stopped ? tr("読み込みを中止しました。") : FileHasChanged());
    return outcome == Done;
}

/// False when it was stopped, or there was no memory.
bool DocumentReading::runRange(const Read& find) {
    LongWork work(u"全ステップの範囲を計算中... (Esc で中止)"_s, [this](const QString& text) { emit Progress(text); });
    try {
        return work.Run(find);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void DocumentReading::FindRange() {
    const std::int32_t item = session.Model.CurrentItem;
    if (!session.IsOpen() || LongWork::IsRunning() || !session.LacksRange(item))
        return;
    std::optional<ValueBounds> range;
    runRange([&](const LoadProgress& progress) { range = session.RangeOfAllSteps(item, progress); });
    if (range) {
        session.HoldRange(item, *range);
        return;
    }
    session.Settings.Contour.Range = ContourRange::AsStands;
    session.Settings.Contour.Automatic = true;
    emit Told(u"全ステップの範囲の計算を中止しました。このステップの範囲で描きます。"_s);
}

std::optional<ShowRange> DocumentReading::RangeForShow() {
    std::optional<ShowRange> range;
    const bool whole = runRange([&](const LoadProgress& progress) {
        range = ComputeItemRange(session.Model.CurrentItem, session.Model, session.Settings.Vector, progress);
    });
    return whole ? range : std::nullopt;
}
