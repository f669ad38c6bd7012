// The files of Gmsh (.msh), versions 2 and 4.1, as text or binary: values at the nodes, on the elements, and at the
// nodes of each element, of which the mean is taken.
#pragma once

#include "result/readers/readerTable.h"

namespace GmshReader {

bool Recognises(QByteArrayView start, const QString& path);
bool Open(const QString& path, ResultContent& content, const LoadProgress& progress);

} // namespace GmshReader
