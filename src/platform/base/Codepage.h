// Code page 932, the text encoding of result files, property files and the registry tree. The one place that knows it.
#pragma once

#include <QByteArray>
#include <QString>

namespace Codepage {
/// Bytes to text; a byte or pair that stands for no character gives one U+FFFD and never takes a good byte with it.
QString Decode(QByteArrayView bytes);

/// Text to bytes; a character that the code page lacks gives one "?".
QByteArray Encode(QStringView text);

/// Number of bytes that `Encode` would give.
int ByteLength(QStringView text);
} // namespace Codepage
