// The labels of a printed page: the places where they can stand, the macros in their texts, and how they are drawn. Not
// the page under them.
#pragma once

#include "app/ApplicationSettings.h"
#include "app/mdTips.h"
#include "platform/device/DeviceContext.h"
#include "result/ResultModel.h"

#include <QDate>

namespace pageLabels {
/// How many places there are. Rows 0 to 5 lie at the edges of what can be printed, 6 to 11 outside the document and 12
/// to 17 inside it; in each six left, middle and right at the top, then the same at the bottom.
inline constexpr int PositionCount = 18;

/// The font of a new label, and the text of a place; one that there isn't reads as the first.
inline const QString DefaultFont = u"\"ＭＳ Ｐ明朝\",12,b"_s;
QString PositionName(int index);

/// The macros for `mdTips::ExpandLabelMacros`, with what stands for them now. Those of the vector are missing while no
/// pair of items is chosen.
LabelMacros BuildLabelMacros(const ResultModel& model, const VectorSettings& vector, QDate today);
/// A line for each macro, to choose from.
QStringList MacroDescriptions(QDate today);

/// Draws the labels that are to be printed, one over the other where they share a place. `printer` gives the measures
/// of the page, and `document` is the rectangle inside the margins.
void PrintPageLabels(DeviceContext& device, const DeviceContext& printer, const DeviceRect& document,
                     const QList<PageLabel>& labels, const LabelMacros& macros);
} // namespace pageLabels
