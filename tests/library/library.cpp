#include "TestFolder.h"

#include "LittleMemory.h"
#include "library/library.h"
#include "platform/base/Literals.h"

#include <gtest/gtest.h>

TEST(Library, AnswersWithNumbersWhateverIsThrown) {
    using library::guarded;
    EXPECT_EQ(guarded([] {}), VELORIN_GOOD);
    EXPECT_EQ(guarded([] { throw library::Failure{VELORIN_WRONG, u"理由"_s}; }), VELORIN_WRONG);
    EXPECT_EQ(QString::fromUtf8(velorin_error()), u"理由"_s);
    EXPECT_EQ(guarded([] { throw std::bad_alloc(); }), VELORIN_NO_MEMORY);
    EXPECT_EQ(guarded([] { throw std::runtime_error("why"); }), VELORIN_FAILED);
    EXPECT_STREQ(velorin_error(), "why");
    EXPECT_EQ(guarded([] { throw 1; }), VELORIN_FAILED);
}

TEST(Library, RefusesWhatIsNotThere) {
    velorin_result* result = nullptr;
    EXPECT_EQ(velorin_open("none.vrf", nullptr, nullptr, &result), VELORIN_UNREADABLE);
    const auto stop = [](void*, int64_t, int64_t) { return 0; };
    const TestFolder folder;
    const QByteArray demo = VELORIN_SOURCE_DIR "/demo/plate.vrf";
    EXPECT_EQ(velorin_open(folder.Write("VRF10", u"a.vrf"_s).toUtf8(), nullptr, nullptr, &result), VELORIN_OTHER);
    EXPECT_EQ(result, nullptr);
    velorin_close(nullptr);
    ASSERT_EQ(velorin_open(demo, nullptr, nullptr, &result), VELORIN_GOOD);
    const std::int32_t items = velorin_item_count(result), steps = velorin_step_count(result);
    for (const std::int32_t item : {-1, items}) {
        EXPECT_STREQ(velorin_item_name(result, item), "");
        EXPECT_EQ(velorin_item_type(result, item) + velorin_item_flags(result, item), 0);
        EXPECT_EQ(velorin_values(result, 0, item, nullptr), VELORIN_WRONG);
        EXPECT_EQ(velorin_history(result, item, 0, nullptr, nullptr, nullptr, nullptr), VELORIN_WRONG);
    }
    for (const std::int32_t step : {-1, steps}) {
        EXPECT_STREQ(velorin_step_name(result, step), "");
        EXPECT_EQ(velorin_step_time(result, step), 0);
        EXPECT_EQ(velorin_types(result, step, nullptr), VELORIN_WRONG);
    }
    const std::int32_t node = velorin_node_count(result);
    EXPECT_EQ(velorin_history(result, 0, 1, &node, nullptr, nullptr, nullptr), VELORIN_WRONG);
    const std::int32_t first = 0;
    float value = 0;
    EXPECT_EQ(velorin_history(result, 0, 1, &first, stop, nullptr, &value), VELORIN_STOPPED);
    velorin_picture picture{};
    EXPECT_EQ(velorin_render(result, &picture, "a.png"), VELORIN_WRONG);
    velorin_content content{};
    EXPECT_EQ(velorin_write("a.vrf", &content), VELORIN_WRONG);
    velorin_close(result);
}
