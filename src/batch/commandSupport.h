// What the commands share: their option parser, opening the result file, and the one line that says why not.
#pragma once

#include "batch/commandLine.h"
#include "platform/base/Literals.h"
#include "platform/base/OneLine.h"
#include "result/ResultModel.h"
#include "result/readers/derivedItems.h"

#include <QCommandLineParser>
#include <limits>
#include <optional>

namespace batch {

/// Thrown through a command to end it with one line on the error stream; never leaves `Run`.
struct Stop {
    Status status;
    QString line;
};

/// The options of one command. Ends the command when they make no sense, or when help was asked for.
class Options {
public:
    /// `operand` is the first argument without a name, such as "FILE", and `kind` what it is.
    Options(const QString& command, const QString& purpose, const QString& operand,
            const QString& kind = u"result file"_s);

    /// One more argument without a name, behind those that were declared.
    void Operand(const QString& operand, const QString& kind);
    void Flag(const QString& name, const QString& purpose);
    void Value(const QString& name, const QString& valueName, const QString& purpose);
    void Parse(const QStringList& arguments, const Streams& streams);

    bool Knows(const QString& name) const { return declared.contains(name); } ///< it has been declared with a value
    bool IsSet(const QString& name) const { return parser.isSet(name); }
    QString Text(const QString& name) const { return parser.value(name); }
    QStringList Texts(const QString& name) const { return parser.values(name); }
    /// The option as an integer of `lowest` to `highest`; nothing when it is not given.
    std::optional<int> Integer(const QString& name, int lowest, int highest = std::numeric_limits<int>::max()) const;
    /// Whether the option is the first of two words rather than the second, in large or small letters; `fallback` when
    /// it is not given.
    bool IsFirst(const QString& name, const QString& first, const QString& second, bool fallback) const;
    QString Operand(int index = 0) const { return parser.positionalArguments().at(index); }

private:
    QString commandName;
    QStringList operands, operandKinds;
    QStringList declared;
    QCommandLineParser parser;
};

/// Tells a line about `path` on the error stream; the command goes on.
void Warn(const Streams& streams, const QString& path, const QString& what);

/// Stops the command with the one line that says why `path` can't be used.
[[noreturn]] void RefuseInput(const QString& path, const QString& reason);

/// Declares `--derive`.
void DeclareDerivedItems(Options& options);
DerivedItems DerivedItemsFrom(const Options& options);

/// Opens the result file, and tells what of it was left out, or stops the command with the path and the program's
/// message.
ResultModel OpenFile(const QString& path, const DerivedItems& derived, const Streams& streams);

/// The same for a number that `option` gave, counted from 1, of a kind of which the file has fewer.
[[noreturn]] void RefuseNumber(const QString& path, const QString& option, const QString& kind, std::int64_t number,
                               std::int32_t count);

/// The item of the file at `path` that `--item` gave, by its number counted from 1 or by its name; stops the command
/// when there is none.
std::int32_t FindItem(const QString& text, const ResultModel& model, const QString& path);

/// Stops the command when the file at `path` has no step of the number that `option` gave, counted from 1.
void RequireStep(const ResultModel& model, const QString& path, const QString& option, std::int64_t number);

} // namespace batch
