#include "app/ApplicationSettings.h"
#include "app/mdApplication.h"
#include "platform/Dialogs.h"

#include <climits>
#include <gtest/gtest.h>

TEST(ApplicationSettings, HelpFolder) {
    for (const auto& [program, help] : {std::pair{u"/opt/velorin"_qs, u"/opt/velorin/Help/"_qs},
                                        {u"/opt/velorin/"_qs, u"/opt/velorin/Help/"_qs},
                                        {u"/opt/velorin/BIN/"_qs, u"/opt/velorin/Help/"_qs},
                                        {u"/opt/cabin"_qs, u"/opt/cabin/Help/"_qs},
                                        {u"/bin"_qs, u"/Help/"_qs}}) {
        ApplicationSettings settings;
        SetDefaults(settings, program, {});
        EXPECT_EQ(settings.Window.Help, help);
    }
}

TEST(mdApplication, AutoNumberChoosesItsForm) {
    using mdApplication::FormatAutoNumber;
    const struct {
        double value;
        int digits;
        bool extra;
        QString expected;
    } cases[] = {{0, 3, false, u"0.000"_qs},
                 {0, 0, true, u"0.0"_qs},
                 {0.01, 3, false, u"0.010"_qs},
                 {0.001, 3, false, u"1.000E-3"_qs},
                 {9999.5, 3, false, u"9999.500"_qs},
                 {10000, 3, false, u"1.000E4"_qs},
                 {-12345.678, 3, false, u"-1.235E4"_qs},
                 {1.23456, 3, true, u"1.23456"_qs},
                 {1.5, 3, true, u"1.500"_qs},
                 {2.25, 0, false, u"2.3"_qs},
                 {5, -2, false, u"5.00E0"_qs}};
    for (const auto& c : cases)
        EXPECT_EQ(FormatAutoNumber(c.value, c.digits, c.extra), c.expected);
    EXPECT_TRUE(FormatAutoNumber(1, INT_MIN, false).startsWith(u"1.000"));
}

TEST(mdApplication, PathParts) {
    const std::pair<QString, QString> cases[] = {{u"/a.b/c.tar.gz"_qs, u"/a.b/|c|tar.gz|c.tar.gz|/a.b/c|"_qs},
                                                 {u"C:\\x\\name"_qs, u"C:\\x\\|name||name|C:\\x\\name|"_qs},
                                                 {u".hidden"_qs, u"||hidden|.hidden||"_qs}};
    for (const auto& [path, parts] : cases)
        for (int part = 0; part < 6; ++part)
            EXPECT_EQ(mdApplication::PathPart(path, part), parts.section(u'|', part, part));
}

TEST(mdApplication, WindowsMakeWayForAMessage) {
    QString order;
    mdApplication::MessageBoxHook = [&](bool lower) {
        order += (lower ? u"lower " : u"raise ") + QString::number(Dialogs::Testing::Asked().size()) + u' ';
    };
    Dialogs::Testing::Start();
    Dialogs::Testing::QueueAnswer(Dialogs::Answer::No);
    EXPECT_EQ(mdApplication::ShowMessage(u"保存しますか?"_qs, Dialogs::Style::AskNoDefault), 7);
    EXPECT_EQ(order, u"lower 0 raise 1 "_qs);
    EXPECT_EQ(Dialogs::Testing::Asked().value(0).Title, u"Velorin"_qs);
    Dialogs::Testing::Stop();
    mdApplication::MessageBoxHook = nullptr;
}
