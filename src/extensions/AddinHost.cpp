#include "extensions/AddinHost.h"

#include "app/clsRegEdit.h"
#include "app/settingsStore.h"
#include "extensions/moduleLibrary.h"

#include <QCryptographicHash>
#include <algorithm>

namespace {

constexpr quint32 root = Registry::HKEY_CURRENT_USER;

/// What the registry keeps of a module.
struct Entry {
    QString Manifest;
    QString Library;
    QString Fingerprint;
};

QString keyOf(const QString& subKey = {}) {
    return settingsStore::RootKey + u"\\Addins"_s + (subKey.isEmpty() ? QString() : u'\\' + subKey);
}

/// A path is no name of a key, and two modules never meet in one.
QString subKeyOf(const QString& library) {
    const QByteArray utf16(reinterpret_cast<const char*>(library.utf16()),
                           library.size() * qsizetype(sizeof(char16_t)));
    return QString::fromLatin1(QCryptographicHash::hash(utf16, QCryptographicHash::Sha256).toHex().first(32));
}

QString textOf(const clsRegEdit& key, const QString& name) {
    int type = 0;
    QVariant value;
    key.GetRegValue(name, type, value);
    return value.toString();
}

std::vector<Entry> entries() {
    std::vector<Entry> found;
    const Registry::Transaction oneState(Registry::Access::Read);
    clsRegEdit modules;
    // Opening would make the key.
    if (!modules.CheckRegKey(root, keyOf()) || !modules.OpenRegKey(root, keyOf()))
        return found;
    QString name;
    for (int i = 0; modules.EnumRegSubKey(i, name); ++i) {
        clsRegEdit key;
        if (key.OpenRegKey(root, keyOf(name)))
            found.push_back({textOf(key, u"Manifest"_s), textOf(key, u"Library"_s), textOf(key, u"SHA256"_s)});
    }
    return found;
}

bool isAsInstalled(const Entry& entry) {
    const QByteArray now = moduleLibrary::Fingerprint(entry.Library);
    return !now.isEmpty() && QString::fromLatin1(now) == entry.Fingerprint;
}

/// The entry of a library; null when there is none.
const Entry* entryOf(const std::vector<Entry>& all, const QString& library) {
    const auto found = std::find_if(all.begin(), all.end(), [&](const Entry& e) { return e.Library == library; });
    return found == all.end() ? nullptr : &*found;
}

} // namespace

std::vector<AddinModule> AddinHost::Search(const QString& folder, bool all) const {
    const std::vector<Entry> kept = entries();
    std::vector<AddinModule> found;
    for (const QString& manifest : AddinManifest::In(folder)) {
        AddinModule module = AddinManifest::Read(manifest);
        const Entry* entry = module.Installable ? entryOf(kept, module.FileName) : nullptr;
        if ((entry && isAsInstalled(*entry)) || (!module.Installable && !all))
            continue;
        module.Changed = entry != nullptr;
        found.push_back(module);
    }
    return found;
}

std::vector<AddinModule> AddinHost::ModuleList() const {
    std::vector<AddinModule> installed;
    for (const Entry& entry : entries()) {
        const AddinModule module = AddinManifest::Read(entry.Manifest);
        if (module.Installable && module.FileName == entry.Library && isAsInstalled(entry))
            installed.push_back(module);
    }
    return installed;
}

bool AddinHost::Install(const AddinModule& module) {
    const QByteArray fingerprint = moduleLibrary::Fingerprint(module.FileName);
    if (locks > 0 || !module.Installable || fingerprint.isEmpty())
        return false;
    Registry::Transaction together;
    // Anew, so that it stands last.
    Registry::DeleteTree(root, keyOf(subKeyOf(module.FileName)));
    clsRegEdit key;
    return key.OpenRegKey(root, keyOf(subKeyOf(module.FileName))) &&
           key.SetRegValue(u"Manifest"_s, Registry::REG_SZ, module.Manifest) &&
           key.SetRegValue(u"Library"_s, Registry::REG_SZ, module.FileName) &&
           key.SetRegValue(u"SHA256"_s, Registry::REG_SZ, QString::fromLatin1(fingerprint)) && together.Commit();
}

bool AddinHost::Uninstall(int index) {
    const std::vector<AddinModule> installed = ModuleList();
    return locks == 0 && index >= 0 && index < int(installed.size()) &&
           Registry::DeleteTree(root, keyOf(subKeyOf(installed[std::size_t(index)].FileName)));
}

void AddinHost::Run(const AddinModule& module, const velorin_addin_call& call) {
    lastError = {module.Name, moduleLibrary::Run(module.FileName, call)};
}
