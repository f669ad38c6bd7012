// The command that writes a result of any format as one of our own.
#include "batch/commandSupport.h"
#include "result/VrfWriter.h"

namespace batch {

Status RunConvert(const QStringList& arguments, const Streams& streams) {
    Options options(u"convert"_s, u"Writes a result file of any format that can be opened as a .vrf file."_s, u"IN"_s);
    options.Operand(u"OUT.vrf"_s, u"file to write"_s);
    DeclareDerivedItems(options);
    options.Parse(arguments, streams);
    const QString output = options.Operand(1);
    if (!output.endsWith(u".vrf", Qt::CaseInsensitive))
        throw Stop{WrongUsage, u"OUT wants a name that ends in .vrf, not \"%1\""_s.arg(output)};
    const ResultModel model = OpenFile(options.Operand(), DerivedItemsFrom(options), streams);
    if (const std::optional<QString> problem = VrfWriter::Write(model, output))
        RefuseInput(output, *problem);
    return Done;
}

} // namespace batch
