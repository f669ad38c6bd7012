#include "app/ApplicationSettings.h"
#include "app/mdApplication.h"

#include <climits>
#include <gtest/gtest.h>

TEST(ApplicationSettings, HelpFolder) {
    for (const QString& program :
         {u"/opt/velorin"_s, u"/opt/velorin/"_s, u"/opt/velorin/BIN/"_s, u"/cabin"_s, u"/bin"_s}) {
        ApplicationSettings settings;
        SetDefaults(settings, program, {});
        EXPECT_EQ(settings.Window.Help, program == u"/cabin" ? u"/cabin/Help/"_s
                                        : program == u"/bin" ? u"/Help/"_s
                                                             : u"/opt/velorin/Help/"_s);
    }
}

TEST(mdApplication, AutoNumberChoosesItsForm) {
    using mdApplication::FormatAutoNumber;
    // The number, its digits, whether more may follow, and the text.
    const QString cases =
        u"0 3 0 0.000; 0 0 1 0.0; 0.01 3 0 0.010; 0.001 3 0 1.000E-3; 9999.5 3 0 9999.500; 10000 3 0 1.000E4;"
        "-12345.678 3 0 -1.235E4; 1.23456 3 1 1.23456; 1.5 3 1 1.500; 2.25 0 0 2.3; 5 -2 0 5.00E0"_s;
    for (const QString& line : cases.split(u';')) {
        const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
        EXPECT_EQ(FormatAutoNumber(words[0].toDouble(), words[1].toInt(), words[2] == u"1"), words[3]);
    }
    EXPECT_TRUE(FormatAutoNumber(1, INT_MIN, false).startsWith(u"1.000"));
}

TEST(mdApplication, PathParts) {
    const QString paths[] = {u"/a.b/c.tar.gz"_s, u"C:\\x\\name"_s, u".hidden"_s};
    const QString expected[] = {u"/a.b/|c|tar.gz|c.tar.gz|/a.b/c|"_s, u"C:\\x\\|name||name|C:\\x\\name|"_s,
                                u"||hidden|.hidden||"_s};
    for (int i = 0; i < 3; ++i)
        for (int part = 0; part < 6; ++part)
            EXPECT_EQ(mdApplication::PathPart(paths[i], part), expected[i].section(u'|', part, part));
}
