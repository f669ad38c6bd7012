// The entry procedure and the start-up chain.
#include "app/mdApplication.h"
#include "app/settingsStore.h"
#include "app/windows/ShowMessage.h"
#include "extensions/mdAddIn.h"
#include "extensions/toolTable.h"
#include "mainwin/frmMain.h"
#include "mainwin/globals.h"
#include "platform/base/NativePath.h"
#include "platform/base/brenlib.h"
#include "platform/device/Fonts.h"
#include "platform/widgets/EndSignals.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTimer>
#include <QTranslator>
#include <exception>

namespace mdApplication {

namespace {

/// Why the start-up chain broke off; no number when nothing more is known.
struct StartUpFailure {
    int number = 0;
    QString description;
};

std::optional<StartUpFailure> InitializeApplication() {
    try {
        Fonts::InstallSubstitutions();
        // The answer is of no interest: a missing part is to show here and not in the middle of a drawing.
        brenlib::GetDllVersion();
        settingsStore::LoadSettings(Settings, ProgramFolder(), QString());
        Tools = toolTable::LoadTools();
        return {};
    } catch (const std::exception& error) {
        return StartUpFailure{1, QString::fromUtf8(error.what())};
    }
}

/// Ends the program as closing its window does, whatever dialog is open, and notes it. A window that is at work, or
/// that ends a slide show first, is asked again.
void End(frmMain& window, bool& ended) {
    constexpr int patienceMs = 50;
    ended = window.close();
    if (ended)
        QCoreApplication::exit();
    else
        QTimer::singleShot(patienceMs, &window, [&window, &ended] { End(window, ended); });
}

} // namespace

int EntryProcedure(QApplication& application, const QString& commandLine) {
    auto window = std::make_unique<frmMain>();
    if (const auto failure = InitializeApplication()) {
        ShowMessage(StartUpFailureText(failure->number, failure->description), MessageStyle::Stop);
        return 1;
    }
    const EndSignals endSignals;
    bool ended = false;
    QObject::connect(&endSignals, &EndSignals::Asked, window.get(), [&window, &ended] { End(*window, ended); });
    if (Settings.Window.AutoInstall)
        mdAddIn::AutoInstallAddins(Addins, mdAddIn::AddinFolders(ProgramFolder()), ShowMessage);
    if (ended)
        return 0;
    const QString notice = settingsStore::Notice();
    window->FirstStep(commandLine);
    if (ended)
        return 0;
    window->show();
    window->Tell(notice);
    return application.exec();
}

} // namespace mdApplication

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setApplicationName(mdApplication::ApplicationTitle);
    application.setApplicationVersion(QStringLiteral(VELORIN_VERSION));
    application.setDesktopFileName(u"velorin"_s);
    // The program speaks Japanese whatever the desktop does, and so must the toolkit's own dialogs.
    QTranslator toolkitTexts;
    if (toolkitTexts.load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(&toolkitTexts);
    // What the toolkit has not taken for its own; its own list knows no name that is not UTF-8.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(NativePath::Text(argv[i]));
    return mdApplication::EntryProcedure(application, arguments.join(u' '));
}
