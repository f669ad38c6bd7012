// The points and cells of a legacy VTK file, section by section; and the lines between which its numbers stand.
#pragma once

#include "result/readers/LegacyVtkBlock.h"
#include "result/readers/vtkCells.h"

#include <limits>

struct LegacyVtkLines {
    using Words = std::vector<std::string_view>;

    LegacyVtkLines(const ReadHandle& file, const LoadProgress& progress) : Scanner(file, progress) {}

    FileScanner Scanner;
    bool IsText = true;
    std::int32_t Version = 0; ///< times 100

    /// The words of the next line that has any; valid until the next call.
    std::optional<Words> Next();
    /// One of them as a number of things.
    static bool Count(const Words& words, std::size_t index, qint64& value,
                      qint64 most = std::numeric_limits<std::int32_t>::max());
    /// The numbers from here on, as many as that.
    LegacyVtkBlock Block(qint64 numbers, NumberType type) const;

private:
    std::string line;
};

struct LegacyVtkMesh {
    std::vector<double> Points; ///< x, y, z of each
    vtkCells::Lists Cells;

    /// What stands behind the section's first line, which has these words. False when it is no section of the mesh, or
    /// can't be understood.
    bool Read(LegacyVtkLines& in, const LegacyVtkLines::Words& words);

private:
    bool readPoints(LegacyVtkLines& in, const LegacyVtkLines::Words& words);
    bool readCells(LegacyVtkLines& in, const LegacyVtkLines::Words& words);
    bool readOldCells(LegacyVtkLines& in, qint64 cellCount, qint64 numbers);
    bool readNewCells(LegacyVtkLines& in, qint64 offsets, qint64 nodes);
    bool readCellTypes(LegacyVtkLines& in, const LegacyVtkLines::Words& words);
};
