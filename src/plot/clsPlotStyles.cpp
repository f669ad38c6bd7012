// The styles that a user can choose from, with the names that lists show.
#include "plot/clsPlot.h"

#include <cstdlib>
#include <span>

namespace {

struct Style {
    int Value;
    const char16_t* Name;
};

constexpr Style dotStyles[] = {{DotStyle::None, u"なし"},
                               {DotStyle::Circle, u"丸"},
                               {DotStyle::Square, u"四角"},
                               {DotStyle::Triangle, u"三角"},
                               {DotStyle::Cross, u"十字"}};

constexpr Style lineStyles[] = {{PenStyle::Null, u"なし"},        {PenStyle::Solid, u"実線"},
                                {PenStyle::Dash, u"鎖線"},        {PenStyle::Dot, u"点線"},
                                {PenStyle::DashDot, u"一点鎖線"}, {PenStyle::DashDotDot, u"二点鎖線"}};

constexpr Style dotFillStyles[] = {
    {-1, u"なし"},           {8, u"塗りつぶし"},      {0, u"水平線ブラシ"},      {1, u"鉛直線ブラシ"},
    {3, u"斜め線ブラシ(1)"}, {2, u"斜め線ブラシ(2)"}, {4, u"水平・鉛直線ブラシ"}};

Style styleAt(std::span<const Style> table, int row) {
    return row >= 0 && std::size_t(row) < table.size() ? table[std::size_t(row)] : Style{0, u""};
}

QString nameAt(std::span<const Style> table, int row) {
    return QString::fromUtf16(styleAt(table, row).Name);
}

} // namespace

int clsPlot::SupportedDotStyle(int row) {
    const int count = SupportedDotStyleCount();
    return row >= -count && row <= count ? std::abs(row) : 0;
}
QString clsPlot::SupportedDotStyleDescription(int row) {
    return nameAt(dotStyles, row);
}
int clsPlot::SupportedDotStyleCount() {
    return int(std::size(dotStyles));
}

int clsPlot::SupportedLineStyle(int row) {
    return styleAt(lineStyles, row).Value;
}
QString clsPlot::SupportedLineStyleDescription(int row) {
    return nameAt(lineStyles, row);
}
int clsPlot::SupportedLineStyleCount() {
    return int(std::size(lineStyles));
}

int clsPlot::SupprotedDotFillStyle(int row) {
    return styleAt(dotFillStyles, row).Value;
}
QString clsPlot::SupprotedDotFillStyleDescription(int row) {
    return nameAt(dotFillStyles, row);
}
int clsPlot::SupprotedDotFillStyleCount() {
    return int(std::size(dotFillStyles));
}
