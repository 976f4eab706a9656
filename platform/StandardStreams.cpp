#include "platform/StandardStreams.h"

#include <utility>

#include "platform/ParentConsole.h"

namespace vw {

namespace {

constexpr std::size_t kHeldUnits = std::size_t{16} * 1024;
constexpr std::uint64_t kConsoleMilliseconds = 1000;

// Unlike ToUtf8 it replaces single surrogates: what other programs read is valid UTF-8.
std::string ToValidUtf8(std::wstring_view text) {
    const int units = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), length, nullptr, nullptr);
    return bytes;
}

// A command such as "program >log 2>&1" hands over one file under two handles.
bool IsSameFile(HANDLE first, HANDLE second) noexcept {
    if (first == second) return true;
    using CompareFunction = BOOL(WINAPI*)(HANDLE, HANDLE);
    const HMODULE library = GetModuleHandleW(L"kernelbase.dll");
    const auto compare = library == nullptr
                             ? nullptr
                             : reinterpret_cast<CompareFunction>(reinterpret_cast<void*>(
                                   GetProcAddress(library, "CompareObjectHandles")));
    if (compare != nullptr && compare(first, second) != 0) return true;
    BY_HANDLE_FILE_INFORMATION left{};
    BY_HANDLE_FILE_INFORMATION right{};
    return GetFileType(first) == FILE_TYPE_DISK && GetFileType(second) == FILE_TYPE_DISK &&
           GetFileInformationByHandle(first, &left) != 0 &&
           GetFileInformationByHandle(second, &right) != 0 &&
           left.dwVolumeSerialNumber == right.dwVolumeSerialNumber &&
           left.nFileIndexHigh == right.nFileIndexHigh && left.nFileIndexLow == right.nFileIndexLow;
}

}  // namespace

// A window program that was started from a console has no streams of its own.
void StandardStreams::Open() {
    if (std::exchange(open_, true)) return;
    output_ = Find(STD_OUTPUT_HANDLE);
    error_ = Find(STD_ERROR_HANDLE);
    if (!output_.Leads() && !error_.Leads()) {
        output_.isConsole = error_.isConsole = ParentConsole::Exists();
    }
}

StandardStreams::~StandardStreams() { Flush(); }

void StandardStreams::Report(std::wstring_view line) {
    Open();
    if (!output_.Leads()) return;
    held_.append(line).append(L"\r\n");
    if (IsDue()) Flush();
}

bool StandardStreams::IsDue() const {
    return held_.size() >= kHeldUnits ||
           (output_.isConsole && GetTickCount64() - lastWritten_ >= kConsoleMilliseconds);
}

void StandardStreams::Error(std::wstring_view text) {
    Open();
    Flush();
    Write(error_, std::wstring(text) + L"\r\n");
}

void StandardStreams::Flush() {
    Write(output_, held_);
    held_.clear();
    lastWritten_ = GetTickCount64();
}

void StandardStreams::Transient(std::wstring_view text) {
    Open();
    Flush();
    Write(output_, text);
}

bool StandardStreams::OutputIsConsole() {
    Open();
    return output_.isConsole && output_.handle != nullptr;
}

std::size_t StandardStreams::ConsoleWidth() {
    constexpr std::size_t kUsual = 80;
    Open();
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    if (GetConsoleScreenBufferInfo(output_.handle, &screen) == 0) return kUsual;
    const int columns = screen.srWindow.Right - screen.srWindow.Left + 1;
    return columns > 1 ? static_cast<std::size_t>(columns) : kUsual;
}

bool StandardStreams::AreOne() {
    Open();
    if (output_.isConsole || error_.isConsole) return output_.isConsole && error_.isConsole;
    return output_.Leads() && error_.Leads() && IsSameFile(output_.handle, error_.handle);
}

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
    if (!stream.Leads() || text.empty()) return;
    DWORD written = 0;
    if (stream.handle == nullptr) {
        ParentConsole::Write(text);
    } else if (stream.isConsole) {
        WriteConsoleW(stream.handle, text.data(), static_cast<DWORD>(text.size()), &written,
                      nullptr);
    } else {
        const std::string bytes = ToValidUtf8(text);
        WriteFile(stream.handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }
}

}  // namespace vw
