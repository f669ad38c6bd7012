#include "plot/mdGraph.h"

#include "platform/base/MessageStyle.h"

namespace mdGraph {

std::optional<GraphQuestion> GraphRequest(std::int32_t selectedCount, std::int32_t stepCount) {
    constexpr std::int32_t mostWithoutAsking = 100;
    constexpr std::int64_t mostPoints = 100'000'000; // 1.6 GB
    if (selectedCount == 0)
        return GraphQuestion{u"オブジェクトを選択してください。"_s, MessageStyle::Information};
    if (std::int64_t(selectedCount) * stepCount > mostPoints)
        return GraphQuestion{u"グラフの点が多すぎます。\r\n選択するオブジェクトを減らしてください。"_s,
                             MessageStyle::Stop};
    if (selectedCount <= mostWithoutAsking)
        return {};
    return GraphQuestion{u" 現在、"_s + QString::number(selectedCount) +
                             u" 個のオブジェクトが選択されています。\r\n"
                             " 多数のオブジェクトを選択した状態でグラフを作成すると、\r\n"
                             "著しくパフォーマンスが低下する可能性があります。\r\n"
                             " 選択されたオブジェクトでグラフを作成しますか。"_s,
                         MessageStyle::Ask};
}

} // namespace mdGraph
