// The manual: its first page, its pages by keyword and by word, and what this program is.
#include "mainwin/frmMain.h"

#include "app/helpPages.h"
#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "extensions/windows/frmKeyword.h"
#include "mainwin/frmAbout.h"
#include "mainwin/globals.h"
#include "platform/widgets/Shell.h"

using mdApplication::runModal;
using mdApplication::ShowMessage;

QString frmMain::helpIndex() {
    const QString page = helpPages::Index(mdApplication::Settings.Window.Help, mdApplication::ProgramFolder(), u"ja"_s);
    if (page.isEmpty())
        ShowMessage(u"ヘルプドキュメントが見つかりません。"_s, MessageStyle::Stop);
    return page;
}

void frmMain::showHelpIndex() {
    const QString page = helpIndex();
    if (!page.isEmpty() && !Shell::Open(page))
        ShowMessage(page + u"\r\nヘルプドキュメントが参照できません。"_s, MessageStyle::Stop);
}

void frmMain::findHelp(int style) {
    const QString page = helpIndex();
    if (page.isEmpty())
        return;
    frmKeyword dialog(this, mdApplication::PathPart(page, mdApplication::Folder), style);
    runModal(dialog);
}

void frmMain::showHelpKeyword() {
    findHelp(frmKeyword::Keywords);
}

void frmMain::showHelpSearch() {
    findHelp(frmKeyword::Search);
}

void frmMain::showAbout() {
    frmAbout dialog(this);
    runModal(dialog);
}
