// What the tags of a VTK XML file say: the pieces of an unstructured grid with their arrays, or the files of a series.
// No numbers are read, and nothing of what stands between the tags is held.
#pragma once

#include "result/readers/VtkDataArray.h"

struct VtkXmlFile {
    struct NamedArray {
        VtkDataArray Data;
        bool OnCells = false;
    };
    struct Piece {
        std::int32_t Points = 0, Cells = 0;
        VtkDataArray Coordinates, Connectivity, Offsets, Types;
        std::vector<NamedArray> Arrays;
    };
    /// A file of a series.
    struct Member {
        double Time = 0;
        QString File; ///< as it stands there
    };

    ReadHandle File;
    QString Kind; ///< "UnstructuredGrid", "Collection" or what else there is
    QString Version;
    std::vector<Piece> Pieces;
    std::vector<Member> Members;
    VtkDataArray Time;    ///< perhaps not there
    bool IsWhole = false; ///< has its last tag
};

/// Reads the tags of an open file. False, with the reason in `problem` if there is one to tell, for what is no such
/// file or promises more than it can hold.
bool ReadVtkXml(const ReadHandle& file, const LoadProgress& progress, VtkXmlFile& content, QString& problem);
