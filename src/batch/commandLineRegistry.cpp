// The command that moves the settings between machines.
#include "batch/settingsFile.h"
#include "platform/base/WholeFile.h"
#include "platform/registry/Registry.h"
#include "platform/registry/RegistryText.h"

#include <QFile>

namespace batch {

namespace {

/// The number of keys and values that are left out.
int exportTo(const QString& path) {
    WholeFile file(path);
    const RegistryText::ExportResult result = RegistryText::Export(file);
    if (!result.Done && !file.Problem())
        RefuseInput(Registry::StorePath(),
                    QFile::exists(Registry::StorePath()) ? Registry::StoreProblem() : u"there are no settings"_s);
    if (const std::optional<QString> problem = file.Commit())
        RefuseInput(path, *problem);
    return result.LeftOut;
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
    if (!exports)
        ImportSettings(options.Operand());
    else if (const int leftOut = exportTo(options.Operand()))
        streams.Errors.write((OneLine(Registry::StorePath()) +
                              u": %1 keys or values with impossible names are left out\n"_s.arg(leftOut))
                                 .toUtf8());
    return Done;
}

} // namespace batch
