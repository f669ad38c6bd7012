// The command that moves the settings between machines.
#include "batch/settingsFile.h"
#include "platform/base/WholeFile.h"
#include "platform/registry/Registry.h"
#include "platform/registry/RegistryText.h"

#include <QFile>

namespace batch {

namespace {

void exportTo(const QString& path) {
    WholeFile file(path);
    if (!file.Problem() && !RegistryText::Export(file) && !file.Problem())
        RefuseInput(Registry::StorePath(), u"there are no settings, or they can't be written out"_s);
    if (const std::optional<QString> problem = file.Commit())
        RefuseInput(path, *problem);
}

} // namespace

Status RunRegistry(const QStringList& arguments, const Streams& streams) {
    const QString action = arguments.value(0);
    const bool exports = action == u"export";
    if (!exports && action != u"import" && action != u"--help")
        throw Stop{WrongUsage, u"registry wants \"export FILE\" or \"import FILE\""_s};
    const bool wholeHelp = action == u"--help";
    Options options(u"registry "_s + (wholeHelp ? u"export|import"_s : action),
                    u"Writes the settings to a registry file (.reg), or adds those of one to them."_s, u"FILE"_s,
                    u"registry file"_s);
    options.Parse(wholeHelp ? arguments : arguments.mid(1), streams);
    if (exports)
        exportTo(options.Operand());
    else
        ImportSettings(options.Operand());
    return Done;
}

} // namespace batch
