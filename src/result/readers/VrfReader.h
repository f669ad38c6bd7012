// The solver's own result files (.vrf): little-endian, texts in code page 932, files of at most 2^31-1 bytes.
#pragma once

#include "result/readers/readerTable.h"

namespace VrfReader {

/// The first bytes of every such file, in large or small letters.
inline constexpr QLatin1StringView Magic{"VRF10"};

/// Whether a file's first bytes spell `magic`, without regard to case.
bool HasMagic(QByteArrayView start, const QString& magic);

bool Recognises(QByteArrayView start, const QString& path);
bool Open(const QString& path, ResultContent& content, const LoadProgress& progress);

} // namespace VrfReader
