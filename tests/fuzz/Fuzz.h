// What the fuzz targets share: a check that the fuzzer sees fail, and the way through a reader and its writer.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <QString>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// The program that a plot asks for its folder and its text for fonts. There is no store of settings, which would cost
/// far more than the reading.
struct Program {
    bool HasNoScreen = qputenv("QT_QPA_PLATFORM", "offscreen") && qputenv("XDG_CONFIG_HOME", "/dev/null");
    int ArgumentCount = 1;
    char Name[5] = "fuzz";
    char* Arguments[2] = {Name, nullptr};
    QGuiApplication Application{ArgumentCount, Arguments};
};

/// The path of a file with the fuzzer's bytes, the same each time, in a folder in memory.
inline QString inputFile(const std::uint8_t* data, std::size_t size) {
    static const Program program;
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/velorin-XXXXXX"));
    QFile file(folder.filePath(QStringLiteral("input.vrf.property")));
    require(file.open(QIODevice::WriteOnly) && file.write(reinterpret_cast<const char*>(data), qint64(size)) >= 0,
            "a folder to write to");
    return file.fileName();
}

/// Reads the input, draws what it gave, writes and reads it: from then on the file stays as it is. A `Document` can
/// `Read(path)`, `Write(path)` and `Draw()`, which also checks it, and is false for what can't come back from a file.
template<class Document>
void readDrawWriteRead(const std::uint8_t* data, std::size_t size) {
    const QString path = inputFile(data, size);
    const auto saved = [&path](const Document& document) {
        document.Write(path);
        QFile file(path);
        require(file.open(QIODevice::ReadOnly), "what was saved is there");
        return file.readAll();
    };
    Document read, once, twice;
    read.Read(path);
    if (!read.Draw())
        return;
    saved(read);
    once.Read(path);
    const QByteArray first = saved(once);
    twice.Read(path);
    require(saved(twice) == first, "what was written stays the same");
}
