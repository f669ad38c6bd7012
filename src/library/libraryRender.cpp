// Pictures: the scene of a step through a session of its own each time, so that none has anything of the one before.
#include "library/library.h"

#include "app/mdApplication.h"
#include "platform/base/NativePath.h"
#include "platform/device/Fonts.h"
#include "platform/raster/pictureFormats.h"
#include "property/drawingElements.h"
#include "property/propertyFile.h"
#include "view/scene/Session.h"

#include <QGuiApplication>
#include <clocale>
#include <mutex>
#include <string>

using library::Failure;
using library::guarded;
using library::require;

namespace {

/// Text needs the toolkit's fonts, and these the toolkit's application: that of the calling program, or one made here,
/// which needs no display and stays to the end.
void requireFonts() {
    if (!QCoreApplication::instance()) {
        static int count = 3;
        static char name[] = "velorin", option[] = "-platform", platform[] = "offscreen";
        static char* arguments[] = {name, option, platform, nullptr};
        // It would take over the user's locale, by which the calling program may not want to read its numbers.
        const std::string before = std::setlocale(LC_ALL, nullptr);
        const QtMessageHandler handler =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        new QGuiApplication(count, arguments);
        qInstallMessageHandler(handler);
        std::setlocale(LC_ALL, before.c_str());
    }
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        throw Failure{VELORIN_FAILED, u"the program's Qt application has no fonts"_s};
    Fonts::InstallSubstitutions();
}

PictureFile pictureFile(const velorin_picture& picture, const ResultModel& model) {
    constexpr int mostPixelsAcross = 32767, mostDotsPerInch = 9600;
    PictureFile file{.Title = NativePath::Shown(mdApplication::PathPart(model.FileName, mdApplication::FileName))};
    if (picture.width != 0 || picture.height != 0)
        file.Size = {picture.width, picture.height};
    if (picture.dots_per_inch != 0)
        file.DotsPerInch = picture.dots_per_inch;
    if (std::min(file.Size.Width, file.Size.Height) < 1 ||
        std::max(file.Size.Width, file.Size.Height) > mostPixelsAcross)
        throw Failure{VELORIN_WRONG, u"a picture has 1 to %1 pixels across"_s.arg(mostPixelsAcross)};
    if (file.Resolution() < 1 || file.Resolution() > mostDotsPerInch)
        throw Failure{VELORIN_WRONG, u"a picture has 1 to %1 pixels an inch"_s.arg(mostDotsPerInch)};
    if (picture.zoom < ZoomMin || picture.zoom > ZoomMax)
        throw Failure{VELORIN_WRONG, u"zoom is from %1 to %2"_s.arg(ZoomMin).arg(ZoomMax)};
    return file;
}

void applySettings(const char* const* settings, Session& session) {
    for (; settings && *settings; ++settings) {
        const QString text = QString::fromUtf8(*settings);
        if (!drawingElements::Set(text.section(u'=', 0, 0), text.section(u'=', 1), session.Settings))
            throw Failure{VELORIN_WRONG, u"\"%1\" is no drawing setting with a fitting value"_s.arg(text)};
    }
    const std::int32_t reference = session.Settings.Difference.StandardStep;
    if (reference >= 0)
        require("reference step", reference, session.Model.StepCount);
}

} // namespace

int velorin_render(const velorin_result* result, const velorin_picture* picture, const char* path) {
    return guarded([&] {
        if (picture->size != sizeof(velorin_picture))
            throw Failure{VELORIN_WRONG, u"the size of velorin_picture is of another version"_s};
        require("item", picture->item, result->Model.ItemCount);
        if (picture->step != 0 || result->Model.StepCount > 0)
            require("step", picture->step, result->Model.StepCount);
        const PictureFile file = pictureFile(*picture, result->Model);
        const QString name = NativePath::Text(path);
        const PictureFormat format = PictureFormatFor(name);
        if (!format)
            throw Failure{VELORIN_WRONG, u"the name of a picture ends in .png, .svg, .pdf or .trace"_s};

        static std::mutex oneAtATime;
        const std::lock_guard lock(oneAtATime);
        requireFonts();
        Session session;
        session.Settings.Window.Mesh = picture->no_mesh == 0;
        session.TakeUp(result->Model, picture->no_property_file == 0 &&
                                          mdApplication::FileExists(propertyFile::PathFor(result->Model.FileName)));
        applySettings(picture->settings, session);
        session.Plotter.SetScaleMode(picture->fixed_scale ? PlotScaleMode::Fixed : PlotScaleMode::Automatic);
        mdView::ApplyZoom(picture->zoom, session.View);
        session.LoadStep(picture->step, picture->item);
        const PictureEncoding encode = format(file, [&](DeviceContext& device) { session.Draw(device); });
        if (const auto why = SaveContent(name, encode()))
            throw Failure{VELORIN_NOT_WRITTEN, *why};
    });
}
