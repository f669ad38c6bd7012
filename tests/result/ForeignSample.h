// One small result as other solvers write it, in each of the formats that are read. Not a test.
#pragma once

#include <QByteArray>
#include <QtEndian>
#include <cmath>
#include <lz4.h>
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

/// How the arrays of a VTK XML file are packed.
struct Packing {
    enum { Text, Inline, Appended, AppendedRaw } form = Text;
    enum { Plain, Zlib, Lz4 } compression = Plain;
    bool isBig = false, hasWideHeader = false;
};

/// An array of reals or of whole numbers as the packing has it. Compressed ones are cut into blocks of 40 bytes.
inline QByteArray packed(const std::vector<double>& numbers, bool isReal, const Packing& how) {
    if (how.form == Packing::Text)
        return text(numbers);
    const auto header = [&how](const std::vector<double>& sizes) {
        return how.hasWideHeader ? binary<quint64>(sizes, how.isBig) : binary<quint32>(sizes, how.isBig);
    };
    const QByteArray bytes = isReal ? binary<double>(numbers, how.isBig) : binary<qint64>(numbers, how.isBig);
    std::vector<QByteArray> parts;
    if (how.compression == Packing::Plain) {
        parts = {header({double(bytes.size())}) + bytes};
    } else {
        constexpr int block = 40;
        std::vector<double> sizes{std::ceil(double(bytes.size()) / block), block, double(bytes.size() % block)};
        QByteArray all;
        for (qsizetype first = 0; first < bytes.size(); first += block) {
            const QByteArray whole = bytes.mid(first, block);
            QByteArray one = qCompress(whole).mid(4); // less a size of its own
            if (how.compression == Packing::Lz4) {
                one.resize(LZ4_compressBound(block));
                one.truncate(LZ4_compress_default(whole.data(), one.data(), int(whole.size()), int(one.size())));
            }
            sizes.push_back(double(one.size()));
            all += one;
        }
        parts = {header(sizes), all};
    }
    QByteArray result;
    for (const QByteArray& part : parts)
        result += how.form == Packing::AppendedRaw ? part : part.toBase64();
    return result;
}

/// An unstructured grid of one piece, or of two which are both the sample.
inline QByteArray xmlVtk(const Packing& how, int pieces = 1) {
    QByteArray appended;
    const auto array = [&](const QByteArray& name, const std::vector<double>& numbers, bool isReal,
                           int components = 1) -> QByteArray {
        const QByteArray content = packed(numbers, isReal, how);
        QByteArray tag = "<DataArray type='" + QByteArray(isReal ? "Float64" : "Int64") + "' Name=\"" + name +
                         "\" NumberOfComponents=\"" + QByteArray::number(components) + "\" format=\"";
        if (how.form == Packing::Text || how.form == Packing::Inline)
            return tag + (how.form == Packing::Text ? "ascii" : "binary") + "\">\n" + content + "</DataArray>\n";
        tag += "appended\" offset=\"" + QByteArray::number(appended.size()) + "\"/>\n";
        appended += content;
        return tag;
    };
    QByteArray file =
        "<?xml version=\"1.0\"?>\n<!-- > a \"sample --><VTKFile type=\"UnstructuredGrid\" version=\"1.0\" "
        "byte_order=\"" +
        QByteArray(how.isBig ? "BigEndian" : "LittleEndian") + '"' +
        (how.hasWideHeader ? " header_type=\"UInt64\"" : "") +
        (how.compression == Packing::Zlib  ? " compressor=\"vtkZLibDataCompressor\""
         : how.compression == Packing::Lz4 ? " compressor=\"vtkLZ4DataCompressor\""
                                           : "") +
        ">\n<UnstructuredGrid><FieldData>" + array("TimeValue", {2.5}, true) + "</FieldData>\n";
    for (int p = 0; p < pieces; ++p)
        file += "<Piece NumberOfPoints=\"6\" NumberOfCells=\"5\">\n<PointData Scalars=\"T\">" +
                array("U", displacement, true, 3) + array("T at", temperature, true) + "</PointData>\n<CellData>" +
                array("E", perCell, true) + "</CellData>\n<Points>" + array("Points", points, true, 3) +
                "</Points>\n<Cells>" + array("connectivity", connectivity(), false) +
                array("offsets", ends(false), false) + array("types", types(), false) + "</Cells>\n</Piece>\n";
    file += "</UnstructuredGrid>\n";
    if (!appended.isEmpty())
        file += "<AppendedData encoding=\"" + QByteArray(how.form == Packing::AppendedRaw ? "raw" : "base64") +
                "\">\n _" + appended + "</AppendedData>\n";
    return file + "</VTKFile>\n";
}

