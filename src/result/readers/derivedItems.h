// Items that are worked out of the stresses of a file: of their components, value by value, as they are asked for.
#pragma once

#include "result/readers/ResultContent.h"

/// What is wanted beside what the file has.
struct DerivedItems {
    bool Mises = false;     ///< the equivalent stress of von Mises
    bool Principal = false; ///< the principal stresses, the largest first

    bool Any() const { return Mises || Principal; }
};

/// Adds the wanted items behind those that are there: "S Mises", "S P1", "S P2", "S P3" for each group of items "S XX",
/// "S YY", "S XY" and, if there are any, "S ZZ", "S YZ", "S XZ", whose name is S or speaks of stress. Without ZZ there
/// are two principal stresses, those in the plane. A missing component counts as 0.
void AddDerivedItems(const DerivedItems& wanted, ResultContent& content);
