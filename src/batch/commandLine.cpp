#include "batch/CheckedOutput.h"
#include "batch/commandSupport.h"
#include "platform/registry/Registry.h"

namespace batch {

namespace {

struct Command {
    const char16_t* name;
    const char16_t* purpose;
    Status (*run)(const QStringList&, const Streams&);
    bool draws = false;
};

constexpr Command commands[] = {
    {u"info", u"what a result file holds, as JSON", RunInfo},
    {u"mesh", u"its nodes and elements, as JSON", RunMesh},
    {u"values", u"the values of an item at a step, as CSV or JSON", RunValues},
    {u"convert", u"the same result as a file of our own format (.vrf)", RunConvert},
    {u"render", u"the picture of a step as PNG, SVG, PDF or text", RunRender, true},
    {u"page", u"the printed page of a step as PDF, SVG, PNG or text", RunPage, true},
    {u"graph", u"values over time or place as PNG, SVG, PDF or text, or their numbers", RunGraph, true},
    {u"film", u"the pictures of all steps as a film: AVI, MP4, WebM or GIF", RunFilm, true},
    {u"registry", u"export or import the settings, as a registry file", RunRegistry},
};

QString usage() {
    QString text = u"Usage: velorin-batch COMMAND FILE [OPTION]...\n\nCommands:\n"_s;
    for (const Command& command : commands)
        text += u"  "_s + QStringView(command.name).toString().leftJustified(10) + QStringView(command.purpose) + u'\n';
    return text + u"\nvelorin-batch COMMAND --help tells the options of a command.\n"_s;
}

const Command* commandOf(const QStringList& arguments) {
    const auto* const found = std::ranges::find(commands, arguments.value(0),
                                                [](const Command& command) { return QStringView(command.name); });
    return found == std::end(commands) ? nullptr : found;
}

Status runCommand(const QStringList& arguments, const Streams& streams) {
    if (const Command* command = commandOf(arguments))
        return command->run(arguments.mid(1), streams);
    const QString name = arguments.value(0);
    if (name == u"--help" || name == u"help") {
        streams.Output.write(usage().toUtf8());
        return Done;
    }
    if (name == u"--version") {
        streams.Output.write("velorin-batch " VELORIN_VERSION "\n");
        return Done;
    }
    streams.Errors.write(usage().toUtf8());
    return WrongUsage;
}

/// The work is done, but not with the user's own settings.
void tellOfHeldSettings(const Streams& streams) {
    if (Registry::IsStoreHeld())
        streams.Errors.write(
            (OneLine(Registry::StorePath()) + u": another program holds it; its settings are not used\n").toUtf8());
}

/// The same with the one line told that says why not.
Status runAndTell(const QStringList& arguments, const Streams& streams) {
    try {
        const Status status = runCommand(arguments, streams);
        tellOfHeldSettings(streams);
        return status;
    } catch (const Stop& stop) {
        if (stop.status == WrongUsage)
            streams.Errors.write("velorin-batch: ");
        if (stop.status != Done)
            streams.Errors.write((OneLine(stop.line) + u'\n').toUtf8());
        return stop.status;
    } catch (const std::bad_alloc&) {
        streams.Errors.write("velorin-batch: out of memory\n");
        return UnusableInput;
    }
}

} // namespace

bool NeedsFonts(const QStringList& arguments) {
    const Command* const command = commandOf(arguments);
    return command && command->draws;
}

Status Run(const QStringList& arguments, const Streams& streams) {
    CheckedOutput output(streams.Output);
    const Status status = runAndTell(arguments, {output, streams.Errors});
    if (const std::optional<QString> problem = output.Finish(); problem && status == Done) {
        streams.Errors.write((u"standard output: "_s + OneLine(*problem) + u'\n').toUtf8());
        return UnusableInput;
    }
    return status;
}

} // namespace batch
