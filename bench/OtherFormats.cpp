#include "OtherFormats.h"

#include "platform/base/Literals.h"
#include "platform/base/WholeFile.h"
#include "result/VrfBuilder.h"

#include <QDir>
#include <QtEndian>
#include <charconv>
#include <cmath>

namespace OtherFormats {

namespace {

struct Array {
    const char* Name;
    int Components;
};
constexpr Array arrays[] = {{"DISP", 3}, {"STRESS", 6}, {"NDTEMP", 1}};

/// Nodes in rows of `Side`, one more than there are elements.
struct Mesh {
    explicit Mesh(int nodes) : Side(int(std::sqrt(double(nodes)))) {}
    int Side;

    int Nodes() const { return Side * Side; }
    int Elements() const { return (Side - 1) * (Side - 1); }
    double Place(int node, int axis) const {
        return axis > 1 ? 0 : (axis == 0 ? node % Side : node / Side) + 0.3 * std::sin(node * 12.9898 + axis);
    }
    int Corner(int element, int corner) const {
        const int first = element / (Side - 1) * Side + element % (Side - 1);
        return first + (corner == 1 || corner == 2) + (corner > 1 ? Side : 0);
    }
    static double Value(int node, int item, int step) { return std::sin(node * 1e-3 + item + 0.1 * step) * 1e3; }
};

/// What a file is put together of: words as text, numbers as text or binary.
class Out {
public:
    QByteArray Bytes;

