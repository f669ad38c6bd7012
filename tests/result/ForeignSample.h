// One small result as other solvers write it, in each of the formats that are read. Not a test.
#pragma once

#include <QByteArray>
#include <QtEndian>
#include <vector>

namespace sample {

/// A quadrilateral and two triangles side by side; a line and a point that don't count.
inline const std::vector<double> points{0, 0, 0, 1, 0, 0, 2, 0, 0, 0, 1, 0, 1, 1, 0, 2, 1, 0};
struct Cell {
    int vtkType;
    std::vector<int> nodes;
};
inline const std::vector<Cell> cells{{1, {0}}, {9, {0, 1, 4, 3}}, {3, {0, 1}}, {5, {1, 2, 5}}, {5, {1, 5, 4}}};
inline const std::vector<double> displacement{0, 0, 0, 0.5, -0.25, 0, 1, 0.5, 0, 0, 0.125, 0, 0.5, 1e-3, 0, 1, -2.5, 0};
inline const std::vector<double> temperature{1, 2, 3.5, -4, 5e10, 6};
inline const std::vector<double> perCell{70, 71, 72, 73, 74};

inline std::vector<double> connectivity() {
    std::vector<double> all;
    for (const Cell& cell : cells)
        all.insert(all.end(), cell.nodes.begin(), cell.nodes.end());
    return all;
}
/// Where the nodes of each cell end in it; a first 0 before them if asked for.
inline std::vector<double> ends(bool withStart) {
    std::vector<double> all(withStart ? 1 : 0);
    double end = 0;
    for (const Cell& cell : cells)
        all.push_back(end += double(cell.nodes.size()));
    return all;
}
inline std::vector<double> types() {
    std::vector<double> all;
    for (const Cell& cell : cells)
        all.push_back(cell.vtkType);
    return all;
}

template<class T>
QByteArray binary(const std::vector<double>& numbers, bool bigEndian) {
    QByteArray bytes;
    for (const double number : numbers) {
        const T value = bigEndian ? qToBigEndian(T(number)) : qToLittleEndian(T(number));
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return bytes;
}
inline QByteArray text(const std::vector<double>& numbers) {
    QByteArray words;
    for (const double number : numbers)
        words += QByteArray::number(number, 'g', 17) + (words.size() % 7 ? " " : "\r\n");
    return words;
}

/// The older VTK file, as text or binary, with cells as they were listed up to version 4 or since.
inline QByteArray legacyVtk(bool isText, bool isNew) {
    const auto whole = [&](const std::vector<double>& numbers, bool wide = false) {
        return isText ? text(numbers) : wide ? binary<qint64>(numbers, true) : binary<qint32>(numbers, true);
    };
    const auto real = [&](const std::vector<double>& numbers) {
        return isText ? text(numbers) : binary<double>(numbers, true);
    };
    QByteArray file = "# vtk DataFile Version " + QByteArray(isNew ? "5.1" : "3.0") + "\nsample\r\n" +
                      (isText ? "ASCII" : "BINARY") +
                      "\nDATASET UNSTRUCTURED_GRID\nFIELD FieldData 1\nTIME 1 1 double\n" + real({2.5}) +
                      "\nPOINTS 6 double\n" + real(points);
    if (isNew) {
        file += "\nCELLS 6 13\nOFFSETS vtktypeint64\n" + whole(ends(true), true) + "\nCONNECTIVITY vtktypeint64\n" +
                whole(connectivity(), true);
    } else {
        std::vector<double> list;
        for (const Cell& cell : cells) {
            list.push_back(double(cell.nodes.size()));
            list.insert(list.end(), cell.nodes.begin(), cell.nodes.end());
        }
        file += "\nCELLS 5 18\n" + whole(list);
    }
    return file + "\nCELL_TYPES 5\n" + whole(types()) + "\nPOINT_DATA 6\nVECTORS U double\n" + real(displacement) +
           "\nMETADATA\nINFORMATION 0\n\nSCALARS T%20at double\nLOOKUP_TABLE default\n" + real(temperature) +
           "\nCELL_DATA 5\nFIELD more 1\nE 1 5 double\n" + real(perCell) + '\n';
}

} // namespace sample
