#include "output/clsAviWriter.h"

#include "app/clsRegEdit.h"
#include "app/mdApplication.h"
#include "platform/base/NativePath.h"
#include "platform/raster/RasterDevice.h"

namespace {

const QString compressorKey = u"Software\\Ordvane\\AVI Compressor"_s;
const QString targetName = u"Target"_s, qualityName = u"Quality"_s;

AviCompressor storedChoice() {
    AviCompressor choice;
    clsRegEdit key;
    if (!key.CheckRegKey(Registry::HKEY_CURRENT_USER, compressorKey) ||
        !key.OpenRegKey(Registry::HKEY_CURRENT_USER, compressorKey))
        return choice;
    int type = 0;
    QVariant value;
    if (key.GetRegValue(targetName, type, value) && value.typeId() == QMetaType::Int)
        choice.fccHandler = std::uint32_t(value.toInt());
    if (key.GetRegValue(qualityName, type, value) && value.typeId() == QMetaType::Int)
        choice.lQ = std::clamp(value.toInt(), -1, filmFormat::MaxQuality);
    return choice;
}

void storeChoice(const AviCompressor& choice) {
    Registry::Transaction step;
    clsRegEdit key;
    if (!key.OpenRegKey(Registry::HKEY_CURRENT_USER, compressorKey))
        return;
    key.SetRegValue(targetName, int(Registry::REG_DWORD), int(choice.fccHandler));
    key.SetRegValue(qualityName, int(Registry::REG_DWORD), choice.lQ);
    step.Commit();
}

QString messageOf(FilmFailure::Stage stage) {
    const QString cannotWrite = u"AVIファイルへ書き込むことができません。"_s;
    switch (stage) {
    case FilmFailure::Stage::Library:
    case FilmFailure::Stage::File:
        return u"AVIファイルを作成できません。"_s;
    case FilmFailure::Stage::Stream:
        return u"AVIストリームを作成できません。"_s;
    case FilmFailure::Stage::Codec:
        return cannotWrite + u"\r\n圧縮設定が不正な場合があります。\r\n他の方法を選択して再度作成してください。"_s;
    default:
        return cannotWrite;
    }
}

} // namespace

FilmFormat AviCompressor::FormatFor(FilmContainer container) const {
    FilmFormat format{.Container = container, .Quality = lQ, .KeyFrames = lKey, .DataRate = lDataRate};
    format.Codec = filmFormat::FindCodec(container, fccHandler);
    if (!format.Codec)
        format.Codec = filmFormat::CodecsFor(container).front();
    return format;
}

clsAviWriter::clsAviWriter(AviWriterEvents ownerEvents) : events(std::move(ownerEvents)), compressor(storedChoice()) {
    cPlot.SetClientName(u"Ordvane Group AviWriter"_s);
    cPlot.SetHeadless(true);
    PlotEvents plotEvents;
    plotEvents.Painting = [this](PlotCanvas& canvas) {
        if (events.RenderScene)
            events.RenderScene(currentFrame, canvas);
    };
    cPlot.SetEventSink(std::move(plotEvents));
}

clsAviWriter::~clsAviWriter() {
    storeChoice(compressor);
}

void clsAviWriter::Dispose() {
    bufferReady = false;
}

bool clsAviWriter::Initialize(const DeviceContext& hDC, int width, int height) {
    Dispose();
    bufferWidth = width;
    bufferHeight = height;
    dotsPerInch = hDC.GetDeviceCaps(DeviceCaps::LogPixelsX);
    cPlot.Viewport().SetWindow({width, height});
    // The sheets themselves are made for the export; here it is tried whether there can be any.
    bufferReady = !QImage(width, height, QImage::Format_RGB32).isNull();
    return bufferReady;
}

bool clsAviWriter::end(const QString& message, bool ok) {
    errorMessage = message;
    return ok;
}

bool clsAviWriter::failed(const FilmFailure& failure) {
    return end(messageOf(failure.At));
}

void clsAviWriter::paint(QImage& sheet) {
    RasterDevice device(sheet, dotsPerInch);
    cPlot.Draw(device);
}

bool clsAviWriter::Export(const QString& fileName) {
    if (!bufferReady)
        return end(u"バッファが初期化されていません。"_s);
    if (FrameCount < 1)
        return end(u"フレーム数が設定されていません。"_s);
    const auto formatFor = [this](const AviCompressor& choice, FilmContainer container) {
        FilmFormat format = choice.FormatFor(container);
        format.Width = bufferWidth;
        format.Height = bufferHeight;
        format.Interval = Interval;
        return format;
    };
    AviCompressor choice = compressor;
    if (events.ChooseCodec && !events.ChooseCodec(choice, formatFor(choice, FilmContainer::Avi)))
        return end({});
    QString path = fileName;
    bool cancel = false;
    if (!mdApplication::FileExists(path))
        events.GetFileName ? events.GetFileName(path, cancel) : void(cancel = true);
    if (cancel)
        return end({});
    compressor = choice;

    const FilmFormat format = formatFor(choice, filmFormat::ContainerFor(path).value_or(FilmContainer::Avi));
    FilmFile film(path, format);
    if (film.Failure())
        return failed(*film.Failure());
    bool complete = false;
    const auto paintFrame = [this](int frame, QImage& sheet) {
        errorMessage = QString::number(frame + 1) + u" フレームを出力"_s;
        currentFrame = frame;
        paint(sheet);
    };
    const auto makeFrames = [&](const LoadProgress& progress) {
        complete = filmFrames::Write(film, format, FrameCount, paintFrame, progress);
    };
    events.Work ? events.Work(makeFrames) : makeFrames({});
    if (!complete)
        return film.Failure() ? failed(*film.Failure()) : end({});
    if (const auto failure = film.Commit())
        return failed(*failure);
    const QString kind = path.section(u'.', -1).toUpper();
    return end(NativePath::Shown(path.section(u'/', -1)) + u"\r\n"_s +
                   (filmFormat::ContainerFor(path) ? kind : u"AVI"_s) + u"ファイルを作成しました。"_s,
               true);
}
