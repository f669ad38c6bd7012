// Add-in modules and external tools on the menus, and the options of the program.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "extensions/mdAddIn.h"
#include "extensions/windows/frmAddinManager.h"
#include "extensions/windows/frmOptionSetting.h"
#include "extensions/windows/toolPictures.h"
#include "mainwin/commandFamilies.h"
#include "mainwin/globals.h"
#include "platform/widgets/LongWork.h"
#include "plot/windows/frmGraph.h"

#include <QLabel>

using mdApplication::Model;
using mdApplication::runModal;
using mdApplication::ShowMessage;

void frmMain::buildAddinMenu() {
    std::vector<FamilyEntry> entries;
    for (const AddinModule& module : mdApplication::Addins.ModuleList())
        entries.push_back({.Caption = QString(module.Name).replace(u'&', u"&&"_s),
                           .Description = module.Description,
                           .Picture = module.Picture.isEmpty() ? QIcon() : QIcon(module.Picture)});
    commandFamilies::Set(*bars, u"addin-"_s, entries);
}

void frmMain::buildToolsMenu() {
    std::vector<FamilyEntry> entries;
    for (const ToolEntry& tool : mdApplication::Tools)
        entries.push_back({tool.Name, tool.Description, !tool.Missing, toolPictures::PictureOf(tool)});
    commandFamilies::Set(*bars, u"tool-"_s, entries);
}

void frmMain::editOptions() {
    std::vector<ToolEntry> tools = mdApplication::Tools;
    frmOptionSetting dialog(this, mdApplication::Settings, tools);
    runModal(dialog);
    if (!dialog.Result)
        return;
    if (tools != mdApplication::Tools) {
        if (!toolTable::SaveTools(tools))
            Tell(u"ツールの設定を保存することができません。"_s);
        mdApplication::Tools = tools;
        buildToolsMenu();
    }
    // The numbers at their axes may go by the options.
    mdApplication::NotifyGraphLayoutChanged(nullptr);
    repaint();
}

void frmMain::manageAddins() {
    frmAddinManager dialog(this, mdApplication::Addins, mdAddIn::AddinFolders(mdApplication::ProgramFolder()));
    runModal(dialog);
    buildAddinMenu();
}

void frmMain::runAddin(int number) {
    mdApplication::LowerGraphWindows(true);
    const auto work = [this](const QString& name, const std::function<void()>& run) {
        LongWork waiting(u"アドイン「"_s + name + u"」を実行しています。"_s,
                         [this](const QString& line) { panels[0]->setText(line); });
        waiting.Run([&](const LongWork::Progress&) { run(); });
    };
    const QString failure = mdAddIn::RunAddin(mdApplication::Addins, number, Model, Selection, work);
    if (!failure.isEmpty())
        ShowMessage(failure, MessageStyle::Stop);
    mdApplication::LowerGraphWindows(false);
}

void frmMain::runTool(int index) {
    if (index < 0 || index >= int(mdApplication::Tools.size()))
        return;
    const LabelMacros macros = toolTable::BuildToolMacros(Model.FileName, mdApplication::ProgramFolder());
    if (const auto failure = toolTable::RunTool(mdApplication::Tools[std::size_t(index)], macros))
        ShowMessage(*failure, MessageStyle::Stop);
}
