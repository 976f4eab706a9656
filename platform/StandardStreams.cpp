#include "platform/StandardStreams.h"

namespace vw {

namespace {

constexpr std::size_t kHeldUnits = 16 * 1024;

std::string Utf8(std::wstring_view text) {
    const int units = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), length, nullptr, nullptr);
    return bytes;
}

}  // namespace

StandardStreams::StandardStreams() {
    output_ = Find(STD_OUTPUT_HANDLE);
    error_ = Find(STD_ERROR_HANDLE);
    // A window program has no streams of its own when it is started from a console.
    if (output_.handle == nullptr && error_.handle == nullptr &&
        AttachConsole(ATTACH_PARENT_PROCESS) != 0) {
        output_ = Find(STD_OUTPUT_HANDLE);
        error_ = Find(STD_ERROR_HANDLE);
    }
}

StandardStreams::~StandardStreams() { Flush(); }

void StandardStreams::Report(std::wstring_view line) {
    if (output_.handle == nullptr) return;
    held_.append(line).append(L"\r\n");
    if (output_.isConsole || held_.size() >= kHeldUnits) Flush();
}

void StandardStreams::Error(std::wstring_view text) {
    Flush();
    Write(error_, std::wstring(text) + L"\r\n");
}

void StandardStreams::Flush() {
    Write(output_, held_);
    held_.clear();
}

bool StandardStreams::ShareConsole() const { return output_.isConsole && error_.isConsole; }

StandardStreams::Stream StandardStreams::Find(DWORD which) {
    Stream stream;
    const HANDLE handle = GetStdHandle(which);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return stream;
    if (GetFileType(handle) == FILE_TYPE_UNKNOWN && GetLastError() != NO_ERROR) return stream;
    DWORD mode = 0;
    stream.handle = handle;
    stream.isConsole = GetConsoleMode(handle, &mode) != 0;
    return stream;
}

// A reader that went away is no reason to stop a backup, so failures to write are passed over.
void StandardStreams::Write(const Stream& stream, std::wstring_view text) {
    if (stream.handle == nullptr || text.empty()) return;
    DWORD written = 0;
    if (stream.isConsole) {
        WriteConsoleW(stream.handle, text.data(), static_cast<DWORD>(text.size()), &written,
                      nullptr);
        return;
    }
    const std::string bytes = Utf8(text);
    WriteFile(stream.handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace vw
