// The film of a slide show: asks for the codec and the file, and makes it while the window stays alive.
#include "mainwin/frmMain.h"

#include "app/mdApplication.h"
#include "app/windows/GraphWindows.h"
#include "app/windows/ShowMessage.h"
#include "mainwin/ctlScene.h"
#include "mainwin/globals.h"
#include "output/windows/frmFilmCodec.h"
#include "platform/device/DrawingStopped.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/LongWork.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QScopeGuard>
#include <new>

using mdApplication::Current;
using mdApplication::Model;
using mdApplication::Settings;
using mdApplication::ShowMessage;

namespace {

/// How a film gets on, with the time that is left if its frames go on as they did.
QString progressText(qint64 done, qint64 count, qint64 elapsedMs) {
    QString text = u"フレームを出力中... %1 / %2"_s.arg(done).arg(count);
    constexpr qint64 msPerSecond = 1000;
    if (done > 0)
        text += u"、残り %1 秒"_s.arg((elapsedMs * (count - done) / done + msPerSecond - 1) / msPerSecond);
    return text + u" (Esc で中止)"_s;
}

} // namespace

void frmMain::exportSlideShow() {
    // Frames are painted of a session of their own, since the window stays alive meanwhile.
    Session film;
    film.Model = Model;
    film.Settings = Settings;
    film.SlideShow = Current.SlideShow;
    bool stopped = false;
    clsAviWriter writer({.GetFileName = [this](QString& path, bool& cancel) { promptFilmName(path, cancel); },
                         .RenderScene =
                             [&film](int frame, PlotCanvas& plot) {
                                 film.LoadStep(frame, film.Model.CurrentItem);
                                 if (!mdVelorinResultModel::StillHolds(film.Model, frame))
                                     throw DrawingStopped();
                                 mdScene::PaintScene(plot, false, film.CurrentScene());
                             },
                         .ChooseCodec =
                             [this](AviCompressor& choice, const FilmFormat& format) {
                                 frmFilmCodec dialog(this, format, choice, scene->Picture());
                                 mdApplication::runModal(dialog);
                                 return dialog.Result;
                             },
                         .Work = [&](const FilmWork& makeFrames) { stopped = !makeFilm(makeFrames); }});
    writer.FrameCount = Model.StepCount;
    writer.Interval = std::max(Settings.SlideShow.Interval, 1);
    QImage sheet(1, 1, QImage::Format_RGB32);
    const DeviceSize size = scene->PixelSize();
    if (!writer.Initialize(RasterDevice(sheet, scene->DotsPerInch()), size.Width + 1, size.Height + 1)) {
        ShowMessage(u"AVIファイルを初期化できません。"_s, MessageStyle::Stop);
        return;
    }
    repaint();
    writer.ScaleMode(DocPlotter().ScaleMode());
    writer.Window(DocPlotter().Window());
    bool ok = false;
    try {
        ok = writer.Export({});
    } catch (const std::bad_alloc&) {
        Tell(u"メモリが足りないため、中止しました。"_s);
        return;
    } catch (const DrawingStopped&) {
        ShowMessage(DocumentReading::FileHasChanged(), MessageStyle::Stop);
        return;
    }
    // The last step that was painted is the one that shows from now on.
    if (film.Model.CurrentStep != Model.CurrentStep) {
        Model = film.Model;
        repaint();
    }
    if (!writer.ErrorMessage().isEmpty())
        ShowMessage(writer.ErrorMessage(), ok ? MessageStyle::Information : MessageStyle::Stop);
    else if (stopped)
        Tell(u"中止しました。"_s);
}

bool frmMain::makeFilm(const FilmWork& makeFrames) {
    std::atomic<qint64> done = 0;
    QElapsedTimer elapsed;
    elapsed.start();
    const qint64 count = Model.StepCount;
    LongWork work({}, [&](const QString& text) {
        panels[0]->setText(text.isEmpty() ? text : progressText(done, count, elapsed.elapsed()));
    });
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto restored = qScopeGuard(QApplication::restoreOverrideCursor);
    return work.Run([&](const LongWork::Progress& progress) {
        makeFrames([&](qint64 frames, qint64 all) {
            done = frames;
            return progress(frames, all);
        });
    });
}

void frmMain::promptFilmName(QString& path, bool& cancel) {
    const QString start = mdApplication::PathPart(Model.FileName, mdApplication::PathWithoutExtension);
    const QString filter = u"AVI ファイル(*.avi)|*.avi|すべてのファイル(*.*)|*.*"_s +
                           u"|MP4 ファイル(*.mp4)|*.mp4|WebM ファイル(*.webm)|*.webm|GIF ファイル(*.gif)|*.gif"_s;
    mdApplication::HideGraphWindows();
    const auto chosen = Dialogs::SaveFileName(this, u"スライドショーのエクスポート"_s, start + u".avi"_s, filter);
    mdApplication::ShowGraphWindows();
    cancel = !chosen;
    path = chosen.value_or(path);
}
