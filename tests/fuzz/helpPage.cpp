// Fuzz target: any bytes as a page of the help, its title and excerpt, and a word in it by the plain way.
#include "Fuzz.h"
#include "extensions/helpText.h"
#include "platform/base/Literals.h"

namespace {

/// The rest of the page is copied at each hit.
bool plainlyHasWord(const QString& word, QString page) {
    for (qsizetype hit = page.indexOf(word); hit >= 0; hit = page.indexOf(word)) {
        const QString before = page.first(hit + word.size());
        if (before.lastIndexOf(u'>') > before.lastIndexOf(u'<'))
            return true;
        page = page.sliced(hit + 1);
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QString page = helpText::Decode({data, qsizetype(size)});
    const QString title = helpText::ReadHelpTitle(page), excerpt = helpText::MakeExcerpt(page, 128);
    require(page.contains(title) && title == title.trimmed(), "a title out of the page");
    require(excerpt.startsWith(u"<抜粋>\r\n") && excerpt.size() <= page.size() + 6,
            "an excerpt no longer than the page");
    const QString stripped = helpText::StripEntities(page);
    require(helpText::StripEntities(stripped) == stripped, "no entity is left");
    const qsizetype length = page.size();
    helpText::MakeUpper(page);
    require(page.size() == length, "as long as before");
    const QString word = page.mid(page.size() / 2, 2);
    if (!word.isEmpty())
        require(helpText::FileHasWord(word, page) == plainlyHasWord(word, page), "the word as plainly found");
    return 0;
}
