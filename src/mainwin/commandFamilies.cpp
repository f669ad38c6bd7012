#include "mainwin/commandFamilies.h"

#include "mainwin/commandTable.h"

void commandFamilies::Set(CommandBars& bars, const QString& prefix, const std::vector<FamilyEntry>& entries) {
    const FamilyRow* family = commandTable::FamilyOf(prefix);
    if (!family)
        return;
    const QString band = QString::fromUtf16(family->band);
    const QStringList standing = bars.BandTools(band);
    for (qsizetype i = standing.size() - 1; i >= 0; --i)
        if (standing.at(i).startsWith(prefix))
            bars.RemoveFromBand(band, standing.at(i));
    int number = family->firstNumber;
    for (const FamilyEntry& entry : entries) {
        ToolRecord record;
        record.Name = prefix + QString::number(number);
        record.ToolID = family->firstId + number;
        record.Caption = entry.Caption;
        record.Description = entry.Description;
        bars.AddToBand(band, record, number == family->firstNumber);
        bars.SetEnabled(record.Name, entry.Enabled);
        if (!entry.Picture.isNull())
            bars.SetPicture(record.Name, entry.Picture);
        ++number;
    }
    if (const QString last = QString::fromUtf16(family->last); !last.isEmpty())
        bars.MoveToEnd(band, last, true);
}
