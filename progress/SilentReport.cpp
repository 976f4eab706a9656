#include "progress/SilentReport.h"

#include <string>

#include "platform/StandardStreams.h"

namespace vw {

void SilentReport::Msg(std::wstring_view title, std::wstring_view message) {
    std::wstring line;
    line.reserve(title.size() + message.size() + 5);
    line.append(title).append(L": ").append(message).append(L" - ");
    streams_.Report(line);
}

void SilentReport::Report(std::wstring_view text, bool) { streams_.Report(text); }

void SilentReport::Failure(std::wstring_view text) {
    if (!streams_.AreOne()) streams_.Error(text);
}

void SilentReport::Flush() { streams_.Flush(); }

}  // namespace vw
