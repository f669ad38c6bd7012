// What follows from a file's content once it is open, whatever format it came in.
#include "result/mdVelorinResultModel.h"

#include "platform/base/Lists.h"
#include "platform/base/NativePath.h"
#include "result/readers/VrfReader.h"

#include <utility>

namespace mdVelorinResultModel {

namespace {

void findDisplacementItems(ResultModel& model) {
    for (std::int32_t i = model.ItemCount - 1; i >= 0; --i) {
        if (model.Items.at(i).Flags & 1)
            model.DisplacementItemX = i;
        if (model.Items.at(i).Flags & 2)
            model.DisplacementItemY = i;
    }
    model.NoDisplacement = model.DisplacementItemX < 0 && model.DisplacementItemY < 0;
}

bool isNodeOf(const MeshData& mesh, std::int32_t node) {
    return node >= 0 && node < mesh.NodeCount;
}

/// Element centres, and the way back from each node to its elements. False when `progress` says no.
bool deriveFromElements(MeshData& mesh, const LoadProgress& progress) {
    constexpr std::int32_t progressStride = 65536;
    ElementTable& elements = mesh.Elements;
    NodeTable& nodes = mesh.Nodes;
    const std::int32_t* nodeIndex = elements.NodeIndex.constData();
    elements.CentreX = listOf<float>(mesh.ElementCount);
    elements.CentreY = listOf<float>(mesh.ElementCount);
    nodes.FirstEntry = listOf<std::int32_t>(mesh.NodeCount + 1);
    std::int32_t* firstEntry = nodes.FirstEntry.data();
    for (qsizetype i = 0; i < elements.NodeIndex.size(); ++i)
        if (isNodeOf(mesh, nodeIndex[i]))
            ++firstEntry[nodeIndex[i] + 1];
    // Each node's place is first where its own entries begin, and moves on to where the next one's do while they come.
    std::int32_t entries = 0;
    for (std::int32_t i = 0; i < mesh.NodeCount; ++i)
        entries += std::exchange(firstEntry[i + 1], entries);

    nodes.ElementIndex = listOf<std::int32_t>(entries);
    nodes.CornerIndex = listOf<std::int32_t>(entries);
    std::int32_t* elementIndex = nodes.ElementIndex.data();
    std::int32_t* cornerIndex = nodes.CornerIndex.data();
    float* centreX = elements.CentreX.data();
    float* centreY = elements.CentreY.data();
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e) {
        if (e % progressStride == 0 && progress && !progress(e, mesh.ElementCount))
            return false;
        const std::int32_t first = elements.FirstCorner.at(e);
        const std::int32_t count = elements.NodeCount(e);
        float sumX = 0, sumY = 0;
        for (std::int32_t corner = 0; corner < count; ++corner) {
            const std::int32_t node = nodeIndex[first + corner];
            if (!isNodeOf(mesh, node))
                continue;
            sumX += nodes.X.at(node);
            sumY += nodes.Y.at(node);
            const std::int32_t entry = firstEntry[node + 1]++;
            elementIndex[entry] = e;
            cornerIndex[entry] = corner;
        }
        centreX[e] = count > 0 ? sumX / float(count) : 0;
        centreY[e] = count > 0 ? sumY / float(count) : 0;
    }
    return true;
}

bool hasLineElementsOnly(const MeshData& mesh) {
    for (std::int32_t e = 0; e < mesh.ElementCount; ++e)
        if (mesh.Elements.NodeCount(e) > 2)
            return false;
    return true;
}

/// The columns that a reader fills, and room for those that follow from them or come with a step.
void takeOverMesh(const ResultContent& content, MeshData& mesh) {
    mesh.NodeCount = std::int32_t(content.NodeX.size());
    NodeTable& nodes = mesh.Nodes;
    nodes.X = content.NodeX;
    nodes.Y = content.NodeY;
    nodes.Value = listOf<float>(mesh.NodeCount);
    nodes.ReferenceValue = nodes.Value;
    nodes.Active = listOf<std::uint8_t>(mesh.NodeCount);
    mesh.ElementCount = std::int32_t(content.FirstCorner.size()) - 1;
    ElementTable& elements = mesh.Elements;
    elements.ElementType = listOf<std::int32_t>(mesh.ElementCount);
    elements.FirstCorner = content.FirstCorner;
    elements.NodeIndex = content.NodeIndex;
    elements.Neighbour = listOf(elements.NodeIndex.size(), -1);
}

bool takeOver(const ResultContent& content, const QString& earlierTitle, ResultModel& model,
              const LoadProgress& progress) {
    model.Magic = content.Magic;
    model.Version = content.Version;
    model.FileHandle = content.FileHandle;
    model.FirstStepOffset = content.FirstStepOffset;
    model.Source = content.Source;
    model.Title = content.Title.value_or(earlierTitle);
    model.Note = content.Note;
    model.StepCount = std::int32_t(content.Steps.size());
    model.Steps = content.Steps;
    model.ItemCount = std::int32_t(content.Items.size());
    model.Items = content.Items;
    findDisplacementItems(model);
    takeOverMesh(content, model.Mesh);
    model.LineElementsOnly = hasLineElementsOnly(model.Mesh);
    return deriveFromElements(model.Mesh, progress);
}

} // namespace

