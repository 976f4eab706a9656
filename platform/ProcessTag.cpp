#include "platform/ProcessTag.h"

#include <array>

#include "platform/Handle.h"

namespace vw {

namespace {

std::uint64_t StartTimeOf(HANDLE process) {
    FILETIME created{};
    FILETIME ended{};
    FILETIME kernel{};
    FILETIME user{};
    if (GetProcessTimes(process, &created, &ended, &kernel, &user) == 0) return 0;
    return (static_cast<std::uint64_t>(created.dwHighDateTime) << 32) | created.dwLowDateTime;
}

std::uint32_t ThisComputer() {
    std::array<wchar_t, 256> name{};
    auto length = static_cast<DWORD>(name.size());
    if (GetComputerNameExW(ComputerNameDnsHostname, name.data(), &length) == 0) return 0;
    std::uint32_t hash = 2166136261U;
    for (DWORD i = 0; i < length; ++i) hash = (hash ^ name[i]) * 16777619U;
    return hash;
}

}  // namespace

ProcessTag ThisProcess() {
    return {ThisComputer(), GetCurrentProcessId(), StartTimeOf(GetCurrentProcess())};
}

bool IsGone(const ProcessTag& tag) {
    if (tag.computer != ThisComputer()) return false;
    const KernelHandle process(
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, tag.processId));
    if (!process) return GetLastError() == ERROR_INVALID_PARAMETER;
    if (WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0) return true;
    const std::uint64_t start = StartTimeOf(process.Get());
    return start != 0 && start != tag.processStart;
}

}  // namespace vw