/// Numbers one after the other, as text or little-endian.
struct Numbers {
    bool isText;
    QByteArray bytes;
    template<class T>
    void put(double number) {
        bytes += isText ? QByteArray::number(number, 'g', 17) + ' ' : binary<T>({number}, false);
    }
    void line(const QByteArray& words) { bytes += words + '\n'; }
};

/// A Gmsh file: the displacement at two steps, all else at the second. Its nodes are numbered 10, 20, ...
inline QByteArray gmsh(bool isText, bool isVersion4) {
    Numbers out{isText, {}};
    const auto whole = [&](double number, bool isSize = true) {
        isVersion4&& isSize ? out.put<quint64>(number) : out.put<qint32>(number);
    };
    out.line(QByteArray("$MeshFormat\n") + (isVersion4 ? "4.1 " : "2.2 ") + (isText ? "0 8" : "1 8"));
    if (!isText)
        out.put<qint32>(1);
    out.line("\n$EndMeshFormat\n$Comments\nno $ellipse\n$EndComments\n$Nodes");
    if (isVersion4) {
        for (const double number : {1, 6, 10, 60})
            whole(number);
        for (const double number : {2, 1, 1}) // of a surface, with its parameters
            whole(number, false);
        whole(6);
        for (int node = 1; node <= 6; ++node)
            whole(node * 10);
    } else {
        out.line("6");
    }
    for (int node = 0; node < 6; ++node) {
        if (!isVersion4)
            whole((node + 1) * 10);
        for (int i = 0; i < (isVersion4 ? 5 : 3); ++i)
            out.put<double>(i < 3 ? points[std::size_t(node * 3 + i)] : 0.5);
    }
    out.line("\n$EndNodes\n$Elements");
    if (isVersion4)
        for (const double number : {5, 5, 1, 5})
            whole(number);
    else
        out.line("5");
    for (std::size_t c = 0; c < cells.size(); ++c) {
        const int type = cells[c].vtkType == 1 ? 15 : cells[c].vtkType == 9 ? 3 : cells[c].vtkType == 3 ? 1 : 2;
        const std::vector<double> head = isVersion4 ? std::vector<double>{0, 0, double(type)}
                                         : isText   ? std::vector<double>{double(c + 1), double(type), 1}
                                                    : std::vector<double>{double(type), 1, 1, double(c + 1)};
        for (const double number : head)
            whole(number, false);
        for (int i = 0; i < (isVersion4 ? 2 : 1); ++i)
            whole(i == 0 ? 1 : double(c + 1)); // a tag; or how many, and the number of the one
        for (const int node : cells[c].nodes)
            whole((node + 1) * 10);
    }
    out.line("\n$EndElements");
    const auto data = [&](const QByteArray& section, const QByteArray& name, int step,
                          const std::vector<double>& values, std::size_t components, int idStride) {
        const auto number = [](double value) { return QByteArray::number(value); };
        const std::size_t entries = values.size() / components;
        out.line('$' + section + "\n1\n\"" + name + "\"\n1\n" + number(step == 0 ? 0 : 2.5) + "\n3\n" + number(step) +
                 '\n' + number(double(components)) + '\n' + number(double(entries)));
        for (std::size_t e = entries; e-- > 0;) { // in any order
            out.put<qint32>(double(e + 1) * idStride);
            for (std::size_t c = 0; c < components; ++c)
                out.put<double>(values[e * components + c]);
        }
        out.line("\n$End" + section);
    };
    data("NodeData", "U", 0, displacement, 3, 10);
    data("NodeData", "U", 3, displacement, 3, 10);
    data("NodeData", "T at", 3, temperature, 1, 10);
    data("ElementData", "E", 3, perCell, 1, 1);
    return out.bytes;
}

