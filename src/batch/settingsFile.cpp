#include "batch/settingsFile.h"

#include "app/settingsStore.h"
#include "platform/base/NativePath.h"
#include "platform/registry/Registry.h"
#include "platform/registry/RegistryText.h"

#include <QFile>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace batch {

namespace {

/// Another place for the registry, which is looked for beneath the configuration folder each time.
class BorrowedRegistry {
public:
    BorrowedRegistry() {
        if (!::mkdtemp(folder.data()))
            RefuseInput(NativePath::Text(folder), QString::fromLocal8Bit(std::strerror(errno)));
        qputenv(variable, folder);
    }
    ~BorrowedRegistry() {
        std::error_code none;
        std::filesystem::remove_all(folder.constData(), none);
        if (before.isNull())
            qunsetenv(variable);
        else
            qputenv(variable, before);
    }
    BorrowedRegistry(const BorrowedRegistry&) = delete;
    BorrowedRegistry& operator=(const BorrowedRegistry&) = delete;

private:
    static constexpr const char* variable = "XDG_CONFIG_HOME";
    QByteArray folder = (NativePath::Of(NativePath::TemporaryFolder()) / "velorin-XXXXXX").c_str();
    const QByteArray before = qgetenv(variable);
};

} // namespace

void ImportSettings(const QString& path) {
    constexpr qint64 largestFile = 256 << 20;
    QFile file;
    if (const std::optional<QString> problem = NativePath::OpenToRead(path, file))
        RefuseInput(path, *problem);
    const QByteArray bytes = file.read(largestFile + 1);
    if (bytes.size() > largestFile)
        RefuseInput(path, u"ファイルの形式が不正です。 (more than 256 MB)"_s);
    const RegistryText::ImportResult result = RegistryText::Import(bytes);
    if (result.Line > 0)
        RefuseInput(path, u"ファイルの形式が不正です。 (line %1: %2)"_s.arg(result.Line).arg(result.Problem));
    if (!result.Done)
        RefuseInput(Registry::StorePath(), result.Problem);
}

ApplicationSettings SettingsFrom(const Options& options) {
    ApplicationSettings settings;
    if (!options.IsSet(u"settings"_s))
        return settings;
    const BorrowedRegistry registry;
    ImportSettings(options.Text(u"settings"_s));
    settingsStore::LoadSettings(settings, {}, {});
    return settings;
}

} // namespace batch
