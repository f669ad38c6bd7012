#include "extensions/AddinManifest.h"

#include "extensions/moduleLibrary.h"
#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"
#include "platform/base/ReadHandle.h"
#include <velorin_addin.h>

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <filesystem>
#include <string>

namespace {

/// Nothing when the file can't be read or is larger than `most`.
std::optional<QByteArray> bytesOf(const QString& path, qint64 most) {
    const ReadHandle file = ReadHandle::Open(path);
    if (!file.IsOpen() || file.Size() > most)
        return {};
    QByteArray bytes(file.Size(), Qt::Uninitialized);
    bytes.truncate(file.ReadAt(0, bytes.data(), bytes.size()));
    return bytes;
}

/// Of one line, so that lists and menus stay in order.
QString lineOf(const QJsonObject& manifest, QLatin1StringView key) {
    constexpr qsizetype longest = 1000;
    return manifest.value(key).toString().left(longest).simplified();
}

bool isPlainName(const QString& name) {
    return !name.isEmpty() && name != u"."_s && name != u".."_s && !name.contains(u'/') && !name.contains(QChar(0));
}

/// What stands against installing the module; empty for nothing.
QString faultOf(const QJsonObject& manifest, const AddinModule& module) {
    const QJsonValue wanted = manifest.value("interface"_L1);
    if (module.Name.isEmpty())
        return u"マニフェストに名称がありません。"_s;
    if (!wanted.isDouble() || wanted.toDouble() < 1)
        return u"マニフェストにインターフェースの番号がありません。"_s;
    if (wanted.toDouble() > VELORIN_ADDIN_INTERFACE)
        return u"このモジュールには新しいバージョンのプログラムが必要です。"_s;
    if (module.FileName.isEmpty())
        return u"マニフェストのモジュール名は同じフォルダのファイル名でなければなりません。"_s;
    if (!moduleLibrary::FitsHere(module.FileName))
        return u"モジュールがないか、このコンピュータのものではありません。"_s;
    return {};
}

} // namespace

QStringList AddinManifest::In(const QString& folder) {
    QStringList paths;
    std::error_code failed;
    // Names of the system's own bytes, which the toolkit's listing passes over.
    for (std::filesystem::directory_iterator entry(NativePath::Of(folder), failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const QString path = NativePath::Text(QByteArrayView(entry->path().native()));
        if (path.endsWith(Ending))
            paths += path;
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

AddinModule AddinManifest::Read(const QString& path) {
    AddinModule module;
    module.Manifest = path;
    const qsizetype nameAt = path.lastIndexOf(u'/') + 1;
    const QString folder = path.left(nameAt);
    const auto bytes = bytesOf(path, MaxBytes);
    const QJsonDocument document = QJsonDocument::fromJson(bytes.value_or(QByteArray()));
    const QJsonObject manifest = document.object();
    module.Name = lineOf(manifest, "name"_L1);
    module.Vendor = lineOf(manifest, "vendor"_L1);
    module.Version = lineOf(manifest, "version"_L1);
    module.Description = lineOf(manifest, "description"_L1);
    if (const QString library = manifest.value("library"_L1).toString(); isPlainName(library))
        module.FileName = folder + library;
    if (const QString picture = manifest.value("picture"_L1).toString();
        isPlainName(picture) && bytesOf(folder + picture, MaxPictureBytes))
        module.Picture = folder + picture;
    const QString fault = document.isObject() ? faultOf(manifest, module) : u"マニフェストを読むことができません。"_s;
    module.Installable = fault.isEmpty();
    if (!module.Installable)
        module.Description = fault;
    if (module.Name.isEmpty())
        module.Name = NativePath::Shown(path.mid(nameAt).chopped(Ending.size()));
    return module;
}
