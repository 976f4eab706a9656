#include "progress/SilentReport.h"

#include <string>

#include "platform/StandardStreams.h"

namespace vw {

void SilentReport::Msg(std::wstring_view title, std::wstring_view message) {
    streams_.Report(std::wstring(title).append(L": ").append(message).append(L" - "));
}

void SilentReport::Report(std::wstring_view text, bool) { streams_.Report(text); }

void SilentReport::Failure(std::wstring_view text) {
    if (!streams_.AreOne()) streams_.Error(text);
}

void SilentReport::Flush() { streams_.Flush(); }

}  // namespace vw
