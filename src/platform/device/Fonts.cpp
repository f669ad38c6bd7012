#include "platform/device/Fonts.h"

#include "platform/base/Lists.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHash>
#include <algorithm>
#include <mutex>

namespace Fonts {
namespace {
/// As much as the system's library takes at once.
constexpr std::size_t loadingTakes = 2 << 20;

struct StandIn {
    QStringView Face;
    QStringView Family;
};

// The full-width and the Latin spelling of a Japanese face are the same face; result files carry either.
constexpr StandIn standIns[] = {
    {u"ＭＳ Ｐゴシック", u"IPAPGothic"},
    {u"MS PGothic", u"IPAPGothic"},
    {u"ＭＳ ゴシック", u"IPAGothic"},
    {u"MS Gothic", u"IPAGothic"},
    {u"ＭＳ Ｐ明朝", u"IPAPMincho"},
    {u"MS PMincho", u"IPAPMincho"},
    {u"ＭＳ 明朝", u"IPAMincho"},
    {u"MS Mincho", u"IPAMincho"},
    {u"MS UI Gothic", u"IPAPGothic"},
    {u"メイリオ", u"IPAPGothic"},
    {u"Meiryo", u"IPAPGothic"},
    {u"Arial", u"Liberation Sans"},
    {u"Helvetica", u"Liberation Sans"},
    {u"MS Sans Serif", u"Liberation Sans"},
    {u"Microsoft Sans Serif", u"Liberation Sans"},
    {u"Tahoma", u"Liberation Sans"},
    {u"Courier New", u"Liberation Mono"},
    {u"Courier", u"Liberation Mono"},
    {u"Times New Roman", u"Liberation Serif"},
};

constexpr qsizetype largestCache = 512;

QString japaneseFor(QStringView family) {
    if (family == u"Liberation Mono")
        return u"IPAGothic"_s;
    return family == u"Liberation Serif" ? u"IPAPMincho"_s : u"IPAPGothic"_s;
}

QString standInFor(const QString& face) {
    for (const StandIn& standIn : standIns)
        if (standIn.Face.compare(face, Qt::CaseInsensitive) == 0)
            return standIn.Family.toString();
    return {};
}

/// The face itself when the system has it, else its stand-in; then a family for the Japanese characters it lacks.
QStringList familiesOf(const QString& face) {
    QString first = face;
    if (face.isEmpty() || !QFontDatabase::hasFamily(face)) {
        const QString standIn = standInFor(face);
        first = standIn.isEmpty() ? u"Liberation Sans"_s : standIn;
    }
    const QString japanese = japaneseFor(first);
    return first == japanese ? QStringList{first} : QStringList{first, japanese};
}

struct Fit {
    QStringList Families;
    int PixelSize = 1;
};

struct Key {
    QString Face;
    int Height;
    int Weight;
    bool Italic;
    bool operator==(const Key&) const = default;
};

size_t qHash(const Key& key, size_t seed = 0) {
    return qHashMulti(seed, key.Face, key.Height, key.Weight, key.Italic);
}

QFont plainFont(const Fit& fit, int weight, bool italic) {
    QFont font;
    font.setFamilies(fit.Families);
    font.setPixelSize(fit.PixelSize);
    font.setWeight(QFont::Weight(std::clamp(weight, 1, 1000)));
    font.setItalic(italic);
    return font;
}

Fit fitTo(const Key& key) {
    Fit fit{familiesOf(key.Face), key.Height};
    const auto cellHeight = [&](int pixelSize) {
        fit.PixelSize = pixelSize;
        const QFontMetrics metrics(plainFont(fit, key.Weight, key.Italic));
        return metrics.ascent() + metrics.descent();
    };
    // The ratio at the wished size lands within a pixel or two; hinting rounds ascent and descent, so neighbours count.
    const int ratio = key.Height * key.Height / std::max(1, cellHeight(key.Height));
    const int guess = std::clamp(ratio, 1, LargestHeight);
    int best = guess, bestMiss = std::abs(cellHeight(guess) - key.Height);
    for (int size = std::max(1, guess - 2); size <= guess + 2; ++size) {
        const int miss = std::abs(cellHeight(size) - key.Height);
        if (miss < bestMiss) {
            best = size;
            bestMiss = miss;
        }
    }
    fit.PixelSize = best;
    return fit;
}
} // namespace

void InstallSubstitutions() {
    static std::once_flag done;
    std::call_once(done, [] {
        for (const StandIn& standIn : standIns)
            QFont::insertSubstitutions(standIn.Face.toString(),
                                       {standIn.Family.toString(), japaneseFor(standIn.Family)});
        const QString systemFamily = QGuiApplication::font().family();
        QFont::insertSubstitutions(systemFamily, {japaneseFor(systemFamily)});
    });
}

const QStringList& Faces() {
    static const QStringList faces = [] {
        QStringList all = QFontDatabase::families();
        for (const StandIn& standIn : standIns)
            all += standIn.Face.toString();
        all.sort(Qt::CaseInsensitive);
        all.removeDuplicates();
        return all;
    }();
    return faces;
}

FaceKind KindOf(const QString& face) {
    if (!QFontDatabase::hasFamily(face))
        return FaceKind::StandIn;
    return QFontDatabase::isSmoothlyScalable(face) ? FaceKind::Outline : FaceKind::Bitmap;
}

void LeaveRoomFor(const QString& text) {
    // Numbers are many, and nothing but their font is loaded for them.
    if (std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); }))
        requireMemory(loadingTakes);
}

QFont ToQFont(const Font& font) {
    requireMemory(loadingTakes);
    // Only the sizes are kept: a QFont shared by threads would race for the engine that it keeps inside.
    static std::mutex guard;
    static QHash<Key, Fit> cache;
    const Key key{font.Face, std::clamp(font.Height, 1, LargestHeight), font.Weight, font.Italic};
    Fit fit;
    {
        const std::lock_guard lock(guard);
        auto found = cache.constFind(key);
        if (found == cache.constEnd()) {
            if (cache.size() >= largestCache)
                cache.clear();
            found = cache.insert(key, fitTo(key));
        }
        fit = *found;
    }
    QFont result = plainFont(fit, font.Weight, font.Italic);
    result.setUnderline(font.Underline);
    result.setStrikeOut(font.StrikeOut);
    return result;
}

QStringList FamiliesFor(const Font& font) {
    QStringList families = familiesOf(font.Face);
    const QString first = families.first();
    if (!font.Face.isEmpty() && !families.contains(font.Face))
        families += font.Face;
    const bool serif = first.endsWith(u"Serif") || first.endsWith(u"Mincho") || first.endsWith(u"明朝");
    const bool fixed = first.endsWith(u"Mono") || first == u"IPAGothic";
    return families += serif ? u"serif"_s : fixed ? u"monospace"_s : u"sans-serif"_s;
}
} // namespace Fonts
