#include "tests/engine/LeftOvers.h"

#include <gtest/gtest.h>

#include "engine/CommentLine.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/Utf8.h"
#include "platform/WindowsHeader.h"

namespace vw::test {

namespace {

std::uint64_t StartOf(HANDLE process) {
    FILETIME created{};
    FILETIME other{};
    if (GetProcessTimes(process, &created, &other, &other, &other) == 0) {
        ADD_FAILURE() << "a process without a start time";
    }
    return (static_cast<std::uint64_t>(created.dwHighDateTime) << 32) | created.dwLowDateTime;
}

constexpr int kMostAttempts = 10;
constexpr DWORD kPauseMilliseconds = 200;

// The working name at the beginning of an entry's name, and what follows it.
std::optional<WorkingName> WorkingNameOf(std::wstring name) {
    if (name.ends_with(kCommentExtension)) name.resize(name.size() - kCommentExtension.size());
    return ParseWorkingName(name);
}

}  // namespace

LivingProcess::LivingProcess() {
    wchar_t program[MAX_PATH] = {};
    GetSystemDirectoryW(program, MAX_PATH);
    std::wstring command = std::wstring(program) + L"\\cmd.exe";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    // It never gets to its first instruction. A busy machine may fail to start it at first.
    const auto start = [&] {
        return CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE,
                              CREATE_SUSPENDED | CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                              &process) != 0;
    };
    for (int attempt = 1; !start(); ++attempt) {
        if (attempt == kMostAttempts) {
            ADD_FAILURE() << "no process could be started, error " << GetLastError();
            return;
        }
        Sleep(kPauseMilliseconds);
    }
    const KernelHandle thread(process.hThread);
    process_.Reset(process.hProcess);
    tag_ = {ThisProcess().computer, process.dwProcessId, StartOf(process.hProcess)};
}

LivingProcess::~LivingProcess() {
    TerminateProcess(process_.Get(), 0);
    WaitForSingleObject(process_.Get(), 10'000);
}

ProcessTag DeadProcess() {
    const LivingProcess short_;
    return short_.Tag();
}

ProcessTag ProcessElsewhere() {
    ProcessTag tag = DeadProcess();
    ++tag.computer;
    return tag;
}

std::wstring LeftOverName(const EngineFixture& world, WorkingState state, std::wstring_view item,
                          const ProcessTag& owner, Date date) {
    const std::wstring path = world.Path(item);
    const std::wstring copy = CFilePackageName(path, 1, 0, world.Store());
    const WorkingName name{state, NameKey(path), NameKey(copy), date, owner};
    return FormatWorkingName(name, MFileDosShell::CFileFirstName(path));
}

void UpdateControls(const EngineFixture& world, const ProcessTag& owner) {
    for (const std::wstring& entry : LeftOvers(world)) {
        auto name = WorkingNameOf(entry);
        if (name->owner != ThisProcess()) continue;
        name->owner = owner;
        const bool comment = entry.ends_with(kCommentExtension);
        std::wstring renamed = FormatWorkingName(*name, L"x");
        if (comment) renamed += kCommentExtension;
        if (MoveFileW(world.Store(entry).c_str(), world.Store(renamed).c_str()) == 0) {
            ADD_FAILURE() << "could not hand over " << ToUtf8(entry);
        }
    }
}

Lines LeftOvers(const EngineFixture& world) {
    Lines names;
    for (const auto& [path, node] : ReadTree(world.Store())) {
        if (path.find(L'\\') == std::wstring::npos && WorkingNameOf(path)) names.push_back(path);
    }
    return names;
}

}  // namespace vw::test
