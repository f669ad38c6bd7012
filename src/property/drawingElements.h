// The drawing settings of one result file by their element paths, such as `contour/colors/index`, for whoever sets them
// one by one as text. The property file reads and writes the same elements in its own, more lenient forms.
#pragma once

#include "app/ApplicationSettings.h"

#include <QString>
#include <QStringList>

namespace drawingElements {

/// Sets the setting at `path` from `text`, held within its range. False when there is no such path or the text isn't of
/// the element's kind. Besides the plain elements, `vector/items/itemset` takes "NAME,HORZ,VERT" with item numbers
/// counted from 1 and a name with commas in double quotes, adds the set and makes it the one in use. `difference/std`
/// is a step's number counted from 1, 0 none.
bool Set(const QString& path, const QString& text, ApplicationSettings& settings);

/// "PATH=VALUE" for each setting that isn't what settings start from, so that `Set` makes the same picture of them: of
/// the vector sets only the one in use.
QStringList Assignments(const ApplicationSettings& settings);

/// All paths that `Set` knows, in the order of the table.
QStringList Paths();

/// The words "True" and "False" in any case, or a whole number, true when not 0. Any other text is refused.
bool ReadBoolean(const QString& text, bool& target);

} // namespace drawingElements
