// The steps of a .vrf file. Where they stand was noted when the file was opened, so that any value is one read away.
#pragma once

#include "platform/base/ReadHandle.h"
#include "result/readers/ResultContent.h"

#include <vector>

class VrfSteps final : public StepSource {
public:
    /// Of a file with no steps so far; they are to begin there.
    VrfSteps(const ReadHandle& openFile, const Sizes& stepSizes, qint64 nodeCount, qint64 begin);

    /// False when the text claims more bytes than the file has left. A text without bytes leaves `text` as it is.
    static bool ReadText(SequentialReader& reader, QString& text);

    std::shared_ptr<const StepSource> Extended(const ReadHandle& longer, QList<StepInfo>& steps,
                                               const LoadProgress& progress) const override;

private:
    /// One item's values in one step.
    struct Block {
        std::int32_t Offset = 0; ///< in the file, of the first value
        std::int32_t Count = 0;  ///< as told, which may be below 1
    };
    struct Directory {
        std::vector<std::int32_t> TypeOffsets; ///< in the file, of each step's element types
        std::vector<Block> Blocks;             ///< of each step as many as there are items
        qint64 End = 0;                        ///< of the last step, as told
    };

    VrfSteps(const ReadHandle& openFile, const Sizes& stepSizes, qint64 most, qint64 begin, Directory stepDirectory);
    static Block scanBlock(SequentialReader& reader, qint64 mostInMesh);
    qint64 typesAt(std::int32_t step, qint64 first, std::span<std::int32_t> types) const override;
    std::int32_t countOf(std::int32_t step, std::int32_t item) const override { return blockOf(step, item).Count; }
    qint64 valuesAt(std::int32_t step, std::int32_t item, qint64 first, std::span<float> values) const override;
    qint64 endOf(std::int32_t step) const override;
    const Block& blockOf(std::int32_t step, std::int32_t item) const {
        return directory.Blocks[std::size_t(step) * itemCount + std::size_t(item)];
    }

    ReadHandle file;
    std::size_t itemCount;
    qint64 elementCount;
    qint64 mostInMesh; ///< nodes or elements, whichever are more
    qint64 firstStep;  ///< file position
    Directory directory;
};
