// What the commands do that are about the printed page.
#include "mainwin/frmMain.h"

#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/globals.h"
#include "output/mdPage.h"
#include "output/windows/frmPageLayout.h"
#include "output/windows/frmPreview.h"
#include "output/windows/printPage.h"
#include "platform/device/Printers.h"

#include <QLabel>
#include <QPointer>

using mdApplication::Current;
using mdApplication::InstalledPrinters;
using mdApplication::Settings;
using mdApplication::ShowMessage;

bool frmMain::isThereAPrinter() {
    // The printers outlive the window.
    InstalledPrinters->Progress = [window = QPointer(this)](const QString& text) {
        if (window)
            window->panels[0]->setText(text);
    };
    if (InstalledPrinters->Any())
        return true;
    ShowMessage(u"利用可能なプリンタがありません。"_s, MessageStyle::Stop);
    return false;
}

void frmMain::printOut() {
    if (!isThereAPrinter())
        return;
    Current.Plotter.SetPrinters(InstalledPrinters.get());
    const std::optional<PlotPrinter> printer = mdPage::OpenPrinter(Settings.Page, Current.Plotter);
    if (!printer) {
        ShowMessage(Settings.Page.Printer + u"\r\nプリンタを開くことができません。"_s, MessageStyle::Stop);
        return;
    }
    if (PrintPage(Current, *printer))
        Tell(u"印刷しました。"_s);
}

void frmMain::showPreview() {
    if (!isThereAPrinter())
        return;
    frmPreview dialog(this, Current, *InstalledPrinters);
    dialog.FirstStep();
    mdApplication::runModal(dialog);
    repaint();
}

void frmMain::editPageLayout() {
    if (!isThereAPrinter())
        return;
    frmPageLayout dialog(this, *InstalledPrinters, Settings.Page);
    mdApplication::runModal(dialog);
}
