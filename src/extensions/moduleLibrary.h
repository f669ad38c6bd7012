// The library of an add-in module: what it is, by its bytes alone, and the one call into it.
#pragma once

#include <velorin_addin.h>

#include <QByteArray>
#include <QString>

namespace moduleLibrary {
/// Whether the file is a shared library for this system and processor, by its first bytes.
bool FitsHere(const QString& path);

/// SHA-256 in hexadecimal digits; empty when the file can't be read. A file that looks unchanged since it was asked for
/// last is not read again. For one thread.
QByteArray Fingerprint(const QString& path);

/// Loads the library, runs it with `call` and unloads it. Why that didn't work, or what the module has told in
/// `call.error`, which is made here; empty when all went well. Working folder, locale, file mask, signal handlers, and
/// the calling thread's signal mask and floating-point state are afterwards as they were, and what the module throws
/// ends here.
QString Run(const QString& path, velorin_addin_call call);
} // namespace moduleLibrary
