// Writes JSON to a file as it comes, so that a large mesh never stands in memory as a document; it is whole, and ends
// with its line, when the outermost object is ended. Checks no nesting.
#pragma once

#include <QIODevice>
#include <QString>

class JsonWriter {
public:
    /// Writes to `device`, which the caller owns and has opened.
    explicit JsonWriter(QIODevice& device);
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void BeginObject() { open('{'); }
    void EndObject() { close('}'); }
    void BeginArray() { open('['); }
    void EndArray() { close(']'); }
    /// The name of the next value.
    void Key(const char* name);

    void Value(const QString& text);
    void Value(int number);
    void Value(bool flag);
    /// The shortest form that reads back; null for what JSON has no number for.
    void Value(float number);
    void Null();
    /// A number counted from 1 for an index counted from 0; null for a negative index.
    void NumberOf(int index);

    /// A member of an object.
    template<typename T>
    void Member(const char* name, const T& value) {
        Key(name);
        Value(value);
    }

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void flushWhenFull();

    QIODevice& device;
    QByteArray buffer;
    bool first = true;
    int depth = 0; ///< objects and arrays that are open
};
