// Writes small result files for tests, field by field, so that each test can bend the field that it is about.
#pragma once

#include "TestFolder.h"
#include "platform/base/Codepage.h"

#include <QtEndian>
#include <optional>
#include <vector>

struct VrfBuilder {
    struct Item {
        QString name;
        qint32 elementType = -1;
        qint32 flags = 0;
    };
    struct Step {
        double time = 0;
        QString name;
        std::vector<qint32> types;
        std::vector<std::vector<double>> values; ///< per item
    };

    QByteArray magic = "VRF10";
    qint32 version = 100;
    QString title = QStringLiteral("試験");
    std::vector<Item> items;
    std::vector<std::pair<double, double>> nodes;
    std::vector<std::vector<qint32>> elements; ///< node numbers counted from 1
    std::vector<Step> steps;
    std::optional<qint32> itemCount, nodeCount, elementCount; ///< told in the file instead of the true ones

    QByteArray Bytes() const {
        QByteArray out = magic;
        put(out, version);
        text(out, title);
        put(out, itemCount.value_or(qint32(items.size())));
        for (const Item& item : items) {
            text(out, item.name);
            put(out, item.elementType, item.flags);
        }
        put(out, nodeCount.value_or(qint32(nodes.size())), elementCount.value_or(qint32(elements.size())));
        for (const auto& [x, y] : nodes)
            put(out, x, y);
        for (const auto& element : elements)
            putList(out, element);
        out += QByteArray(16, '\0');
        for (const Step& step : steps)
            appendStep(out, step);
        return out;
    }

    static void appendStep(QByteArray& out, const Step& step) {
        put(out, step.time);
        text(out, step.name);
        for (const qint32 type : step.types)
            put(out, type);
        for (const auto& values : step.values)
            putList(out, values);
    }

    template<typename... T>
    static void put(QByteArray& out, T... values) {
        ((values = qToLittleEndian(values), out.append(reinterpret_cast<const char*>(&values), sizeof values)), ...);
    }
    template<typename T>
    static void putList(QByteArray& out, const std::vector<T>& values) {
        put(out, qint32(values.size()));
        for (const T value : values)
            put(out, value);
    }
    static void text(QByteArray& out, const QString& value) {
        const QByteArray bytes = Codepage::Encode(value);
        put(out, qint32(bytes.size()));
        out += bytes;
    }
};

/// Two unit squares side by side (type 1 and type 2), a node item with both displacement bits, an item per element of
/// type 2, two steps; the second square vanishes in the second step.
inline VrfBuilder twoSquares() {
    VrfBuilder file;
    file.items = {{QStringLiteral("変位"), -1, 3}, {QStringLiteral("応力"), 2, 0}};
    file.nodes = {{0, 0}, {1, 0}, {2, 0}, {0, 1}, {1, 1}, {2, 1}};
    file.elements = {{1, 2, 5, 4}, {2, 3, 6, 5}};
    file.steps = {{0, QStringLiteral("初期"), {1, 2}, {{1, 2, 3, 4, 5, 6}, {10}}},
                  {1.25, {}, {1, -1}, {{2, 4, 6, 8, 10, 12}, {}}}};
    return file;
}
