#include "console/Output.h"

#include <algorithm>

#include "console/JsonLine.h"
#include "platform/Utf8.h"

namespace vw {

void Output::Line(std::wstring_view text) {
    if (copy_) copy_(text);
    if (style_ != Style::Plain) return;
    EndProgress();
    streams_.Report(text);
    if (streams_.OutputIsConsole()) streams_.Flush();
}

void Output::Json(const JsonLine& line) {
    if (style_ == Style::Json) streams_.Report(FromUtf8(line.Line()));
}

void Output::Error(std::wstring_view path, std::wstring_view reason, int number) {
    std::wstring text = L"error: ";
    if (!path.empty()) text.append(path).append(L": ");
    text.append(reason);
    if (copy_) copy_(text);
    Json(JsonLine("error").Text("path", path).Text("reason", reason).Number("code", number));
    EndProgress();
    streams_.Error(text);
}

bool Output::HasProgress() { return style_ == Style::Plain && streams_.OutputIsConsole(); }

void Output::Progress(std::wstring_view text) {
    if (!HasProgress()) return;
    // A line that fills the last column would wrap, and could not be overwritten.
    std::wstring line(text.substr(0, streams_.ConsoleWidth() - 1));
    const std::size_t units = line.size();
    if (units < shown_) line.append(shown_ - units, L' ');
    streams_.Transient(L"\r" + line);
    shown_ = units;
}

void Output::EndProgress() {
    if (shown_ == 0) return;
    streams_.Transient(L"\r" + std::wstring(shown_, L' ') + L"\r");
    shown_ = 0;
}

void Output::Flush() {
    EndProgress();
    streams_.Flush();
}

}  // namespace vw
