// The result files of CalculiX (.frd), as text in its two widths or binary: values at the nodes.
#pragma once

#include "result/readers/readerTable.h"

namespace FrdReader {

bool Recognises(QByteArrayView start, const QString& path);
bool Open(const QString& path, ResultContent& content, const LoadProgress& progress);

} // namespace FrdReader