bool CheckFileMagic(const QString& path, const QString& magic) {
    if (magic.isEmpty())
        return true;
    QByteArray bytes(magic.size(), Qt::Uninitialized);
    bytes.resize(ReadHandle::Open(path).ReadAt(0, bytes.data(), bytes.size()));
    return VrfReader::HasMagic(bytes, magic);
}

bool IsResultFile(const QString& path) {
    return ReaderFor(path) != nullptr;
}

bool LoadResultFile(const QString& path, ResultModel& model, const LoadProgress& progress,
                    const DerivedItems& derived) {
    const ResultReader* reader = ReaderFor(path);
    if (!reader)
        return false;
    // The earlier file's title is all that a file can take over; the rest goes before the new mesh asks for memory.
    const QString title = model.Title;
    FileLook look(ReadHandle::Open(path));
    model = {};
    model.Title = title;
    ResultContent content;
    // Reading takes most of the time, and this much of it.
    constexpr int untilRead = 75;
    if (!reader->Open(path, content, PartOf(progress, 0, untilRead))) {
        model.Note = content.Note;
        return false;
    }
    look.AddParts(content.Parts);
    AddDerivedItems(derived, content);
    if (!takeOver(content, title, model, PartOf(progress, untilRead, 100))) {
        model = {};
        model.Title = title;
        return false;
    }
    model.FileName = NativePath::Absolute(path);
    model.Look = look;
    model.Derived = derived;
    return true;
}

namespace {

/// Of an open file only what `look` saw counts: steps that end behind it are left out. False when the file no longer
/// holds it.
bool keepSettled(FileLook look, ResultModel& model) {
    look.AddParts(model.Look.Parts());
    model.Look = look;
    model.StepCount = WholeSteps(model);
    model.Steps.resize(model.StepCount);
    return StillHolds(model, model.StepCount - 1);
}

} // namespace

bool LoadSettledFile(const QString& path, qint64 bytes, ResultModel& model, const LoadProgress& progress,
                     const DerivedItems& derived) {
    const FileLook look(ReadHandle::Open(path), bytes);
    return LoadResultFile(path, model, progress, derived) && model.FirstStepOffset <= bytes && keepSettled(look, model);
}

bool ExtendSettledFile(const ResultModel& before, qint64 bytes, ResultModel& model, const LoadProgress& progress) {
    const ReadHandle file = ReadHandle::Open(before.FileName);
    const FileLook look(file, bytes);
    if (IsFileClosed(before) || before.Look.ChangeTo(file) != FileChange::Grown)
        return false;
    model = before;
    // A step that was opened half is read anew.
    model.Steps.resize(WholeSteps(before));
    model.Source = before.Source->Extended(file, model.Steps, progress);
    if (!model.Source)
        return false;
    model.FileHandle = file;
    model.StepCount = std::int32_t(model.Steps.size());
    return keepSettled(look, model);
}

std::int32_t WholeSteps(const ResultModel& model) {
    std::int32_t count = model.Source ? model.StepCount : 0;
    while (count > 0 && model.Source->EndOf(count - 1) > model.Look.Size())
        --count;
    return count;
}

bool StillHolds(const ResultModel& model, std::int32_t step) {
    const FileChange change = model.Look.ChangeInPlace();
    if (change != FileChange::Grown)
        return change == FileChange::None;
    return !model.Source || model.Source->EndOf(step) <= model.Look.Size();
}

std::int32_t ItemLike(const ResultModel& before, std::int32_t item, const ResultModel& after) {
    if (item < 0 || item >= before.ItemCount)
        return -1;
    // A name may stand twice, for one kind of objects and for another or just so.
    const ItemInfo& wanted = before.Items.at(item);
    std::int32_t best = -1, most = 0;
    for (std::int32_t i = 0; i < after.ItemCount; ++i) {
        const ItemInfo& other = after.Items.at(i);
        const std::int32_t likeness =
            other.Name == wanted.Name ? 1 + 2 * (other.ElementType == wanted.ElementType) + (i == item) : 0;
        if (likeness > most) {
            best = i;
            most = likeness;
        }
    }
    return best;
}

StepAndItem SamePlace(const ResultModel& before, const ResultModel& after, bool toTheEnd) {
    const bool wasLast = before.CurrentStep == before.StepCount - 1;
    const std::int32_t last = after.StepCount - 1;
    const std::int32_t step = toTheEnd && wasLast ? last : std::min(std::max(before.CurrentStep, 0), last);
    return {step, std::max(ItemLike(before, before.CurrentItem, after), 0)};
}

void CloseResultFile(ResultModel& model) {
    model.FileHandle.Close();
    model.Source.reset();
}

bool IsFileClosed(const ResultModel& model) {
    return !model.Source;
}

} // namespace mdVelorinResultModel
