#include "batch/pictureOptions.h"

#include "platform/base/NativePath.h"

#include <QFileInfo>

namespace batch {

namespace {

constexpr int mostPixelsAcross = 32767;
constexpr int mostDotsPerInch = 9600;

DeviceSize parseSize(const QString& text) {
    const QStringList sides = text.toLower().split(u'x');
    bool wideOk = false, highOk = false;
    const int wide = sides.value(0).toInt(&wideOk);
    const int high = sides.value(1).toInt(&highOk);
    if (sides.size() != 2 || !wideOk || !highOk || wide < 1 || high < 1 || std::max(wide, high) > mostPixelsAcross)
        throw Stop{WrongUsage, u"--size wants WIDTHxHEIGHT of 1 to %1, not \"%2\""_s.arg(mostPixelsAcross).arg(text)};
    return {wide, high};
}

} // namespace

void RefuseEnding(const QString& output, const QString& endings) {
    throw Stop{WrongUsage, u"-o wants a name that ends in %1, not \"%2\""_s.arg(endings, output)};
}

void DeclarePictureOptions(Options& options) {
    options.Value(u"size"_s, u"WxH"_s, u"Size in pixels, 1280x1024 by default."_s);
    options.Value(u"dpi"_s, u"D"_s,
                  u"Pixels an inch, 96 by default; SVG and PDF then divide each of them more finely."_s);
    options.Value(u"settings"_s, u"FILE.reg"_s,
                  u"Fonts, number format, line styles and graph defaults of an exported registry file."_s);
}

std::optional<int> DotsPerInchFrom(const Options& options) {
    return options.Integer(u"dpi"_s, 1, mostDotsPerInch);
}

void RequirePictureSize(DeviceSize pixels) {
    if (std::min(pixels.Width, pixels.Height) < 1 || std::max(pixels.Width, pixels.Height) > mostPixelsAcross)
        throw Stop{WrongUsage, u"the picture would have %1 x %2 pixels; 1 to %3 are possible"_s.arg(pixels.Width)
                                   .arg(pixels.Height)
                                   .arg(mostPixelsAcross)};
}

PictureFile PictureFileFrom(const Options& options) {
    PictureFile file{.Title = NativePath::Shown(QFileInfo(options.Operand()).fileName())};
    file.DotsPerInch = DotsPerInchFrom(options);
    if (options.IsSet(u"size"_s))
        file.Size = parseSize(options.Text(u"size"_s));
    return file;
}

} // namespace batch
