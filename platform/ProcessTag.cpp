#include "platform/ProcessTag.h"

#include <array>
#include <string>

#include "platform/Handle.h"
#include "platform/Hash.h"

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

std::wstring ComputerName() {
    std::array<wchar_t, 256> name{};
    auto length = static_cast<DWORD>(name.size());
    if (GetComputerNameExW(ComputerNameDnsHostname, name.data(), &length) == 0) return {};
    return {name.data(), length};
}

// Made when Windows is installed: it distinguishes two computers of one name.
std::wstring InstallationId() {
    std::array<wchar_t, 64> id{};
    DWORD bytes = sizeof id;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Cryptography", L"MachineGuid",
                     RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr, id.data(),
                     &bytes) != ERROR_SUCCESS) {
        return {};
    }
    return id.data();
}

// The computer of a tag, as this version writes it and as earlier ones did.
struct Computer {
    std::uint32_t tag = 0;
    std::uint32_t formerTag = 0;
};

const Computer& ThisComputer() {
    static const Computer computer{ComputerTag(ComputerName(), InstallationId()),
                                   ComputerTag(ComputerName(), {})};
    return computer;
}

}  // namespace

std::uint32_t ComputerTag(std::wstring_view name, std::wstring_view installation) {
    Fnv32 hash;
    for (const std::wstring_view part : {name, installation}) {
        for (const wchar_t unit : part) hash.Add(unit);
    }
    return hash.Value();
}

ProcessTag ThisProcess() {
    return {ThisComputer().tag, GetCurrentProcessId(), StartTimeOf(GetCurrentProcess())};
}

bool IsGone(const ProcessTag& tag) {
    const Computer& here = ThisComputer();
    if (tag.computer != here.tag && tag.computer != here.formerTag) return false;
    const KernelHandle process(
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, tag.processId));
    if (!process) return GetLastError() == ERROR_INVALID_PARAMETER;
    if (WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0) return true;
    const std::uint64_t start = StartTimeOf(process.Get());
    return start != 0 && start != tag.processStart;
}

}  // namespace vw
