// Where the manual is. Opens and searches none of its pages.
#pragma once

#include <QString>

namespace helpPages {
/// The first page of the manual, "index.htm" with whatever follows: in the folder `chosen` by the user; where that has
/// none, of the manual that comes with the program, in `language` ("ja"), else in Japanese, else in English. Empty if
/// there is none at all.
QString Index(const QString& chosen, const QString& programFolder, const QString& language);
} // namespace helpPages
