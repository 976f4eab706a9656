#include "app/DriveChoices.h"

#include <chrono>
#include <future>
#include <thread>

#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

constexpr std::uint64_t kLeastFreeBytes = 1073741824;

bool HasRoom(FileSystem& files, const std::wstring& drive) {
    try {
        return files.FreeSpace(drive + L"\\") > kLeastFreeBytes;
    } catch (const RuntimeError&) {
        return false;  // not ready
    }
}

// The system keeps the letter of a drive whose server went away, and asking for it takes long.
constexpr std::chrono::seconds kPatience{1};

/// Whether a drive has room, as soon as that is known.
struct Answer {
    std::wstring drive;
    std::future<bool> hasRoom;
};

Answer Ask(FileSystem& files, const std::wstring& drive) {
    std::packaged_task<bool()> question([&files, drive] { return HasRoom(files, drive); });
    Answer answer{drive, question.get_future()};
    if (files.DriveTypeOf(drive + L"\\") == DriveType::Network) {
        std::thread(std::move(question)).detach();
    } else {
        question();
    }
    return answer;
}

}  // namespace

std::vector<std::wstring> DriveChoices(FileSystem& files) {
    std::vector<Answer> answers;
    const DWORD present = GetLogicalDrives();
    for (wchar_t letter = L'D'; letter <= L'Z'; ++letter) {
        const bool connected = (present >> (letter - L'A') & 1U) != 0;
        if (connected) answers.push_back(Ask(files, {letter, L':'}));
    }
    std::vector<std::wstring> drives{L"A:", L"C:"};
    const auto end = std::chrono::steady_clock::now() + kPatience;
    for (Answer& answer : answers) {
        const bool known = answer.hasRoom.wait_until(end) == std::future_status::ready;
        if (known && answer.hasRoom.get()) drives.push_back(answer.drive);
    }
    return drives;
}

}  // namespace vw
