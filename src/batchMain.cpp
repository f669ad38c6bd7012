// Entry of velorin-batch.
#include "batch/commandLine.h"

#include <QFile>
#include <QGuiApplication>

int main(int argc, char** argv) {
    // Pictures need fonts and so an application object, but never a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The error stream is for the one line that says what is wrong with the input, not for the toolkit's remarks.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    // It gets the program's name alone, since it would take options such as --style for its own.
    int ownCount = 1;
    QGuiApplication application(ownCount, argv);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    QFile output, errors;
    constexpr int standardOutput = 1, standardError = 2;
    if (!output.open(standardOutput, QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        !errors.open(standardError, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return batch::UnusableInput;
    return batch::Run(arguments, {output, errors});
}
