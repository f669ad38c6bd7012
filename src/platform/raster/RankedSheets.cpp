#include "platform/raster/RankedSheets.h"

#include "platform/base/Parallel.h"
#include "platform/raster/SmallFigure.h"

#include <cstring>

namespace {
using Rank = RankedLayer::Rank;
using RankEight = Rank __attribute__((vector_size(8)));

/// Where a bit is set, no pixel of the eight stays below the rank.
void raiseEight(Rank* pixels, unsigned bits, RankEight rank) {
    static constexpr auto masks = [] {
        std::array<std::array<Rank, 8>, 256> values{};
        for (unsigned i = 0; i < 256 * 8; ++i)
            values[i / 8][i % 8] = i / 8 >> i % 8 & 1u ? 255 : 0;
        return values;
    }();
    RankEight mask, present;
    std::memcpy(&mask, masks[bits].data(), sizeof mask);
    std::memcpy(&present, pixels, sizeof present);
    const RankEight drawn = rank & mask;
    present = present > drawn ? present : drawn;
    std::memcpy(pixels, &present, sizeof present);
}
} // namespace

/// The pixels of a surface with a margin about them, so wide that whatever touches the surface lies in it.
class RankedSheets::Sheet {
public:
    explicit Sheet(const PixelSurface& surface)
        : area(surface), stride(surface.Right - surface.Left + 2 * margin),
          pixels(std::size_t(stride) * std::size_t(surface.Bottom - surface.Top + 2 * margin)) {}

    void Add(std::span<const DevicePoint> corners, const Polygon& polygon) {
        const DeviceRect& bounds = polygon.Bounds;
        const Rank rank = polygon.InkRank;
        if (bounds.Right <= area.Left || bounds.Left >= area.Right || bounds.Bottom <= area.Top ||
            bounds.Top >= area.Bottom)
            return;
        top = std::min(top, bounds.Top);
        bottom = std::max(bottom, bounds.Bottom);
        Rank* row = pixelAt(bounds.Left, bounds.Top);
        const DevicePoint leftTop{bounds.Left, bounds.Top};
        const auto fits = [&bounds](int size) { return bounds.Width() <= size && bounds.Height() <= size; };
        // Between pixels that lie side by side there is none: the polygon is its corners.
        if (fits(2)) {
            for (const DevicePoint point : corners) {
                Rank& pixel = row[(point.Y - bounds.Top) * stride + point.X - bounds.Left];
                pixel = std::max(pixel, rank);
            }
            return;
        }
        const RankEight ranks = rank - RankEight{};
        if (fits(TinyFigure::Size)) {
            const TinyFigure figure(corners, leftTop);
            for (std::uint64_t bits = figure.Inside | figure.Outline; bits != 0; bits >>= 8, row += stride)
                raiseEight(row, bits & 255, ranks);
            return;
        }
        const SmallFigure figure(corners, leftTop);
        for (std::size_t i = 0; i < std::size_t(bounds.Height()); ++i, row += stride) {
            const unsigned bits = figure.Inside[i] | figure.Outline[i];
            raiseEight(row, bits & 255, ranks);
            raiseEight(row + 8, bits >> 8, ranks);
        }
    }

    /// The rows of the surface that may have ranks.
    int Top() const { return std::max(top, area.Top); }
    int Bottom() const { return std::min(bottom, area.Bottom); }
    std::span<Rank> Row(int y) { return {pixelAt(area.Left, y), std::size_t(area.Right - area.Left)}; }
    void Widen(const Sheet& other) {
        top = std::min(top, other.top);
        bottom = std::max(bottom, other.bottom);
    }

private:
    static constexpr int margin = LargestSize;

    Rank* pixelAt(int x, int y) {
        return pixels.data() + std::ptrdiff_t(y - area.Top + margin) * stride + (x - area.Left + margin);
    }

    PixelSurface area;
    std::ptrdiff_t stride;
    std::vector<Rank> pixels;
    int top = INT32_MAX, bottom = INT32_MIN;
};

RankedSheets::RankedSheets(const PixelSurface& on, int threadLimit, std::function<void()> stopIfAsked)
    : surface(on), threads(threadLimit), stop(std::move(stopIfAsked)) {
    constexpr std::int64_t mostPixels = 64 << 20;
    sheetsToMake = int(std::clamp<std::int64_t>(mostPixels / std::max<std::int64_t>(on.PixelCount(), 1), 1, threads));
}

RankedSheets::~RankedSheets() = default;

std::unique_ptr<RankedSheets::Sheet> RankedSheets::takeSheet() {
    std::unique_lock lock(guard);
    givenBack.wait(lock, [this] { return !sheets.empty() || sheetsToMake > 0; });
    if (sheets.empty()) {
        auto sheet = std::make_unique<Sheet>(surface);
        --sheetsToMake;
        return sheet;
    }
    std::unique_ptr<Sheet> sheet = std::move(sheets.back());
    sheets.pop_back();
    return sheet;
}

void RankedSheets::giveBack(std::unique_ptr<Sheet> sheet) {
    const std::scoped_lock lock(guard);
    sheets.push_back(std::move(sheet));
    givenBack.notify_one();
}

void RankedSheets::Add(std::span<const DevicePoint> points, std::span<const Polygon> polygons) {
    stop();
    if (surface.IsEmpty())
        return;
    std::unique_ptr<Sheet> sheet = takeSheet();
    for (const Polygon& polygon : polygons) {
        sheet->Add(points.first(std::size_t(polygon.Corners)), polygon);
        points = points.subspan(std::size_t(polygon.Corners));
    }
    giveBack(std::move(sheet));
}

/// What has been added on several sheets on one.
void RankedSheets::merge() {
    Sheet& all = *sheets.front();
    for (std::size_t i = 1; i < sheets.size(); ++i) {
        Sheet& other = *sheets[i];
        for (int y = other.Top(); y < other.Bottom(); ++y)
            std::ranges::transform(all.Row(y), other.Row(y), all.Row(y).begin(),
                                   [](Rank a, Rank b) { return std::max(a, b); });
        all.Widen(other);
    }
    sheets.resize(1);
}

void RankedSheets::Put(int first, std::span<const ColorRef> inks) {
    stop();
    if (sheets.empty())
        return;
    merge();
    std::array<std::uint32_t, MostRanks + 1> pixelOf{};
    inks = inks.first(std::min(inks.size(), pixelOf.size()));
    std::ranges::transform(inks, pixelOf.begin(), toPixel);
    Sheet& sheet = *sheets.front();
    constexpr int rowsAtOnce = 64;
    const int rows = std::max(0, sheet.Bottom() - sheet.Top());
    parallelFor((rows + rowsAtOnce - 1) / rowsAtOnce,
                [&](int stretch) {
                    const int start = sheet.Top() + stretch * rowsAtOnce;
                    for (int y = start; y < std::min(start + rowsAtOnce, sheet.Bottom()); ++y) {
                        std::uint32_t* pixel = surface.Pixel(surface.Left, y);
                        for (const Rank rank : sheet.Row(y)) {
                            if (const unsigned ink = unsigned(rank) - unsigned(first); ink < inks.size())
                                *pixel = pixelOf[ink];
                            ++pixel;
                        }
                    }
                },
                threads);
}
