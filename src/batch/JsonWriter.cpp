#include "batch/JsonWriter.h"

#include "app/NumberFormat.h"

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
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    buffer += QByteArrayView(array).sliced(1, array.size() - 2);
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
