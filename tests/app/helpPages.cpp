#include "app/helpPages.h"

#include "TestFolder.h"
#include "platform/base/Literals.h"

#include <QDir>
#include <gtest/gtest.h>

TEST(HelpPages, TheChosenFolderThenTheLanguageThenWhatThereIs) {
    const TestFolder folder;
    const QDir root(folder.Path(u"."_s));
    const auto index = [&](const QString& chosen, const QString& language) {
        const QString page = helpPages::Index(chosen, folder.Path(u"bin"_s), language);
        return page.isEmpty() ? page : root.relativeFilePath(page);
    };
    const QString chosen = folder.Path(u"mine/"_s), manual = u"share/velorin/help/"_s;
    EXPECT_EQ(index(chosen, u"ja"_s), QString());
    // The folder that gets a page, and where help is found after that: in Japanese, in English, in French.
    for (const QString& row : {u"en: en en en"_s, u"ja: ja en ja"_s, u"../../../mine: mine mine mine"_s}) {
        const QString made = manual + row.section(u':', 0, 0);
        root.mkpath(made);
        folder.Write("<html>", made + u"/Index.htm"_s);
        const QStringList found = row.section(u": "_s, 1).split(u' ');
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(index(chosen, QStringList{u"ja"_s, u"en"_s, u"fr"_s}[i]),
                      (found[i] == u"mine" ? QString() : manual) + found[i] + u"/Index.htm");
    }
    EXPECT_EQ(index({}, u"ja"_s), manual + u"ja/Index.htm");
}
