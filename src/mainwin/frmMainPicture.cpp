// Pictures that leave the window as files, with the command that makes them again.
#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/ctlScene.h"
#include "mainwin/frmMain.h"
#include "mainwin/globals.h"
#include "output/windows/frmSavePicture.h"
#include "platform/base/NativePath.h"
#include "platform/device/DrawingStopped.h"
#include "platform/raster/pictureFormats.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/LongWork.h"
#include "view/scene/pictureCommand.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>

using namespace mdApplication;

namespace {

/// A picture of the open file, as large and as fine as the window's.
PictureFile shownPicture(const ctlScene& scene) {
    return {.Title = NativePath::Shown(PathPart(Model.FileName, FileName)),
            .Size = scene.PixelSize(),
            .DotsPerInch = scene.DotsPerInch()};
}

QString pictureName() {
    return PathPart(PathPart(Model.FileName, FileName), PathWithoutExtension) + u".png"_s;
}

/// Beside the picture saved last, else beside the result file.
QString pictureFolder() {
    const QString& last = Settings.Window.PictureFolder;
    return !last.isEmpty() && NativePath::IsFolder(last) ? last : PathPart(Model.FileName, Folder);
}

} // namespace

void frmMain::savePicture() {
    PictureFile picture = shownPicture(*scene);
    frmSavePicture dialog(this, picture);
    runModal(dialog);
    if (!dialog.Result)
        return;
    HideGraphWindows();
    const std::optional<QString> path =
        Dialogs::SaveFileName(this, tr("画像を保存"), pictureFolder() + pictureName(),
                              u"PNGファイル(*.png)|*.png|SVGファイル(*.svg)|*.svg|PDFファイル(*.pdf)|*.pdf"_s);
    ShowGraphWindows();
    if (!path)
        return;
    const PictureFormat format = PictureFormatFor(*path);
    if (!format) {
        ShowMessage(tr("名前の終わりを .png、.svg、.pdf のどれかにしてください。"), MessageStyle::Stop);
        return;
    }
    Settings.Window.PictureFolder = PathPart(*path, Folder);
    constexpr int usual = 96;
    // Vector formats then divide each pixel more finely.
    if (format != &PngPicture && picture.DotsPerInch == usual)
        picture.DotsPerInch.reset();
    picture.Note = pictureCommand::Line(Current, picture, *path);
    writePicture(*path, format, picture);
}

/// All or nothing of a file, whoever stops it.
void frmMain::writePicture(const QString& path, PictureFormat format, PictureFile& picture) {
    // Painted of a session of its own, since the window stays alive meanwhile.
    Session copy;
    pictureCommand::Copy(Current, picture, copy);
    std::optional<QString> problem;
    bool whole = false;
    LongWork work(tr("画像を保存中... (Esc で中止)"), [this](const QString& text) { panels[0]->setText(text); });
    const auto write = [&](const LongWork::Progress& progress) {
        picture.GoesOn = [&progress] { return progress(0, 0); };
        try {
            const PictureContent content = format(picture, [&copy](DeviceContext& device) { copy.Draw(device); })();
            whole = picture.GoesOn();
            if (whole)
                problem = SaveContent(path, content);
        } catch (const DrawingStopped&) {
            // There is nothing to save.
        }
    };
    try {
        work.Run(write);
    } catch (const std::bad_alloc&) {
        whole = true;
        problem = tr("メモリが足りません。");
    }
    if (problem)
        ShowMessage(path + u"\r\n"_s + *problem, MessageStyle::Stop);
    else
        Tell(whole ? tr("画像を保存しました。") : tr("画像の保存を中止しました。"));
}

void frmMain::copyPictureCommand() {
    QApplication::clipboard()->setText(pictureCommand::Line(Current, shownPicture(*scene), pictureName()));
    Tell(tr("図を作るコマンドをコピーしました。"));
}
