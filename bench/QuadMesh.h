// Result files of jittered quadrilateral meshes for the benchmarks. Numbers only depend on the arguments, and a file is
// written once and then found again in the build folder.
//
// Items: displacement X and Y per node (both flagged), a stress per node, a stress per element.
#pragma once

#include "result/ResultModel.h"

namespace QuadMesh {

inline constexpr int ItemCount = 4;

/// Path of a file of `elements` quadrilaterals (a number with a whole number of rows of `ColumnsOf`) in `steps` steps,
/// with the items from `firstItem` on: a file of 2 GB or more could not be opened.
QString File(int elements, int steps, int firstItem = 0);

/// About the square root, so that the mesh fits a picture in both directions.
int ColumnsOf(int elements);

/// The file opened, with its first step and the given item loaded. Ends the program when that fails.
ResultModel Opened(int elements, int steps, std::int32_t item = 0);

} // namespace QuadMesh
