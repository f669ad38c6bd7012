// The command-line companion: its commands, their options and what they return. Needs no display; numbers count from 1.
#pragma once

#include <QString>
#include <QStringList>

class QIODevice;

namespace batch {

/// Exit statuses.
enum Status : int { Done = 0, UnusableInput = 1, WrongUsage = 2 };

/// Where a command writes. Both are owned by the caller, open for writing and best without a buffer: what is in one
/// when the program ends could be lost without a word.
struct Streams {
    QIODevice& Output;
    QIODevice& Errors;
};

/// Whether a command line may draw and so needs a QGuiApplication, which looks for the system's fonts; for all else a
/// QCoreApplication does, and starts in a fraction of the time.
bool NeedsFonts(const QStringList& arguments);

/// Runs one command line, without the program's name. An output that could not be written whole makes it an unusable
/// one, whatever the command says.
Status Run(const QStringList& arguments, const Streams& streams);

// One procedure a command, given the arguments behind the command's name.
Status RunInfo(const QStringList& arguments, const Streams& streams);
Status RunMesh(const QStringList& arguments, const Streams& streams);
Status RunValues(const QStringList& arguments, const Streams& streams);
Status RunConvert(const QStringList& arguments, const Streams& streams);
Status RunRender(const QStringList& arguments, const Streams& streams);
Status RunPage(const QStringList& arguments, const Streams& streams);
Status RunGraph(const QStringList& arguments, const Streams& streams);
Status RunFilm(const QStringList& arguments, const Streams& streams);
Status RunRegistry(const QStringList& arguments, const Streams& streams);

} // namespace batch
