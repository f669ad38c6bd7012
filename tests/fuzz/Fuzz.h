// What the fuzz targets share: a check that the fuzzer sees fail, and files for what it makes up.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <QString>
#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

inline QByteArray bytesOf(const QString& path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "what was saved is there");
    return file.readAll();
}

/// The program that a plot asks for its folder and its text for fonts.
struct Program {
    bool HasNoScreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    int ArgumentCount = 1;
    char Name[5] = "fuzz";
    char* Arguments[2] = {Name, nullptr};
    QGuiApplication Application{ArgumentCount, Arguments};
};

/// A file in memory; readers find it by its name under /proc.
class MemoryFile {
public:
    MemoryFile() : descriptor(memfd_create("input", MFD_CLOEXEC)) { require(descriptor >= 0, "memfd_create"); }
    ~MemoryFile() { close(descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    void Write(const std::uint8_t* data, std::size_t size) const {
        require(ftruncate(descriptor, 0) == 0, "ftruncate");
        require(pwrite(descriptor, data, size, 0) == ssize_t(size), "pwrite");
    }
    QString Path() const { return u"/proc/self/fd/"_s + QString::number(descriptor); }

private:
    int descriptor;
};
