#include "app/helpPages.h"

#include "TestFolder.h"
#include "platform/base/Literals.h"

#include <QDir>
#include <gtest/gtest.h>

TEST(HelpPages, TheChosenFolderThenTheLanguageThenWhatThereIs) {
    const TestFolder folder;
    const auto index = [&](const QString& chosen, const QString& language) {
        const QString page = helpPages::Index(chosen, folder.Path(u"bin"_s), language);
        return page.isEmpty() ? page : QDir(folder.Path(u"."_s)).relativeFilePath(page);
    };
    const QString mine = folder.Path(u"mine/"_s), manual = u"share/velorin/help/"_s;
    for (const QString& name : {u"mine"_s, manual + u"ja"_s, manual + u"en"_s, manual + u"fr"_s})
        QDir(folder.Path(u"."_s)).mkpath(name);
    EXPECT_EQ(index(mine, u"ja"_s), QString());
    // Each page in turn, and what is found then in no folder of the user's, in one, and in English and French.
    const std::array<QString, 4> rows[] = {
        {manual + u"en/index.html"_s, manual + u"en/index.html"_s, manual + u"en/index.html"_s,
         manual + u"en/index.html"_s},
        {manual + u"ja/index.html"_s, manual + u"ja/index.html"_s, manual + u"en/index.html"_s,
         manual + u"ja/index.html"_s},
        {u"mine/INDEX.HTM"_s, u"mine/INDEX.HTM"_s, u"mine/INDEX.HTM"_s, u"mine/INDEX.HTM"_s}};
    for (const auto& [page, inJapanese, inEnglish, inFrench] : rows) {
        folder.Write("<html>", page);
        EXPECT_EQ(index(mine, u"ja"_s), inJapanese);
        EXPECT_EQ(index(mine, u"en"_s), inEnglish);
        EXPECT_EQ(index(mine, u"fr"_s), inFrench);
    }
    EXPECT_EQ(index({}, u"ja"_s), manual + u"ja/index.html"_s);
}
