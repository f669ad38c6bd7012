#include "platform/film/FilmPalette.h"

#include <algorithm>
#include <span>
#include <vector>

namespace {

constexpr int mostColors = 255;
constexpr std::uint32_t unusedColor = 0xff000000;

struct CountedColor {
    std::uint32_t Color;
    std::int64_t Count;
};
using Box = std::span<CountedColor>;

/// Calls `visit` with each pixel that differs from the one before in its row.
template<class Visit>
void visitPixels(const FilmFrame& frame, const Visit& visit) {
    for (int y = 0; y < frame.Height; ++y) {
        const std::uint32_t* const row = frame.Pixels + y * frame.Stride;
        for (int x = 0; x < frame.Width;) {
            const int start = x;
            while (x < frame.Width && row[x] == row[start])
                ++x;
            if (!visit(row[start], y, start, x))
                return;
        }
    }
}

int channel(std::uint32_t color, int shift) {
    return int(color >> shift & 0xff);
}

struct Spread {
    int Shift = 0;  ///< of the channel with the widest range
    int Range = -1; ///< 0 when there is one colour alone
};

Spread spreadOf(Box box) {
    Spread widest;
    for (const int shift : {0, 8, 16}) {
        const auto [low, high] =
            std::ranges::minmax(box, {}, [=](const CountedColor& counted) { return channel(counted.Color, shift); });
        const int range = channel(high.Color, shift) - channel(low.Color, shift);
        if (range > widest.Range)
            widest = {shift, range};
    }
    return widest;
}

/// Sorts a box of two colours or more by its widest channel and cuts it where half of its pixels lie on either side.
std::size_t cutOf(Box box, int shift) {
    std::ranges::sort(box, {}, [=](const CountedColor& counted) { return channel(counted.Color, shift); });
    std::int64_t all = 0, below = 0;
    for (const CountedColor& counted : box)
        all += counted.Count;
    std::size_t cut = 0;
    while (cut + 2 < box.size() && below + box[cut].Count <= all / 2)
        below += box[cut++].Count;
    return std::max<std::size_t>(cut, 1);
}

/// Median cut: boxes with similar colours in each.
std::vector<Box> boxesOf(Box all) {
    std::vector<std::pair<Spread, Box>> boxes{{spreadOf(all), all}};
    while (int(boxes.size()) < mostColors) {
        const auto widest = std::ranges::max_element(boxes, {}, [](const auto& box) { return box.first.Range; });
        const auto [spread, box] = *widest;
        if (spread.Range == 0)
            break;
        const std::size_t cut = cutOf(box, spread.Shift);
        *widest = {spreadOf(box.first(cut)), box.first(cut)};
        boxes.emplace_back(spreadOf(box.subspan(cut)), box.subspan(cut));
    }
    std::vector<Box> result;
    for (const auto& [spread, box] : boxes)
        result.push_back(box);
    return result;
}

/// The most frequent colour of a box when most of its pixels have it, so that areas keep theirs; else the mean.
std::uint32_t colorOf(Box box) {
    std::array<std::int64_t, 3> sums{};
    std::int64_t all = 0;
    for (const CountedColor& counted : box) {
        all += counted.Count;
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] += counted.Count * channel(counted.Color, int(8 * i));
    }
    const CountedColor& most = *std::ranges::max_element(box, {}, &CountedColor::Count);
    if (2 * most.Count > all)
        return most.Color;
    std::uint32_t mean = unusedColor;
    for (std::size_t i = 0; i < sums.size(); ++i)
        mean |= std::uint32_t((sums[i] + all / 2) / all) << 8 * i;
    return mean;
}

} // namespace

FilmPalette::FilmPalette() {
    clear();
}

void FilmPalette::clear() {
    colors.fill(unusedColor);
    colors.back() = 0;
    numberOf.clear();
    count = 0;
    reduced = false;
}

bool FilmPalette::takeAsIs(const FilmFrame& frame) {
    bool fits = true;
    visitPixels(frame, [&](std::uint32_t color, int, int, int) {
        const auto [place, isNew] = numberOf.try_emplace(color, std::uint8_t(count));
        if (isNew && (fits = count < mostColors))
            colors[std::size_t(count++)] = color;
        return fits;
    });
    return fits;
}

void FilmPalette::reduce(const FilmFrame& frame) {
    std::unordered_map<std::uint32_t, std::int64_t> counts;
    visitPixels(frame, [&](std::uint32_t color, int, int start, int end) {
        counts[color] += end - start;
        return true;
    });
    std::vector<CountedColor> met;
    for (const auto& [color, pixels] : counts)
        met.push_back({color, pixels});
    // The hash's order is nobody's.
    std::ranges::sort(met, {}, &CountedColor::Color);
    clear();
    reduced = true;
    for (const Box box : boxesOf(met)) {
        colors[std::size_t(count)] = colorOf(box);
        for (const CountedColor& counted : box)
            numberOf[counted.Color] = std::uint8_t(count);
        ++count;
    }
}

const FilmPalette::Colors& FilmPalette::Index(const FilmFrame& frame, std::uint8_t* numbers, std::ptrdiff_t stride) {
    bool done = !reduced && takeAsIs(frame);
    if (!done) {
        clear();
        done = takeAsIs(frame);
    }
    if (!done)
        reduce(frame);
    visitPixels(frame, [&](std::uint32_t color, int y, int start, int end) {
        std::fill(numbers + y * stride + start, numbers + y * stride + end, numberOf.at(color));
        return true;
    });
    return colors;
}