/// A CalculiX file in one of its four forms: two short texts, two binary ones. Of the cells it has no point; an array
/// of seven components stands in for the one on cells.
inline QByteArray frd(int form) {
    QByteArray out = "    1C\n    1UDATE              today\n";
    const auto padded = [](const QByteArray& text, int width) { return text.rightJustified(width, ' '); };
    const auto id = [&](double number) { return padded(QByteArray::number(number), form == 0 ? 5 : 10); };
    const auto real = [&](double value) { return padded(QByteArray::number(value, 'E', 5), 12); };
    const auto block = [&](const std::vector<double>& values, std::size_t components) {
        for (std::size_t node = 0; node < 6; ++node) {
            const std::vector<double> own(values.begin() + qsizetype(node * components),
                                          values.begin() + qsizetype((node + 1) * components));
            if (form >= 2) {
                out += binary<qint32>({double(node + 1) * 10}, false) +
                       (form == 2 ? binary<float>(own, false) : binary<double>(own, false));
                continue;
            }
            out += " -1" + id(double(node + 1) * 10);
            for (std::size_t c = 0; c < components; ++c)
                out += (c == 6 ? "\n -2" + padded({}, form == 0 ? 5 : 10) : QByteArray()) + real(own[c]);
            out += '\n';
        }
        out += form < 2 ? " -3\n" : "";
    };
    const auto header = [&](const QByteArray& start, int count) {
        out += start.leftJustified(24, ' ') + padded(QByteArray::number(count), 12) + QByteArray(37, ' ') +
               padded(QByteArray::number(form), 2) + '\n';
    };
    header("    2C", 6);
    block(points, 3);
    header("    3C", 4);
    for (std::size_t c = 1; c < cells.size(); ++c) {
        const int type = cells[c].vtkType == 9 ? 9 : cells[c].vtkType == 3 ? 11 : 7;
        std::vector<double> nodes;
        for (const int node : cells[c].nodes)
            nodes.push_back((node + 1) * 10);
        if (form >= 2) {
            out += binary<qint32>({double(c), double(type), 0, 1}, false) + binary<qint32>(nodes, false);
            continue;
        }
        out += " -1" + id(double(c)) + padded(QByteArray::number(type), 5) + "    0    1\n -2";
        for (const double node : nodes)
            out += id(node);
        out += '\n';
    }
    out += form < 2 ? " -3\n" : "";
    const auto array = [&](const QByteArray& name, const std::vector<double>& values, int kind, int components) {
        out += QByteArray("  100CL  101") + real(2.5) + padded("6", 12) + QByteArray(22, ' ') + padded("1", 5) +
               QByteArray(10, ' ') + padded(QByteArray::number(form), 2) + '\n';
        const auto column = [&](int number) { return padded(QByteArray::number(number), 5); };
        out += " -4  " + name.leftJustified(8, ' ') + column(components + 1) + column(1) + '\n';
        for (int c = 0; c <= components; ++c)
            out += " -5  " + QByteArray("C" + QByteArray::number(c + 1)).leftJustified(8, ' ') + column(1) +
                   column(kind) + column(c + 1) + column(0) + (c == components ? "    1ALL" : "") + '\n';
        block(values, std::size_t(components));
    };
    array("DISP", displacement, 2, 3);
    array("T at", temperature, 1, 1);
    array("MANY", std::vector<double>(42, 1.5), 1, 7);
    return out + " 9999\n";
}

} // namespace sample
