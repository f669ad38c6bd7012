// The settings' way between their records and the registry. What belongs where is in `settingsTable`; the drawing
// settings of a single result file are not kept here.
#pragma once

#include "app/ApplicationSettings.h"

/// None of these fails: a value that can't be read leaves its field as it stood, so that a store that is missing,
/// damaged or held means defaults, and a save that can't be kept leaves the store as it was. Each save is one
/// transaction. Numbers are read from a value's text, as far as that goes; held ranges come after.
namespace settingsStore {
/// The program's key beneath `HKEY_CURRENT_USER`.
inline constexpr QStringView RootKey = u"Software\\Ordvane\\Velorin\\1.0";

/// Sets all defaults, reads the general settings, leaves the program's folder as the key's default value, then reads
/// graph defaults and page labels.
void LoadSettings(ApplicationSettings& settings, const QString& programFolder, const QString& defaultPrinter);
void SaveSettings(const ApplicationSettings& settings);
/// What the user is to be told: that the settings are there but couldn't be read. Empty when all is well.
QString Notice();

/// Legend styles are taken in the order in which the registry lists them, whatever their numbers.
void LoadGraphSettings(GraphDefaults& graph);
void SaveGraphSettings(const GraphDefaults& graph); ///< the key is made anew

/// As many labels as there are subkeys, found by their numbers from 1 on: a gap leaves the last ones empty.
void LoadPageLabels(PageSettings& page);
void SavePageLabels(const PageSettings& page);

/// What a result file starts from. An absent value is its default, but `Reverse` stays as it was; the contour becomes
/// automatic, its ends stay; the vector items are gone.
void LoadContourDefaults(ContourSettings& contour);
void LoadDisplacementDefaults(DisplacementSettings& displacement);
void LoadVectorDefaults(VectorSettings& vector);
/// Keeps contour, displacement and vector as what result files start from. False when they could not be kept.
bool SaveDrawingDefaults(const ApplicationSettings& settings);
} // namespace settingsStore
