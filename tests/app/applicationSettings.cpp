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
    const std::tuple<double, int, bool, QString> cases[] = {{0, 3, false, u"0.000"_s},
                                                            {0, 0, true, u"0.0"_s},
                                                            {0.01, 3, false, u"0.010"_s},
                                                            {0.001, 3, false, u"1.000E-3"_s},
                                                            {9999.5, 3, false, u"9999.500"_s},
                                                            {10000, 3, false, u"1.000E4"_s},
                                                            {-12345.678, 3, false, u"-1.235E4"_s},
                                                            {1.23456, 3, true, u"1.23456"_s},
                                                            {1.5, 3, true, u"1.500"_s},
                                                            {2.25, 0, false, u"2.3"_s},
                                                            {5, -2, false, u"5.00E0"_s}};
    for (const auto& [value, digits, extra, expected] : cases)
        EXPECT_EQ(FormatAutoNumber(value, digits, extra), expected);
    EXPECT_TRUE(FormatAutoNumber(1, INT_MIN, false).startsWith(u"1.000"));
}

TEST(mdApplication, PathParts) {
    const std::pair<QString, QString> cases[] = {{u"/a.b/c.tar.gz"_s, u"/a.b/|c|tar.gz|c.tar.gz|/a.b/c|"_s},
                                                 {u"C:\\x\\name"_s, u"C:\\x\\|name||name|C:\\x\\name|"_s},
                                                 {u".hidden"_s, u"||hidden|.hidden||"_s}};
    for (const auto& [path, parts] : cases)
        for (int part = 0; part < 6; ++part)
            EXPECT_EQ(mdApplication::PathPart(path, part), parts.section(u'|', part, part));
}
