#include "platform/device/PictureNote.h"

#include "platform/device/SvgAttributes.h"

#include <QtEndian>

namespace {

/// Behind the keyword: not compressed, of no language and no translation.
constexpr QByteArrayView pngKeyword("velorin-batch\0\0\0\0\0", 18);
constexpr QByteArrayView pngSignature("\x89PNG\r\n\x1a\n", 8);
constexpr QByteArrayView elementStart("<velorin:command xmlns:velorin=\"urn:velorin\">");
constexpr QByteArrayView elementEnd("</velorin:command>");

/// Looks at the chunks before the pixels; lengths that the bytes don't have end it.
std::optional<QString> inPng(QByteArrayView bytes) {
    constexpr qsizetype lengthAndType = 8, check = 4;
    qsizetype at = pngSignature.size();
    while (bytes.size() - at >= lengthAndType) {
        const qsizetype length = qFromBigEndian<quint32>(bytes.data() + at);
        const QByteArrayView type = bytes.sliced(at + check, check);
        at += lengthAndType;
        if (type == QByteArrayView("IDAT") || length > bytes.size() - at - check)
            return {};
        const QByteArrayView data = bytes.sliced(at, length);
        if (type == QByteArrayView("iTXt") && data.startsWith(pngKeyword))
            return QString::fromUtf8(data.sliced(pngKeyword.size()));
        at += length + check;
    }
    return {};
}

} // namespace

QByteArray PictureNote::PngText(const QString& note) {
    return pngKeyword.toByteArray() + note.toUtf8();
}

QByteArray PictureNote::Element(const QString& note) {
    return elementStart.toByteArray() + SvgAttributes::Escaped(note) + elementEnd.toByteArray();
}

QByteArray PictureNote::Xmp(const QString& note) {
    return "<?xpacket begin=\"\xef\xbb\xbf\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
           "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
           "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
           "<rdf:Description rdf:about=\"\">" +
           Element(note) + "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>\n";
}

std::optional<QString> PictureNote::In(const QByteArray& bytes) {
    if (bytes.startsWith(pngSignature))
        return inPng(bytes);
    const qsizetype start = bytes.indexOf(elementStart), end = bytes.indexOf(elementEnd, start);
    if (start < 0 || end < 0)
        return {};
    const qsizetype text = start + elementStart.size();
    return QString::fromUtf8(bytes.sliced(text, end - text))
        .replace(u"&lt;"_s, u"<"_s)
        .replace(u"&gt;"_s, u">"_s)
        .replace(u"&quot;"_s, u"\""_s)
        .replace(u"&amp;"_s, u"&"_s);
}
