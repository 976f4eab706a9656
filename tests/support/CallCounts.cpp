#include "tests/support/CallCounts.h"

namespace vw::test {

CallCounts::CallCounts(const std::vector<FileOperation>& operations) {
    for (const FileOperation& operation : operations) ++counts_[operation.call];
}

std::string CallCounts::Text() const {
    std::string text;
    for (const auto& [call, count] : counts_) {
        if (count == 0) continue;
        if (!text.empty()) text += ", ";
        text += NameOf(call);
        text += " " + std::to_string(count);
    }
    return text;
}

CallCounts operator-(CallCounts more, const CallCounts& fewer) {
    for (const auto& [call, count] : fewer.counts_) more.counts_[call] -= count;
    return more;
}

}  // namespace vw::test
