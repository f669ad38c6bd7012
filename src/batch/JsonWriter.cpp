#include "batch/JsonWriter.h"

#include "app/NumberFormat.h"
#include "platform/base/NativePath.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <cmath>

JsonWriter::JsonWriter(QIODevice& target) : device(target) {}

void JsonWriter::flushWhenFull() {
    constexpr qsizetype enough = 1 << 20;
    if (buffer.size() < enough && depth > 0)
        return;
    device.write(buffer);
    buffer.clear();
}

void JsonWriter::separate() {
    if (!first)
        buffer += ',';
    first = false;
}

void JsonWriter::open(char bracket) {
    separate();
    buffer += bracket;
    first = true;
    ++depth;
}

void JsonWriter::close(char bracket) {
    buffer += bracket;
    first = false;
    if (--depth == 0)
        buffer += '\n';
    flushWhenFull();
}

void JsonWriter::Key(const char* name) {
    separate();
    buffer += '"';
    buffer += name;
    buffer += "\":";
    first = true;
}

void JsonWriter::Value(const QString& text) {
    separate();
    const QByteArray array = QJsonDocument(QJsonArray{NativePath::Shown(text)}).toJson(QJsonDocument::Compact);
    // Control characters beyond the first ones may stand as they are, but a terminal would obey them.
    const auto isControl = [&array](qsizetype i) {
        return array[i] == '\x7f' || (array[i] == '\xc2' && static_cast<unsigned char>(array[i + 1]) < 0xa0);
    };
    for (qsizetype i = 1; i < array.size() - 1; ++i) {
        if (!isControl(i)) {
            buffer += array[i];
            continue;
        }
        i += array[i] == '\xc2';
        buffer += "\\u00" + QByteArray(1, array[i]).toHex();
    }
}

void JsonWriter::Value(int number) {
    separate();
    buffer += QByteArray::number(number);
}

void JsonWriter::Value(bool flag) {
    separate();
    buffer += flag ? "true" : "false";
}

void JsonWriter::Value(float number) {
    if (!std::isfinite(number)) {
        Null();
        return;
    }
    separate();
    buffer += NumberFormat::Shortest(number).toLatin1();
}

void JsonWriter::Null() {
    separate();
    buffer += "null";
}

void JsonWriter::NumberOf(int index) {
    if (index < 0)
        Null();
    else
        Value(index + 1);
}
