#include "batch/commandSupport.h"

#include "app/mdApplication.h"
#include "platform/base/NativePath.h"
#include "result/mdVelorinResultModel.h"

#include <QIODevice>

namespace batch {

Options::Options(const QString& command, const QString& purpose, const QString& operand, const QString& kind)
    : commandName(command) {
    parser.setApplicationDescription(purpose);
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsCompactedShortOptions);
    parser.addOption({u"help"_s, u"Show this help."_s});
    Operand(operand, kind);
}

void Options::Operand(const QString& operand, const QString& kind) {
    operands.append(operand);
    operandKinds.append(kind);
    parser.addPositionalArgument(operand.toLower(), u"The "_s + kind + u'.', operand);
}

void Options::Flag(const QString& name, const QString& purpose) {
    parser.addOption({name, purpose});
}

void Options::Value(const QString& name, const QString& valueName, const QString& purpose) {
    declared += name;
    parser.addOption({name, purpose, valueName});
}

void Options::Parse(const QStringList& arguments, const Streams& streams) {
    const QStringList whole = QStringList{u"velorin-batch "_s + commandName} + arguments;
    const bool understood = parser.parse(whole);
    if (parser.isSet(u"help"_s)) {
        // The parser's own first line names the program alone.
        const QString help = parser.helpText();
        streams.Output.write((u"Usage: velorin-batch %1 %2 [OPTION]...\n"_s.arg(commandName, operands.join(u' ')) +
                              help.mid(help.indexOf(u'\n') + 1))
                                 .toUtf8());
        throw Stop{Done, {}};
    }
    if (!understood)
        throw Stop{WrongUsage, parser.errorText()};
    if (const qsizetype given = parser.positionalArguments().size(); given != operands.size())
        throw Stop{WrongUsage, u"one %1 is wanted, %2 given"_s.arg(operandKinds.join(u" and one "_s)).arg(given)};
}

std::optional<int> Options::Integer(const QString& name, int lowest, int highest) const {
    if (!parser.isSet(name))
        return {};
    bool ok = false;
    const int number = parser.value(name).toInt(&ok);
    if (!ok || number < lowest || number > highest)
        throw Stop{WrongUsage,
                   u"--%1 wants a whole number of %2 to %3, not \"%4\""_s.arg(name).arg(lowest).arg(highest).arg(
                       parser.value(name))};
    return number;
}

bool Options::IsFirst(const QString& name, const QString& first, const QString& second, bool fallback) const {
    if (!parser.isSet(name))
        return fallback;
    const QString word = parser.value(name).toLower();
    if (word != first && word != second)
        throw Stop{WrongUsage, u"--%1 wants %2 or %3, not \"%4\""_s.arg(name, first, second, word)};
    return word == first;
}

void Warn(const Streams& streams, const QString& path, const QString& what) {
    streams.Errors.write((OneLine(path + u": "_s + what) + u'\n').toUtf8());
}

void RefuseInput(const QString& path, const QString& reason) {
    throw Stop{UnusableInput, path + u": "_s + reason};
}

void RefuseNumber(const QString& path, const QString& option, const QString& kind, std::int64_t number,
                  std::int32_t count) {
    RefuseInput(path, u"無効なパラメータです。 (--%1: no %2 %3 among %4)"_s.arg(option, kind).arg(number).arg(count));
}

void DeclareDerivedItems(Options& options) {
    options.Value(u"derive"_s, u"mises,principal"_s,
                  u"Items to be worked out of stresses such as \"S XX\": the equivalent and the principal ones."_s);
}

DerivedItems DerivedItemsFrom(const Options& options) {
    DerivedItems derived;
    for (const QString& name : options.Text(u"derive"_s).split(u',', Qt::SkipEmptyParts)) {
        if (name != u"mises" && name != u"principal")
            throw Stop{WrongUsage, u"--derive wants mises, principal or both, not \"%1\""_s.arg(name)};
        (name == u"mises" ? derived.Mises : derived.Principal) = true;
    }
    return derived;
}

ResultModel OpenFile(const QString& path, const DerivedItems& derived, const Streams& streams) {
    ResultModel model;
    if (!mdApplication::FileExists(path))
        RefuseInput(path, u"無効なパラメータです。"_s);
    if (!mdVelorinResultModel::LoadResultFile(path, model, {}, derived))
        RefuseInput(path, u"ファイルの形式が不正です。 "_s.append(model.Note).trimmed());
    if (!model.Note.isEmpty())
        Warn(streams, path, model.Note);
    return model;
}

std::int32_t FindItem(const QString& text, const ResultModel& model, const QString& path) {
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && number >= 1 && number <= model.ItemCount)
        return number - 1;
    for (std::int32_t i = 0; i < model.ItemCount; ++i)
        if (model.Items.at(i).Name == text)
            return i;
    RefuseInput(path, u"無効なパラメータです。 (--item: no item \"%1\" among %2)"_s.arg(text).arg(model.ItemCount));
}

void RequireStep(const ResultModel& model, const QString& path, const QString& option, std::int64_t number) {
    if (number < 1 || number > model.StepCount)
        RefuseNumber(path, option, u"step"_s, number, model.StepCount);
}

} // namespace batch
