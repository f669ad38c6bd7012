// Entry of velorin-batch.
#include "batch/commandLine.h"

#include <QFile>
#include <QGuiApplication>
#include <cstdio>

int main(int argc, char** argv) {
    // Pictures need fonts and so an application object, but never a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QFile output, errors;
    if (!output.open(stdout, QIODevice::WriteOnly) || !errors.open(stderr, QIODevice::WriteOnly))
        return batch::UnusableInput;
    return batch::Run(QGuiApplication::arguments().mid(1), {output, errors});
}
