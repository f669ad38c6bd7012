#include "app/ApplicationSettings.h"
#include "app/mdApplication.h"
#include "platform/Dialogs.h"

#include <climits>
#include <gtest/gtest.h>

TEST(ApplicationSettings, HelpFolder) {
    const struct {
        const char16_t* Program;
        const char16_t* Help;
    } cases[] = {{u"/opt/velorin", u"/opt/velorin/Help/"},     {u"/opt/velorin/", u"/opt/velorin/Help/"},
                 {u"/opt/velorin/bin", u"/opt/velorin/Help/"}, {u"/opt/velorin/BIN/", u"/opt/velorin/Help/"},
                 {u"/opt/cabin", u"/opt/cabin/Help/"},         {u"/bin", u"/Help/"}};
    for (const auto& c : cases) {
        ApplicationSettings settings;
        SetDefaults(settings, QString::fromUtf16(c.Program), {});
        EXPECT_EQ(settings.Window.Help, QString::fromUtf16(c.Help));
    }
}

TEST(mdApplication, AutoNumberChoosesItsForm) {
    using mdApplication::FormatAutoNumber;
    const struct {
        double Value;
        int Digits;
        bool Extra;
        const char16_t* Expected;
    } cases[] = {{0, 3, false, u"0.000"},
                 {0, 0, true, u"0.0"},
                 {0.01, 3, false, u"0.010"},
                 {0.001, 3, false, u"1.000E-3"},
                 {9999.5, 3, false, u"9999.500"},
                 {10000, 3, false, u"1.000E4"},
                 {-12345.678, 3, false, u"-1.235E4"},
                 {1.23456, 3, true, u"1.23456"},
                 {1.5, 3, true, u"1.500"},
                 {2.25, 0, false, u"2.3"},
                 {5, -2, false, u"5.00E0"}};
    for (const auto& c : cases)
        EXPECT_EQ(FormatAutoNumber(c.Value, c.Digits, c.Extra), QString::fromUtf16(c.Expected));
    EXPECT_TRUE(FormatAutoNumber(1, INT_MIN, false).startsWith(u"1.000"));
}

TEST(mdApplication, PathParts) {
    const struct {
        const char16_t* Path;
        std::array<const char16_t*, 6> Parts;
    } cases[] = {{u"/a.b/c.tar.gz", {u"/a.b/", u"c", u"tar.gz", u"c.tar.gz", u"/a.b/c", u""}},
                 {u"C:\\x\\name", {u"C:\\x\\", u"name", u"", u"name", u"C:\\x\\name", u""}},
                 {u".hidden", {u"", u"", u"hidden", u".hidden", u"", u""}}};
    for (const auto& c : cases)
        for (int part = 0; part < 6; ++part)
            EXPECT_EQ(mdApplication::PathPart(QString::fromUtf16(c.Path), part),
                      QString::fromUtf16(c.Parts[std::size_t(part)]));
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
