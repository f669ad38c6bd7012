// What the commands do that are about the printed page.
#include "mainwin/frmMain.h"

#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/globals.h"
#include "output/windows/frmPageLayout.h"
#include "platform/device/Printers.h"

using mdApplication::InstalledPrinters;
using mdApplication::Settings;
using mdApplication::ShowMessage;

void frmMain::editPageLayout() {
    if (!InstalledPrinters->Any()) {
        ShowMessage(u"利用可能なプリンタがありません。"_s, MessageStyle::Stop);
        return;
    }
    frmPageLayout dialog(this, *InstalledPrinters, Settings.Page);
    mdApplication::runModal(dialog);
}
