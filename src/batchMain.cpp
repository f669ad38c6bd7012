// Entry of velorin-batch.
#include "batch/commandLine.h"

#include <QFile>
#include <QGuiApplication>
#include <cstdio>

int main(int argc, char** argv) {
    // Pictures need fonts and so an application object, but never a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The error stream is for the one line that says what is wrong with the input, not for the toolkit's remarks.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QGuiApplication application(argc, argv);
    QFile output, errors;
    if (!output.open(stdout, QIODevice::WriteOnly) || !errors.open(stderr, QIODevice::WriteOnly))
        return batch::UnusableInput;
    return batch::Run(QGuiApplication::arguments().mid(1), {output, errors});
}
