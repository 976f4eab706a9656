#include "ui/ProgramVersion.h"

#include <cstddef>
#include <string>
#include <vector>

#include "platform/WindowsHeader.h"

namespace vw {

namespace {

std::wstring OwnPath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace

ProgramVersion OwnVersion() {
    const std::wstring path = OwnPath();
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &ignored);
    std::vector<std::byte> record(size);
    void* found = nullptr;
    UINT length = 0;
    if (size == 0 || GetFileVersionInfoW(path.c_str(), 0, size, record.data()) == 0 ||
        VerQueryValueW(record.data(), L"\\", &found, &length) == 0 ||
        length < sizeof(VS_FIXEDFILEINFO)) {
        return {};
    }
    const auto* numbers = static_cast<const VS_FIXEDFILEINFO*>(found);
    return {HIWORD(numbers->dwFileVersionMS), LOWORD(numbers->dwFileVersionMS),
            HIWORD(numbers->dwFileVersionLS), LOWORD(numbers->dwFileVersionLS)};
}

}  // namespace vw
