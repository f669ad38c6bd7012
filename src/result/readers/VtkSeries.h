// The grids of VTK XML files: steps of one or more files, and series of them that another file lists. Knows no arrays.
#pragma once

#include "result/readers/VtkXmlFile.h"
#include "result/readers/vtkCells.h"

#include <map>

/// A file with pieces of a grid. Where there are many its handle is closed, and it is opened when it is asked.
struct VtkGridFile {
    QString Path;
    VtkXmlFile Content;

    ReadHandle Handle() const { return Content.File.IsOpen() ? Content.File : ReadHandle::Open(Path); }
};

/// A step of a series, or the only one, and the files that make it up.
struct VtkStep {
    double Time = 0;
    std::vector<std::shared_ptr<const VtkGridFile>> Files;

    /// `use(file, piece)` for each piece of its files in their order; false once that says so.
    template<class Use>
    bool ForEachPiece(const Use& use) const {
        for (const auto& file : Files) {
            const ReadHandle handle = file->Handle();
            for (const VtkXmlFile::Piece& piece : file->Content.Pieces)
                if (!use(handle, piece))
                    return false;
        }
        return true;
    }
    /// Appends the points, x, y and z of each, and the cells of all pieces. False when they can't be had.
    bool ReadMesh(std::vector<double>& points, vtkCells::Lists& cells) const;
};

/// False, with the reason in `problem`, for a file of something else than a grid.
bool RequireGrid(const VtkXmlFile& file, QString& problem);

/// The files of a series, each of which is read once.
class VtkSeries {
public:
    VtkSeries(const QString& seriesPath, const LoadProgress& whileReading) : path(seriesPath), progress(whileReading) {}

    /// The steps in their order; false, with the reason in `Problem`, when they don't make a result.
    bool Read(const VtkXmlFile& series, std::vector<VtkStep>& steps);

    std::int32_t Missing = 0, Outside = 0, Unfinished = 0;
    QString Problem;
    std::vector<NamedStamp> Parts;

private:
    std::shared_ptr<const VtkGridFile> fileOf(const VtkXmlFile::Member& member);

    const QString& path;
    const LoadProgress& progress;
    std::map<QString, std::shared_ptr<const VtkGridFile>> known;
};
