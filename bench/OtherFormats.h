// One result in the formats of other programs and in our own, for the benchmarks. Numbers only depend on the arguments,
// and a file is written once and then found again in the build folder.
//
// The mesh is of jittered quadrilaterals. There are ten items: a displacement of three components, a stress of six and
// a temperature, all at the nodes.
#pragma once

#include <QString>
#include <vector>

namespace OtherFormats {

inline constexpr int ItemCount = 10;

/// The endings of what is written, with a word before the dot where one ending has several forms: "text.vtk". The
/// first is our own.
const std::vector<QString>& Forms();

/// Path of a file of about `nodes` nodes in the form with this index, and so many steps, which "vtk" and "vtu" don't
/// have.
QString File(int nodes, int form, int steps = 1);

} // namespace OtherFormats