    Out& operator<<(const char* text) {
        Bytes += text;
        return *this;
    }
    Out& operator<<(int number) { return word(number); }
    /// As many digits as it needs to be read back.
    Out& operator<<(double number) { return word(number); }
    /// In a column of so many characters.
    void Column(int number, int width) { Bytes += QByteArray::number(number).rightJustified(width, ' '); }
    void Real12(double number) {
        char text[16];
        Bytes.append(text, std::snprintf(text, sizeof text, "%12.5E", number));
    }
    template<class T>
    void Binary(T number, bool big = false) {
        number = big ? qToBigEndian(number) : number;
        Bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    }

private:
    template<class T>
    Out& word(T number) {
        char text[32];
        const auto end = std::to_chars(text, text + sizeof text, number).ptr;
        Bytes.append(text, end - text);
        return *this;
    }
};

void writeVrf(const Mesh& mesh, int steps, Out& out) {
    VrfBuilder file;
    for (int item = 0; item < ItemCount; ++item)
        file.items.push_back({u"Item %1"_s.arg(item), -1, 0});
    for (int node = 0; node < mesh.Nodes(); ++node)
        file.nodes.push_back({mesh.Place(node, 0), mesh.Place(node, 1)});
    for (int element = 0; element < mesh.Elements(); ++element) {
        file.elements.emplace_back();
        for (int corner = 0; corner < 4; ++corner)
            file.elements.back().push_back(mesh.Corner(element, corner) + 1);
    }
    out.Bytes = file.Bytes();
    for (int step = 0; step < steps; ++step) {
        VrfBuilder::Step values;
        values.time = step;
        values.types.assign(file.elements.size(), 0);
        values.values.resize(ItemCount);
        for (int item = 0; item < ItemCount; ++item)
            for (int node = 0; node < mesh.Nodes(); ++node)
                values.values[std::size_t(item)].push_back(Mesh::Value(node, item, step));
        VrfBuilder::appendStep(out.Bytes, values);
    }
}

/// `put(node, item)` for each value of an array.
template<class Put>
void eachValue(const Mesh& mesh, const Array& array, int firstItem, const Put& put) {
    for (int node = 0; node < mesh.Nodes(); ++node)
        for (int item = firstItem; item < firstItem + array.Components; ++item)
            put(node, item);
}

void writeVtk(const Mesh& mesh, bool isText, Out& out) {
    const auto real = [&](double number) { isText ? void(out << number << " ") : out.Binary(number, true); };
    const auto whole = [&](int number) { isText ? void(out << number << " ") : out.Binary(number, true); };
    out << "# vtk DataFile Version 3.0\nmade up\n" << (isText ? "ASCII" : "BINARY");
    out << "\nDATASET UNSTRUCTURED_GRID\nPOINTS " << mesh.Nodes() << " double\n";
    for (int node = 0; node < mesh.Nodes(); ++node) {
        for (int axis = 0; axis < 3; ++axis)
            real(mesh.Place(node, axis));
        out << (isText ? "\n" : "");
    }
    out << "\nCELLS " << mesh.Elements() << " " << mesh.Elements() * 5 << "\n";
    for (int element = 0; element < mesh.Elements(); ++element) {
        whole(4);
        for (int corner = 0; corner < 4; ++corner)
            whole(mesh.Corner(element, corner));
        out << (isText ? "\n" : "");
    }
    out << "\nCELL_TYPES " << mesh.Elements() << "\n";
    for (int element = 0; element < mesh.Elements(); ++element)
        whole(9);
    out << "\nPOINT_DATA " << mesh.Nodes() << "\nFIELD FieldData " << int(std::size(arrays)) << "\n";
    int item = 0;
    for (const Array& array : arrays) {
        out << array.Name << " " << array.Components << " " << mesh.Nodes() << " double\n";
        eachValue(mesh, array, item, [&](int node, int component) { real(Mesh::Value(node, component, 0)); });
        out << "\n";
        item += array.Components;
    }
}

/// Numbers as text in lines of six, or, appended behind all, raw.
void writeVtu(const Mesh& mesh, bool isText, Out& out) {
    Out appended;
    const auto array = [&](const char* type, const char* name, int components, qint64 count, const auto& numberOf) {
        out << "<DataArray type=\"" << type << "\" Name=\"" << name << "\" NumberOfComponents=\"" << components;
        if (!isText) {
            out << "\" format=\"appended\" offset=\"" << int(appended.Bytes.size()) << "\"/>\n";
            appended.Binary(quint32(count * qint64(sizeof(numberOf(0)))));
            for (qint64 i = 0; i < count; ++i)
                appended.Binary(numberOf(int(i)));
            return;
        }
        out << "\" format=\"ascii\">\n";
        for (qint64 i = 0; i < count; ++i)
            out << numberOf(int(i)) << (i % 6 == 5 ? "\n" : " ");
        out << "</DataArray>\n";
    };
    out << "<VTKFile type=\"UnstructuredGrid\" version=\"0.1\" byte_order=\"LittleEndian\">\n<UnstructuredGrid>\n"
           "<Piece NumberOfPoints=\""
        << mesh.Nodes() << "\" NumberOfCells=\"" << mesh.Elements() << "\">\n<Points>\n";
    array("Float64", "Points", 3, qint64(mesh.Nodes()) * 3, [&](int i) { return mesh.Place(i / 3, i % 3); });
    out << "</Points>\n<Cells>\n";
    array("Int32", "connectivity", 1, qint64(mesh.Elements()) * 4, [&](int i) { return mesh.Corner(i / 4, i % 4); });
    array("Int32", "offsets", 1, mesh.Elements(), [](int i) { return (i + 1) * 4; });
    array("Int32", "types", 1, mesh.Elements(), [](int) { return 9; });
    out << "</Cells>\n<PointData>\n";
    int item = 0;
    for (const auto& [name, components] : arrays) {
        array("Float64", name, components, qint64(mesh.Nodes()) * components,
              [&](int i) { return Mesh::Value(i / components, item + i % components, 0); });
        item += components;
    }
    out << "</PointData>\n</Piece>\n</UnstructuredGrid>\n";
    if (!isText)
        (out << "<AppendedData encoding=\"raw\">\n_").Bytes += appended.Bytes + "\n</AppendedData>\n";
    out << "</VTKFile>\n";
}

void writeMsh(const Mesh& mesh, bool isText, bool isVersion4, int steps, Out& out) {
    const auto real = [&](double number) { isText ? void(out << " " << number) : out.Binary(number); };
    const auto id = [&](int number) { isText ? void(out << number) : out.Binary(number); };
    const auto end = [&] { out << (isText ? "\n" : ""); };
    out << "$MeshFormat\n" << (isVersion4 ? "4.1 " : "2.2 ") << (isText ? "0 8\n" : "1 8\n");
    if (!isText)
        out.Binary(qint32(1));
    out << "$EndMeshFormat\n$Nodes\n";
    if (isVersion4) {
        out << "1 " << mesh.Nodes() << " 1 " << mesh.Nodes() << "\n2 1 0 " << mesh.Nodes() << "\n";
        for (int node = 1; node <= mesh.Nodes(); ++node)
            out << node << "\n";
    } else {
        out << mesh.Nodes() << "\n";
    }
    for (int node = 0; node < mesh.Nodes(); ++node) {
        if (!isVersion4)
            id(node + 1);
        for (int axis = 0; axis < 3; ++axis)
            real(mesh.Place(node, axis));
        end();
    }
    out << "$EndNodes\n$Elements\n";
    if (isVersion4)
        out << "1 " << mesh.Elements() << " 1 " << mesh.Elements() << "\n2 1 3 ";
    out << mesh.Elements() << "\n";
    if (!isText) // one run of quadrilaterals with two tags each
        for (const int head : {3, mesh.Elements(), 2})
            out.Binary(head);
    for (int element = 0; element < mesh.Elements(); ++element) {
        id(element + 1);
        if (isText)
            out << (isVersion4 ? "" : " 3 2 1 1");
        else
            out.Binary(1), out.Binary(1);
        for (int corner = 0; corner < 4; ++corner) {
            out << (isText ? " " : "");
            id(mesh.Corner(element, corner) + 1);
        }
        end();
    }
    out << "$EndElements\n";
    for (int step = 0; step < steps; ++step) {
        int first = 0;
        for (const Array& array : arrays) {
            out << "$NodeData\n1\n\"" << array.Name << "\"\n1\n"
                << step << "\n3\n"
                << step << "\n"
                << array.Components << "\n"
                << mesh.Nodes() << "\n";
            eachValue(mesh, array, first, [&](int node, int item) {
                if (item == first)
                    id(node + 1);
                real(Mesh::Value(node, item, step));
                if (item + 1 == first + array.Components)
                    end();
            });
            out << "$EndNodeData\n";
            first += array.Components;
        }
    }
}

void writeFrd(const Mesh& mesh, bool isText, int steps, Out& out) {
    const int form = isText ? 1 : 2;
    const auto entry = [&](int node) { isText ? (out << " -1", out.Column(node + 1, 10)) : out.Binary(node + 1); };
    const auto real = [&](double number) { isText ? out.Real12(number) : out.Binary(float(number)); };
    const auto end = [&] { out << (isText ? " -3\n" : ""); };
    const auto header = [&](const char* start, int count, int step) {
        out.Bytes += QByteArray(start).leftJustified(24, ' ');
        out.Column(count, 12);
        out.Column(step, 27);
        out.Column(form, 12);
        out << "\n";
    };
    out << "    1C\n";
    // The binary mesh has its places in double precision.
    header("    2C", mesh.Nodes(), 0);
    if (!isText)
        out.Bytes[out.Bytes.size() - 2] = '3';
    for (int node = 0; node < mesh.Nodes(); ++node) {
        entry(node);
        for (int axis = 0; axis < 3; ++axis)
            isText ? out.Real12(mesh.Place(node, axis)) : out.Binary(mesh.Place(node, axis));
        out << (isText ? "\n" : "");
    }
    end();
    header("    3C", mesh.Elements(), 0);
    for (int element = 0; element < mesh.Elements(); ++element) {
        entry(element);
        for (const int number : {9, 0, 1})
            isText ? out.Column(number, 5) : out.Binary(number);
        out << (isText ? "\n -2" : "");
        for (int corner = 0; corner < 4; ++corner)
            isText ? out.Column(mesh.Corner(element, corner) + 1, 10) : out.Binary(mesh.Corner(element, corner) + 1);
        out << (isText ? "\n" : "");
    }
    end();
    for (int step = 0; step < steps; ++step) {
        int first = 0;
        for (const Array& array : arrays) {
            Out start;
            start << "  100CL  101";
            start.Real12(step);
            header(start.Bytes.constData(), mesh.Nodes(), step + 1);
            out << " -4  " << QByteArray(array.Name).leftJustified(8, ' ').constData();
            out.Column(array.Components, 5);
            out << "    1\n";
            for (int c = 1; c <= array.Components; ++c) {
                out << " -5  " << QByteArray("C" + QByteArray::number(c)).leftJustified(8, ' ').constData();
                for (const int number : {1, array.Components == 3 ? 2 : 1, c, 0})
                    out.Column(number, 5);
                out << "\n";
            }
            eachValue(mesh, array, first, [&](int node, int item) {
                if (item == first)
                    entry(node);
                real(Mesh::Value(node, item, step));
                out << (isText && item + 1 == first + array.Components ? "\n" : "");
            });
            end();
            first += array.Components;
        }
    }
    out << " 9999\n";
}

bool write(const QString& path, const Mesh& mesh, int form, int steps) {
    Out out;
    switch (form) {
    case 0:
        writeVrf(mesh, steps, out);
        break;
    case 1:
    case 2:
        writeVtk(mesh, form == 1, out);
        break;
    case 3:
    case 4:
        writeVtu(mesh, form == 3, out);
        break;
    case 5:
    case 6:
    case 7:
        writeMsh(mesh, form != 7, form == 6, steps, out);
        break;
    default:
        writeFrd(mesh, form == 8, steps, out);
    }
    WholeFile file(path);
    file.write(out.Bytes);
    return !file.Commit();
}

} // namespace

const std::vector<QString>& Forms() {
    static const std::vector<QString> forms{u"own.vrf"_s,  u"text.vtk"_s,   u"binary.vtk"_s, u"text.vtu"_s,
                                            u"raw.vtu"_s,  u"text 2.msh"_s, u"text 4.msh"_s, u"binary.msh"_s,
                                            u"text.frd"_s, u"binary.frd"_s};
    return forms;
}

QString File(int nodes, int form, int steps) {
    const QString folder = QStringLiteral(VELORIN_BENCH_FOLDER);
    const QString path = u"%1/%2-%3-%4"_s.arg(folder).arg(nodes).arg(steps).arg(Forms()[std::size_t(form)]);
    if (!QFile::exists(path) && !(QDir().mkpath(folder) && write(path, Mesh(nodes), form, steps)))
        qFatal("%s cannot be written", qPrintable(path));
    return path;
}

} // namespace OtherFormats
