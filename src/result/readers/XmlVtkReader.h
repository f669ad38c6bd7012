// The XML files of the Visualization Toolkit: unstructured grids (.vtu), of one or several pieces, and series of them
// (.pvd). Numbers as text, in base 64 or raw, compressed or not.
#pragma once

#include "result/readers/readerTable.h"

namespace XmlVtkReader {

bool Recognises(QByteArrayView start, const QString& path);
bool Open(const QString& path, ResultContent& content, const LoadProgress& progress);

} // namespace XmlVtkReader
