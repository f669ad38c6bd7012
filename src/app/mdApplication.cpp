#include "app/mdApplication.h"

#include "app/NumberFormat.h"
#include "platform/base/NativePath.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

QString mdApplication::FormatAutoNumber(double value, int digits, bool extra) {
    // No double has digits further out; the bound keeps the mask's length sane.
    const int places = digits == 0 ? 1 : std::clamp(digits, -400, 400);
    QString mask = u"0."_s + QString(std::abs(places), u'0');
    if (value == 0)
        return mask;
    if (extra)
        mask += u"##"_s;
    const double size = std::abs(value);
    if (!(std::pow(10.0, 1 - places) <= size && size < std::pow(10.0, places + 1)))
        mask += u"E-0"_s;
    return NumberFormat::Format(value, mask);
}

bool mdApplication::FileExists(const QString& path) {
    std::error_code none;
    return std::filesystem::is_regular_file(NativePath::Of(path), none);
}

QString mdApplication::PathPart(const QString& path, int part) {
    const qsizetype nameAt = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1;
    const qsizetype pointFound = path.indexOf(u'.', nameAt);
    const qsizetype pointAt = pointFound < 0 ? path.size() : pointFound;
    switch (part) {
    case Folder:
        return path.left(nameAt);
    case BaseName:
        return path.mid(nameAt, pointAt - nameAt);
    case Extension:
        return path.mid(pointAt + 1);
    case FileName:
        return path.mid(nameAt);
    case PathWithoutExtension:
        return path.left(pointAt);
    default:
        return {};
    }
}

QString mdApplication::StartUpFailureText(int number, const QString& description) {
    QString text = u"アプリケーションの初期化処理を実行することができません。"_s;
    if (number != 0)
        text += u"\r\n  Number : "_s + QString::number(number) + u"\r\n  Description : "_s + description;
    return text;
}

QString mdApplication::ProgramFolder() {
    return NativePath::ProgramFolder();
}
