#include "console/RunLog.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "console/Console.h"
#include "fsutil/PathText.h"
#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"
#include "platform/Utf8.h"
#include "platform/Wildcards.h"

namespace vw {
namespace {

constexpr std::wstring_view kNames = L"vw-####-##-##-######*.log";

template <class... Parts>
std::wstring Text(const wchar_t* form, Parts... parts) {
    std::array<wchar_t, 64> text{};
    std::swprintf(text.data(), text.size(), form, parts...);
    return text.data();
}

}  // namespace

RunLog::RunLog(Console& console, std::wstring_view folder)
    : console_(console), folder_(console.FullPath(folder)) {
    FileSystem& files = console.system.files;
    if (!files.Stat(folder_)) files.CreateFolder(folder_);
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const std::wstring name = Text(L"vw-%04d-%02d-%02d-%02d%02d%02d", now.wYear, now.wMonth,
                                   now.wDay, now.wHour, now.wMinute, now.wSecond);
    // Two runs may begin in the same second.
    for (int number = 1; !file_; ++number) {
        path_ = JoinPath(folder_, name + (number > 1 ? L"-" + std::to_wstring(number) : L""));
        path_ += L".log";
        file_ = FileHandle(CreateFileW(SystemPath(path_).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                       nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file_ && GetLastError() != ERROR_FILE_EXISTS) RaiseLast(path_);
    }
}

void RunLog::Write(std::wstring_view line) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const std::string bytes =
        ToUtf8(Text(L"%02d:%02d:%02d ", now.wHour, now.wMinute, now.wSecond)) + ToUtf8(line) +
        "\r\n";
    DWORD written = 0;
    WriteFile(file_.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

void RunLog::DeleteOlder(int keep) {
    std::vector<std::wstring> logs;
    console_.system.files.List(folder_, [&](const FolderEntry& entry) {
        if (!entry.isFolder && MatchesWildcard(entry.name, kNames)) logs.emplace_back(entry.name);
    });
    std::ranges::sort(logs, std::greater<>());
    for (auto i = static_cast<std::size_t>(keep); i < logs.size(); ++i) {
        console_.Try([&] { console_.system.files.RemoveFile(JoinPath(folder_, logs[i])); });
    }
}

}  // namespace vw
