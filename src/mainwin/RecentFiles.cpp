#include "mainwin/RecentFiles.h"

#include "app/clsRegEdit.h"
#include "app/mdApplication.h"
#include "app/mdTips.h"
#include "app/settingsStore.h"
#include "platform/base/NativePath.h"
#include "platform/registry/Registry.h"

namespace {

constexpr int mostKept = 10;
constexpr int mostShown = 9;

bool openKey(clsRegEdit& key) {
    return key.OpenRegKey(Registry::HKEY_CURRENT_USER, settingsStore::RootKey + u"\\Recent Files"_s);
}

/// Names that differ in case are one file only where the file system says so.
bool isSameFile(const QString& one, const QString& other) {
    std::error_code none;
    return one == other || (mdTips::NormalizePathCase(one) == mdTips::NormalizePathCase(other) &&
                            std::filesystem::equivalent(NativePath::Of(one), NativePath::Of(other), none));
}

} // namespace

void RecentFiles::Load() {
    clsRegEdit key;
    if (!openKey(key))
        return;
    QString name;
    int type = 0;
    QVariant value;
    int size = 0;
    for (int i = 0; key.EnumRegValue(i, name, type, value, size); ++i)
        if (type == Registry::REG_SZ && mdApplication::FileExists(value.toString()))
            paths.append(value.toString());
}

void RecentFiles::Save() const {
    clsRegEdit key;
    if (!openKey(key))
        return;
    Registry::Transaction save;
    for (int i = 0; i < std::min(Count(), mostKept); ++i)
        key.SetRegValue(QString::number(i + 1), Registry::REG_SZ, paths.at(i));
    save.Commit();
}

void RecentFiles::Add(const QString& path) {
    const auto standing = std::ranges::find_if(paths, [&](const QString& other) { return isSameFile(path, other); });
    if (standing != paths.end())
        paths.erase(standing);
    paths.prepend(path);
}

std::vector<FamilyEntry> RecentFiles::MenuEntries() const {
    constexpr int mostBytes = 50;
    std::vector<FamilyEntry> entries;
    for (int i = 0; i < std::min(Count(), mostShown); ++i) {
        // An "&" of the path is not an access key.
        const QString shown = mdTips::ShortenPath(NativePath::Shown(paths.at(i)), mostBytes).replace(u'&', u"&&"_s);
        entries.push_back({u'&' + QString::number(i + 1) + u" - "_s + shown, paths.at(i)});
    }
    return entries;
}
