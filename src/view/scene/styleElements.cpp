#include "view/scene/styleElements.h"

#include <QStringList>

namespace styleElements {

namespace {

QString textOf(const LineStyle& line) {
    return u"%1,%2,0x%3"_s.arg(line.Width).arg(line.Style).arg(line.Color, 0, 16);
}

bool read(const QString& text, LineStyle& line) {
    constexpr int lastStyle = 4;
    constexpr ColorRef white = 0xffffff;
    const QStringList parts = text.split(u',');
    bool widthOk = false, styleOk = false, colorOk = false;
    const LineStyle wanted{parts.value(0).toInt(&widthOk), parts.value(1).toInt(&styleOk),
                           parts.value(2).toUInt(&colorOk, 0)};
    if (parts.size() != 3 || !widthOk || !styleOk || !colorOk || wanted.Width < 1 || wanted.Style < 0 ||
        wanted.Style > lastStyle || wanted.Color > white)
        return false;
    line = wanted;
    return true;
}

struct HeaderPart {
    const char16_t* Name;
    bool SlideShowSettings::*Shown;
};
constexpr HeaderPart headerParts[] = {{u"step", &SlideShowSettings::HeaderStep},
                                      {u"time", &SlideShowSettings::HeaderTime},
                                      {u"contour", &SlideShowSettings::HeaderContour},
                                      {u"vector", &SlideShowSettings::HeaderVector}};

QString textOf(const SlideShowSettings& show) {
    QStringList parts;
    for (const HeaderPart& part : headerParts)
        if (show.*part.Shown)
            parts += QStringView(part.Name).toString();
    return show.PaintHeader ? parts.join(u',') : u"none"_s;
}

bool read(const QString& text, SlideShowSettings& show) {
    QStringList parts = text.split(u',', Qt::SkipEmptyParts);
    show.PaintHeader = parts != QStringList(u"none"_s);
    for (const HeaderPart& part : headerParts)
        show.*part.Shown = parts.removeAll(QStringView(part.Name).toString()) > 0;
    return parts.isEmpty() || !show.PaintHeader;
}

QString textOf(const QString& text) {
    return text;
}

bool read(const QString& text, QString& target) {
    target = text;
    return true;
}

/// Calls `each` with every name and its field.
template<class Each>
void forEach(ApplicationSettings& settings, const Each& each) {
    StyleSettings& style = settings.Style;
    for (std::size_t i = 0; i < style.LineStyles.size(); ++i)
        each(u"line-"_s + QString::number(i + 1), style.LineStyles[i]);
    for (std::size_t i = 0; i < style.FontStrings.size(); ++i)
        each(u"font-"_s + QString::number(i + 1), style.FontStrings[i]);
    each(u"real-format"_s, style.RealFormat);
    each(u"header"_s, settings.SlideShow);
}

} // namespace

bool Set(const QString& assignment, ApplicationSettings& settings) {
    const QString name = assignment.section(u'=', 0, 0), value = assignment.section(u'=', 1);
    bool done = false;
    forEach(settings, [&](const QString& other, auto& field) {
        if (assignment.contains(u'=') && name.compare(other, Qt::CaseInsensitive) == 0)
            done = read(value, field);
    });
    return done;
}

QStringList Assignments(const ApplicationSettings& settings) {
    QStringList before, after;
    const auto listed = [](ApplicationSettings record) {
        QStringList all;
        forEach(record, [&](const QString& name, const auto& field) { all += name + u'=' + textOf(field); });
        return all;
    };
    before = listed({});
    after = listed(settings);
    after.removeIf([&](const QString& assignment) { return before.contains(assignment); });
    return after;
}

} // namespace styleElements
