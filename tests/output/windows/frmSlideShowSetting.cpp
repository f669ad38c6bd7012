#include "output/windows/frmSlideShowSetting.h"

#include "ShownDialog.h"

#include <QLabel>
#include <QSlider>

namespace {

TEST(SlideShowSetting, RowsCarryTheirFieldsOnOkAndNothingOtherwise) {
    SlideShowSettings settings{.Interval = 7777, .ContourDivide = 12};
    for (const auto& [button, text, interval, bands] : {std::tuple(u"Command1_1"_s, u"9"_s, 7777, 12),
                                                        {u"Command1_0"_s, u"1"_s, 5000, 2},
                                                        {u"Command1_0"_s, u"abc"_s, 5000, 2},
                                                        {u"Command1_0"_s, u"31"_s, 4900, 31}}) {
        Shown<frmSlideShowSetting> form(settings);
        EXPECT_EQ(form.Find<QLabel>(u"lblSlideShow"_s).text(), u"5.00 秒"_s) << "held within the slider's range";
        if (bands == 31)
            QTest::keyClick(&form.Find<QSlider>(u"sldSlideShow"_s), Qt::Key_Left);
        form.Type(u"txtDivide"_s, text);
        form.Click(button);
        EXPECT_TRUE(form.HasEnded(button == u"Command1_0"_s));
        EXPECT_EQ(settings, (SlideShowSettings{.Interval = interval, .ContourDivide = bands}));
    }
    Shown<frmSlideShowSetting> form(settings);
    expectRoundTrip(form.Bindings(), {}, {1230, false, true, false, 7, false, false, true, false, true});
    EXPECT_FALSE(form.Find<QLineEdit>(u"txtDivide"_s).isEnabled());
}

} // namespace
