// Entry of velorin-batch.
#include "batch/commandLine.h"
#include "platform/base/NativePath.h"

#include <QFile>
#include <QGuiApplication>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {
constexpr int standardOutput = 1, standardError = 2;

/// In the place of a standard stream that is closed the next file to be opened would get what is told.
void takeClosedStreams() {
    int lowestFree = 0;
    do
        lowestFree = ::open("/dev/null", O_RDONLY);
    while (lowestFree >= 0 && lowestFree <= standardError);
    if (lowestFree >= 0)
        ::close(lowestFree);
}
} // namespace

int main(int argc, char** argv) {
    takeClosedStreams();
    // The error stream is for the one line that says what is wrong with the input, not for the toolkit's remarks.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(NativePath::Text(argv[i]));
    // The toolkit gets the program's name alone, since it would take options such as --style for its own. Pictures need
    // fonts but never a display.
    int ownCount = 1;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> application;
    if (batch::NeedsFonts(arguments))
        application = std::make_unique<QGuiApplication>(ownCount, argv);
    else
        application = std::make_unique<QCoreApplication>(ownCount, argv);
    QFile output, errors;
    if (!output.open(standardOutput, QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        !errors.open(standardError, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return batch::UnusableInput;
    return batch::Run(arguments, {output, errors});
}
