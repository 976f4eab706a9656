#include "fsutil/Sort.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/TextCase.h"

namespace vw::MFileDosShell {

void Sort(std::vector<std::wstring>& texts, MessagePump& pump) {
    // Texts are turned to upper case once each and not at each of the many comparisons. The texts
    // themselves move only at the end, so that nobody who looks while messages are processed finds
    // half of them moved away.
    struct Keyed {
        std::wstring key;
        std::size_t index;
    };
    std::vector<Keyed> order;
    order.reserve(texts.size());
    for (const std::wstring& text : texts) {
        order.push_back({UpperCase(text), order.size()});
        pump.ProcessMessagesIfDue();
    }
    constexpr unsigned kComparisonsPerYield = 64;
    unsigned comparisons = 0;
    std::sort(order.begin(), order.end(), [&](const Keyed& left, const Keyed& right) {
        if (++comparisons % kComparisonsPerYield == 0) pump.ProcessMessagesIfDue();
        const int compared = left.key.compare(right.key);
        return compared != 0 ? compared < 0 : left.index < right.index;
    });

    std::vector<std::wstring> sorted;
    sorted.reserve(texts.size());
    for (const Keyed& keyed : order) sorted.push_back(std::move(texts[keyed.index]));
    texts = std::move(sorted);
}

}  // namespace vw::MFileDosShell
