// The plot's data file: a title, and for each series a line of plot values behind its label and a line of base values.
#include "plot/clsPlot.h"

#include "app/NumberFormat.h"
#include "property/drawingElements.h"

#include <limits>
#include <optional>

namespace {

constexpr qint64 largestFile = qint64(128) << 20;
constexpr QStringView valueMask = u"0.000E-0";
constexpr qsizetype usualFieldLength = 10; ///< ",1.234E-5"

/// Calls `use` with the fields of a line, one by one so that a long line costs no memory. A comma or a line end closes
/// a field and blanks and tabs are dropped, but between double quotes; what is left at the end is a field if it isn't
/// empty. Nothing stands for a double quote itself.
template<class Use>
void SplitCsvLine(QStringView text, const Use& use) {
    QString field;
    bool quoted = false;
    for (const QChar c : text) {
        if (c == u'"') {
            quoted = !quoted;
        } else if (!quoted && (c == u',' || c == u'\n' || c == u'\r')) {
            use(field);
            field.truncate(0);
        } else if (quoted || (c != u' ' && c != u'\u3000' && c != u'\t')) {
            field += c;
        }
    }
    if (!field.isEmpty())
        use(field);
}

/// NaN, which no text reads as, for a number beyond single precision.
float singleOf(const QString& field) {
    float value = std::numeric_limits<float>::quiet_NaN();
    drawingElements::Narrow(mdTips::Val(field), value);
    return value;
}

/// Adds the points of a series from its two lines. Points for which either number is missing or beyond range are left
/// out.
void addSeries(clsPlot& plot, int series, QStringView plotLine, QStringView baseLine) {
    std::optional<QString> label;
    std::vector<float> plotValues;
    SplitCsvLine(plotLine, [&](const QString& field) {
        if (label)
            plotValues.push_back(singleOf(field));
        else
            label = field;
    });

    // The first field, which stands beneath the label, is no value.
    std::size_t position = 0;
    SplitCsvLine(baseLine, [&](const QString& field) {
        if (position > 0 && position <= plotValues.size()) {
            const float base = singleOf(field), value = plotValues[position - 1];
            if (!std::isnan(base) && !std::isnan(value))
                plot.DataAdd(series, base, value);
        }
        ++position;
    });
    if (label)
        plot.SetDataLabel(series, *label);
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
    QString text = u"TITLE,\""_qs + GraphTitle + u"\"\r\n"_qs;
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
    const QString titleMark = u"title,"_qs;
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
