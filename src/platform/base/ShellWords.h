// Words of a command line as the text that a shell reads, and back. Runs nothing, and knows neither variables nor
// patterns.
#pragma once

#include <QStringList>
#include <optional>

namespace ShellWords {
/// A line that gives a shell just these words, in printable characters of valid Unicode: control characters, and bytes
/// of names that are not UTF-8, stand as octal numbers in $'...', which bash, zsh and ksh read.
QString Line(const QStringList& words);

/// The words of a line with quotes of all three kinds; nothing when one of them is left open.
std::optional<QStringList> Split(const QString& line);
} // namespace ShellWords
