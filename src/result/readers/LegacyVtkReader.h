// The older files of the Visualization Toolkit (.vtk): text headers, and numbers as text or big-endian. Unstructured
// grids and polygonal data; one step a file.
#pragma once

#include "result/readers/readerTable.h"

namespace LegacyVtkReader {

bool Recognises(QByteArrayView start, const QString& path);
bool Open(const QString& path, ResultContent& content, const LoadProgress& progress);

} // namespace LegacyVtkReader
