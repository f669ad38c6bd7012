#include "QuadMesh.h"

#include "platform/base/Literals.h"
#include "platform/base/WholeFile.h"
#include "result/VrfBuilder.h"
#include "result/mdVelorinResultModel.h"

#include <QDir>

namespace QuadMesh {

namespace {

constexpr qint32 quadType = 1;

/// A number from -1 to 1 that looks random and is the same for the same arguments.
double jitter(std::uint32_t index, std::uint32_t direction) {
    std::uint32_t bits = (index * 2 + direction) * 2654435761u;
    bits = (bits ^ bits >> 15) * 2246822519u;
    bits ^= bits >> 13;
    return double(bits) / 2147483648.0 - 1;
}

VrfBuilder meshOf(int columns, int rows) {
    VrfBuilder file;
    file.items = {{u"Displacement X"_s, -1, 1},
                  {u"Displacement Y"_s, -1, 2},
                  {u"Stress on nodes"_s, -1, 0},
                  {u"Stress on elements"_s, quadType, 0}};
    constexpr double mostJitter = 0.3;
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column) {
            const auto index = std::uint32_t(file.nodes.size());
            file.nodes.push_back({column + mostJitter * jitter(index, 0), row + mostJitter * jitter(index, 1)});
        }
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const int corner = row * (columns + 1) + column + 1;
            file.elements.push_back({corner, corner + 1, corner + columns + 2, corner + columns + 1});
        }
    return file;
}

VrfBuilder::Step stepOf(const VrfBuilder& mesh, int columns, int rows, int step) {
    VrfBuilder::Step result;
    result.time = 0.1 * step;
    result.types.assign(mesh.elements.size(), quadType);
    result.values.resize(ItemCount);
    const double phase = 0.2 * step;
    for (const auto& [x, y] : mesh.nodes) {
        const double across = 6 * x / columns;
        const double down = 6 * y / rows;
        result.values[0].push_back(std::sin(across + phase) * std::cos(down));
        result.values[1].push_back(std::cos(across) * std::sin(down + phase));
        result.values[2].push_back(100 * std::sin(across + down + phase));
    }
    for (const auto& element : mesh.elements)
        result.values[3].push_back(result.values[2][std::size_t(element[0] - 1)]);
    return result;
}

bool write(const QString& path, int elements, int steps, int firstItem) {
    const int columns = ColumnsOf(elements);
    const int rows = elements / columns;
    VrfBuilder mesh = meshOf(columns, rows);
    mesh.items.erase(mesh.items.begin(), mesh.items.begin() + firstItem);
    WholeFile file(path);
    file.write(mesh.Bytes());
    for (int step = 0; step < steps; ++step) {
        VrfBuilder::Step values = stepOf(mesh, columns, rows, step);
        values.values.erase(values.values.begin(), values.values.begin() + firstItem);
        QByteArray bytes;
        VrfBuilder::appendStep(bytes, values);
        file.write(bytes);
    }
    return !file.Commit();
}

} // namespace

int ColumnsOf(int elements) {
    int columns = int(std::sqrt(double(elements)));
    while (elements % columns != 0)
        --columns;
    return columns;
}

QString File(int elements, int steps, int firstItem) {
    const QString folder = QStringLiteral(VELORIN_BENCH_FOLDER);
    const QString path = u"%1/quads-%2-%3-%4.vrf"_s.arg(folder).arg(elements).arg(steps).arg(firstItem);
    if (!QFile::exists(path) && !(QDir().mkpath(folder) && write(path, elements, steps, firstItem)))
        qFatal("%s cannot be written", qPrintable(path));
    return path;
}

ResultModel Opened(int elements, int steps, std::int32_t item) {
    ResultModel model;
    const QString path = File(elements, steps);
    if (!mdVelorinResultModel::LoadResultFile(path, model) ||
        !mdVelorinResultModel::LoadStep(0, item, model, false, -1))
        qFatal("%s cannot be read", qPrintable(path));
    return model;
}

} // namespace QuadMesh
