#include "platform/widgets/CupsAttributes.h"

#include "platform/device/PaperSizes.h"

#include <cups/pwg.h>

namespace Cups {
namespace {
constexpr double hundredthsPerMm = 100;

struct Caption {
    const char* Value;
    QStringView Text;
};

/// One of the properties that a queue may offer. What has no caption here is shown as the service calls it.
struct Property {
    const char* Name;
    QStringView Text;
    std::span<const Caption> Captions;
};

constexpr Caption sides[] = {
    {"one-sided", u"片面"}, {"two-sided-long-edge", u"両面 (長辺とじ)"}, {"two-sided-short-edge", u"両面 (短辺とじ)"}};
constexpr Caption colors[] = {{"auto", u"自動"},           {"color", u"カラー"},
                              {"monochrome", u"モノクロ"}, {"auto-monochrome", u"自動 (モノクロ)"},
                              {"bi-level", u"2 値"},       {"process-monochrome", u"カラーインクのモノクロ"}};
constexpr Caption trays[] = {{"auto", u"自動"},           {"main", u"標準トレイ"},      {"manual", u"手差し"},
                             {"by-pass-tray", u"手差し"}, {"tray-1", u"トレイ 1"},      {"tray-2", u"トレイ 2"},
                             {"tray-3", u"トレイ 3"},     {"tray-4", u"トレイ 4"},      {"top", u"上段トレイ"},
                             {"middle", u"中段トレイ"},   {"bottom", u"下段トレイ"},    {"envelope", u"封筒トレイ"},
                             {"rear", u"背面トレイ"},     {"large-capacity", u"大容量"}};

constexpr const char* tray = "media-source";
constexpr Property properties[] = {{"sides", u"両面印刷(&D):", sides},
                                   {"print-color-mode", u"カラー(&C):", colors},
                                   {"printer-resolution", u"解像度(&R):", {}},
                                   {tray, u"給紙トレイ(&T):", trays}};

ipp_attribute_t* find(const Response& told, const QByteArray& name) {
    return ippFindAttribute(told.get(), name.constData(), IPP_TAG_ZERO);
}

/// A value as a job gives it back: a keyword or a resolution. Empty for what is neither.
QString valueAt(ipp_attribute_t* attribute, int index) {
    if (ippGetValueTag(attribute) == IPP_TAG_RESOLUTION) {
        int down = 0;
        ipp_res_t unit = IPP_RES_PER_INCH;
        const int across = ippGetResolution(attribute, index, &down, &unit);
        const QString size = across == down ? QString::number(across) : u"%1x%2"_s.arg(across).arg(down);
        return size + (unit == IPP_RES_PER_CM ? u"dpcm"_s : u"dpi"_s);
    }
    return QString::fromUtf8(ippGetString(attribute, index, nullptr));
}

QString captionOf(const Property& property, const QString& value) {
    const auto found = std::ranges::find(property.Captions, value,
                                         [](const Caption& caption) { return QString::fromLatin1(caption.Value); });
    return found == property.Captions.end() ? value : found->Text.toString();
}

/// Sizes of the service are rounded to its own units.
bool isNear(int a, int b) {
    constexpr int nearHundredths = 50;
    return std::abs(a - b) <= nearHundredths;
}

int numberIn(ipp_t* collection, const char* name) {
    return ippGetInteger(ippFindAttribute(collection, name, IPP_TAG_INTEGER), 0);
}

/// The widest of the margins that the queue knows for any paper.
float widest(const Response& told, const char* name) {
    int most = 0;
    ipp_attribute_t* margins = find(told, name);
    for (int i = 0; i < ippGetCount(margins); ++i)
        most = std::max(most, ippGetInteger(margins, i));
    return float(most / hundredthsPerMm);
}

SheetMargins marginsOf(const Response& told, const pwg_media_t& media) {
    ipp_attribute_t* database = find(told, "media-col-database");
    for (int i = 0; i < ippGetCount(database); ++i) {
        ipp_t* sheet = ippGetCollection(database, i);
        ipp_t* size = ippGetCollection(ippFindAttribute(sheet, "media-size", IPP_TAG_BEGIN_COLLECTION), 0);
        if (!size || !isNear(numberIn(size, "x-dimension"), media.width) ||
            !isNear(numberIn(size, "y-dimension"), media.length))
            continue;
        const auto side = [sheet](const char* name) { return float(numberIn(sheet, name) / hundredthsPerMm); };
        return {side("media-left-margin"), side("media-top-margin"), side("media-right-margin"),
                side("media-bottom-margin")};
    }
    return {widest(told, "media-left-margin-supported"), widest(told, "media-top-margin-supported"),
            widest(told, "media-right-margin-supported"), widest(told, "media-bottom-margin-supported")};
}

/// Nothing for what is no paper, such as the ends of a range of sizes.
std::optional<PrinterPaper> paperOf(const Response& told, const QString& keyword, int ownCode) {
    if (keyword.startsWith(u"custom_min") || keyword.startsWith(u"custom_max"))
        return {};
    const pwg_media_t* media = pwgMediaForPWG(keyword.toUtf8().constData());
    if (!media || media->width <= 0 || media->length <= 0)
        return {};
    PrinterPaper paper;
    paper.Media = keyword;
    paper.WidthMm = media->width / hundredthsPerMm;
    paper.HeightMm = media->length / hundredthsPerMm;
    paper.Unprintable = marginsOf(told, *media);
    paper.Code = PaperSizes::CodeOf(paper.WidthMm, paper.HeightMm).value_or(ownCode);
    if (const PaperSize* customary = PaperSizes::Find(paper.Code))
        paper.Name = customary->Name.toString();
    else
        paper.Name = u"%1 x %2 mm"_s.arg(paper.WidthMm).arg(paper.HeightMm);
    return paper;
}

int dotsPerInchOf(const Response& told) {
    constexpr int usual = 600, least = 72, most = 4800;
    ipp_attribute_t* standard = find(told, "printer-resolution-default");
    if (!standard)
        return usual;
    int down = 0;
    ipp_res_t unit = IPP_RES_PER_INCH;
    const int across = ippGetResolution(standard, 0, &down, &unit);
    return std::clamp(unit == IPP_RES_PER_CM ? int(std::lround(across * 2.54)) : across, least, most);
}
} // namespace

QString TextOf(const Response& told, const char* attribute) {
    return QString::fromUtf8(ippGetString(find(told, attribute), 0, nullptr));
}

PrinterDescription DescriptionOf(const Response& told, const QString& queue) {
    PrinterDescription description{queue, {}, PaperSizes::A4, dotsPerInchOf(told)};
    const QString standard = TextOf(told, "media-default");
    int ownCode = PaperSizes::FirstOwn;
    ipp_attribute_t* media = find(told, "media-supported");
    for (int i = 0; i < ippGetCount(media); ++i) {
        const std::optional<PrinterPaper> paper = paperOf(told, valueAt(media, i), ownCode);
        if (!paper ||
            std::ranges::find(description.Papers, paper->Code, &PrinterPaper::Code) != description.Papers.end())
            continue;
        ownCode += paper->Code == ownCode;
        description.Papers.append(*paper);
        if (paper->Media == standard)
            description.DefaultPaper = paper->Code;
    }
    // A queue that takes what it is given tells of no papers.
    if (description.Papers.isEmpty())
        description.Papers = PrinterDescription::Pdf().Papers;
    return description;
}

QList<PrinterOption> OptionsOf(const Response& told) {
    QList<PrinterOption> options;
    for (const Property& property : properties) {
        ipp_attribute_t* supported = find(told, QByteArray(property.Name) + "-supported");
        PrinterOption option{QString::fromLatin1(property.Name), property.Text.toString(), {}, {}};
        for (int i = 0; i < ippGetCount(supported); ++i)
            if (const QString value = valueAt(supported, i); !value.isEmpty())
                option.Choices.append({value, captionOf(property, value)});
        if (option.Choices.size() < 2)
            continue;
        ipp_attribute_t* standard = find(told, QByteArray(property.Name) + "-default");
        option.Chosen = standard ? valueAt(standard, 0) : option.Choices.first().Value;
        options.append(option);
    }
    return options;
}

void AddJobOptions(const Request& request, const PrinterPaper& paper, const QMap<QString, QString>& chosen) {
    QMap<QString, QString> told = chosen;
    // The page is drawn for its sheet; scaled to fit the printable area, its lengths would be wrong.
    told[u"print-scaling"_s] = u"none"_s;
    const QString source = told.take(QString::fromLatin1(tray));
    if (source.isEmpty() && !paper.Media.isEmpty())
        told[u"media"_s] = paper.Media;
    if (!source.isEmpty())
        told[u"media-col"_s] = u"{media-size={x-dimension=%1 y-dimension=%2} media-source=%3}"_s
                                   .arg(std::lround(paper.WidthMm * hundredthsPerMm))
                                   .arg(std::lround(paper.HeightMm * hundredthsPerMm))
                                   .arg(source);
    cups_option_t* options = nullptr;
    int count = 0;
    for (auto option = told.cbegin(); option != told.cend(); ++option)
        count = cupsAddOption(option.key().toUtf8().constData(), option.value().toUtf8().constData(), count, &options);
    cupsEncodeOptions2(request.get(), count, options, IPP_TAG_JOB);
    cupsFreeOptions(count, options);
}

QByteArray NameOf(const QString& text) {
    constexpr qsizetype longest = 255;
    QByteArray name = text.toUtf8();
    if (name.size() <= longest)
        return name;
    qsizetype end = longest;
    while (end > 0 && (name[end] & 0xc0) == 0x80)
        --end;
    return name.left(end);
}
} // namespace Cups
