// How a file enters the window, and how its steps follow each other.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "platform/Dialogs.h"
#include "result/mdVelorinResultModel.h"

#include <QDir>

using mdApplication::Model;
using mdApplication::Settings;

bool frmMain::IsOpen() const {
    return !mdVelorinResultModel::IsFileClosed(Model);
}

void frmMain::FirstStep(const QString& commandLine) {
    clsModel.SetScaleMode(PlotScaleMode(Settings.Window.ScaleMode));
    if (mdApplication::FileExists(commandLine))
        openResultFile(commandLine);
    else if (!commandLine.isEmpty())
        mdApplication::ShowMessage(u"無効なパラメータです。"_qs, Dialogs::Style::Stop);
}

void frmMain::openResultFile(const QString& path) {
    Selection.Clear();
    if (!mdVelorinResultModel::LoadResultFile(path, Model)) {
        // A file of another kind leaves the earlier one open, but this window has given it up.
        mdVelorinResultModel::CloseResultFile(Model);
        updateCaption();
        updateCommands();
        mdApplication::ShowMessage(path + u"\r\nファイルの形式が不正です。"_qs, Dialogs::Style::Stop);
        clearPicture();
        return;
    }
    mdVelorinResultModel::LoadStep(std::max(Model.CurrentStep, 0), std::max(Model.CurrentItem, 0), Model, false,
                                   Settings.Difference.StandardStep);
    view.RefitPending = true;
    Selection.Clear();
    mdView::SetViewBounds(Model.Mesh, view);
    if (!isVisible())
        show();
    updateCaption();
    SetZoom(0);
}

void frmMain::promptAndOpen() {
    QString path = Model.FileName;
    if (promptFileName(path))
        openResultFile(path);
}

bool frmMain::promptFileName(QString& path) {
    const QString filter =
        mdApplication::ApplicationTitle + u" 計算結果ファイル(*.vrf)|*.vrf|すべてのファイル(*.*)|*.*"_qs;
    const auto chosen =
        Dialogs::OpenFileName(this, tr("計算結果ファイルを開く"), path.isEmpty() ? QDir::currentPath() : path, filter);
    path = chosen.value_or(path);
    return chosen.has_value();
}

void frmMain::updateCaption() {
    const QString title = IsOpen() ? mdApplication::PathPart(Model.FileName, mdApplication::BaseName) : u"(未定義)"_qs;
    setWindowTitle(mdApplication::ApplicationTitle + u" - "_qs + title);
}

void frmMain::selectStep(int step) {
    if (!IsOpen() || step == Model.CurrentStep)
        return;
    mdVelorinResultModel::LoadStep(step, Model.CurrentItem, Model, false, Settings.Difference.StandardStep);
    repaint();
}
