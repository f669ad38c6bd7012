// What a file takes in memory when it is open, has a step loaded, and has been painted once: the resident memory of the
// whole program, and what of it was not there before the file was.
#include "QuadMesh.h"
#include "Stage.h"
#include "Table.h"

#include "platform/base/Literals.h"

#include <QFile>
#include <QGuiApplication>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double residentBytes() {
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).replace("kB", "").trimmed().toDouble() * 1024;
    return 0;
}

/// Runs `work` in a process of its own, so that none finds memory that another has given back.
template<class Work>
void inChild(const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        std::fflush(nullptr);
        _exit(0);
    }
    waitpid(child, nullptr, 0);
}

void measure(int elements, int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const double before = residentBytes();
    Stage stage(QuadMesh::Opened(elements, 10));
    stage.Paint(0);
    const double after = residentBytes();
    Table::Print({u"memory/%1"_s.arg(elements), 0, after / elements, 0, u"220 bytes an element"_s});
    Table::Print({u"memory/%1 without the bare program"_s.arg(elements), 0, (after - before) / elements, 0, {}});
}

} // namespace

int main(int argc, char** argv) {
    for (const int elements : {10000, 100000, 1000000}) {
        inChild([&] { QuadMesh::File(elements, 10); });
        inChild([&] { measure(elements, argc, argv); });
    }
    return 0;
}
