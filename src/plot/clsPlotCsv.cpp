// The plot's data file: a title, and for each series a line of plot values behind its label and a line of base values.
#include "plot/clsPlot.h"

#include "app/NumberFormat.h"

#include <limits>

namespace {

constexpr qint64 largestFile = qint64(64) << 20;
constexpr QStringView valueMask = u"0.000E-0";
constexpr qsizetype usualFieldLength = 10; ///< ",1.234E-5"

/// The fields of a line, found one by one so that a long line costs no memory. A comma or a line end closes a field and
/// blanks and tabs are dropped, but between double quotes; what is left at the end is a field if it isn't empty.
/// Nothing stands for a double quote itself.
class CsvFields {
public:
    explicit CsvFields(QStringView line) : rest(line) {}

    /// False at the end of the line.
    bool Next(QString& field) {
        field.truncate(0);
        bool quoted = false;
        for (qsizetype i = 0; i < rest.size(); ++i) {
            const QChar c = rest[i];
            if (c == u'"') {
                quoted = !quoted;
            } else if (!quoted && (c == u',' || c == u'\n' || c == u'\r')) {
                rest = rest.sliced(i + 1);
                return true;
            } else if (quoted || (c != u' ' && c != u'\u3000' && c != u'\t')) {
                field += c;
            }
        }
        rest = {};
        return !field.isEmpty();
    }

private:
    QStringView rest;
};

/// NaN, which no text reads as, for a number beyond single precision.
float singleOf(const QString& field) {
    float value = std::numeric_limits<float>::quiet_NaN();
    mdTips::Narrow(mdTips::Val(field), value);
    return value;
}

/// Adds the points of a series from its two lines. Points for which either number is missing or beyond range are left
/// out.
void addSeries(clsPlot& plot, int series, QStringView plotLine, QStringView baseLine) {
    CsvFields plotFields(plotLine), baseFields(baseLine);
    QString label, plotField, baseField;
    if (!plotFields.Next(label))
        return;
    // The first field, which stands beneath the label, is no value.
    baseFields.Next(baseField);
    while (plotFields.Next(plotField) && baseFields.Next(baseField)) {
        const float base = singleOf(baseField), value = singleOf(plotField);
        if (!std::isnan(base) && !std::isnan(value))
            plot.DataAdd(series, base, value);
    }
    plot.SetDataLabel(series, label);
}

QString titleOf(QStringView text) {
    if (text.startsWith(u'"') && text.endsWith(u'"'))
        text = text.size() > 2 ? text.sliced(1, text.size() - 2) : QStringView();
    return text.toString();
}

void appendValues(QString& text, const std::vector<double>& values) {
    for (const double value : values) {
        text += u',';
        text += NumberFormat::Format(value, valueMask);
    }
    text += u"\r\n";
}

} // namespace

void clsPlot::CsvSave(const QString& path) const {
    std::size_t values = 0;
    for (const PlotSeries& series : seriesList)
        values += series.BaseValues.size() + series.PlotValues.size();
    QString text = u"TITLE,\""_s + GraphTitle + u"\"\r\n"_s;
    text.reserve(text.size() + qsizetype(values) * usualFieldLength);
    for (const PlotSeries& series : seriesList) {
        text += u'"' + series.DataLabel + u'"';
        appendValues(text, series.PlotValues);
        appendValues(text, series.BaseValues);
    }
    mdTips::WriteTextFile(path, text);
}

void clsPlot::CsvLoad(const QString& path, bool keep) {
    if (!keep)
        DataLegendClear();
    const QString text = mdTips::ReadTextFile(path, largestFile);
    const QString titleMark = u"title,"_s;
    int series = 0;
    QStringView rest = text, line;
    while (mdTips::TakeLine(rest, line)) {
        if (line.startsWith(titleMark, Qt::CaseInsensitive)) {
            GraphTitle = titleOf(line.sliced(titleMark.size()));
            continue;
        }
        // A series whose second line is missing has no points.
        QStringView baseLine;
        mdTips::TakeLine(rest, baseLine);
        addSeries(*this, ++series, line, baseLine);
    }
}
