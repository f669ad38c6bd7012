#include "platform/device/PaperSizes.h"

#include <algorithm>
#include <cmath>

namespace PaperSizes {
namespace {
constexpr PaperSize table[] = {
    {1, u"レター", 215.9, 279.4},
    {3, u"タブロイド", 279.4, 431.8},
    {4, u"レジャー", 431.8, 279.4},
    {5, u"リーガル", 215.9, 355.6},
    {6, u"ステートメント", 139.7, 215.9},
    {7, u"エグゼクティブ", 184.15, 266.7},
    {8, u"A3", 297, 420},
    {A4, u"A4", 210, 297},
    {11, u"A5", 148, 210},
    {12, u"B4 (JIS)", 257, 364},
    {13, u"B5 (JIS)", 182, 257},
    {14, u"フォリオ", 215.9, 330.2},
    {15, u"クォート", 215, 275},
    {16, u"10x14", 254, 355.6},
    {19, u"封筒 #9", 98.425, 225.425},
    {20, u"封筒 #10", 104.775, 241.3},
    {21, u"封筒 #11", 114.3, 263.525},
    {22, u"封筒 #12", 120.65, 279.4},
    {23, u"封筒 #14", 127, 292.1},
    {24, u"C シート", 431.8, 558.8},
    {25, u"D シート", 558.8, 863.6},
    {26, u"E シート", 863.6, 1117.6},
    {27, u"封筒 DL", 110, 220},
    {28, u"封筒 C5", 162, 229},
    {29, u"封筒 C3", 324, 458},
    {30, u"封筒 C4", 229, 324},
    {31, u"封筒 C6", 114, 162},
    {33, u"B4 (ISO)", 250, 353},
    {34, u"B5 (ISO)", 176, 250},
    {37, u"封筒 Monarch", 98.425, 190.5},
    {43, u"はがき", 100, 148},
    {66, u"A2", 420, 594},
    {69, u"往復はがき", 200, 148},
    {70, u"A6", 105, 148},
    {88, u"B6 (JIS)", 128, 182},
};
} // namespace

std::span<const PaperSize> Table() {
    return table;
}

const PaperSize* Find(int code) {
    const auto row = std::ranges::find(table, code, &PaperSize::Code);
    return row == std::end(table) ? nullptr : row;
}

std::optional<int> CodeOf(double widthMm, double heightMm) {
    constexpr double nearMm = 0.5;
    const auto row = std::ranges::find_if(table, [&](const PaperSize& paper) {
        return std::abs(paper.WidthMm - widthMm) <= nearMm && std::abs(paper.HeightMm - heightMm) <= nearMm;
    });
    return row == std::end(table) ? std::nullopt : std::optional(row->Code);
}
} // namespace PaperSizes
