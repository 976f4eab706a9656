// BareRename FOLDER: gives every file and folder below it a name in lower case by way of another
// name, as the tool of the program has to, and does nothing else. scripts/bench measures it beside
// that tool: no program that takes these two steps for each name can be faster.

#include <cstdio>
#include <string>
#include <vector>

#include "platform/Handle.h"
#include "platform/WindowsHeader.h"

namespace {

struct Entry {
    std::wstring name;
    bool isFolder;
};

std::vector<Entry> EntriesOf(const std::wstring& folder) {
    std::vector<Entry> entries;
    WIN32_FIND_DATAW data{};
    const vw::FindHandle found(FindFirstFileExW((folder + L"\\*").c_str(), FindExInfoBasic, &data,
                                                FindExSearchNameMatch, nullptr,
                                                FIND_FIRST_EX_LARGE_FETCH));
    if (!found) return entries;
    do {
        const std::wstring name = data.cFileName;
        if (name == L"." || name == L"..") continue;
        entries.push_back({name, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    } while (FindNextFileW(found.Get(), &data) != 0);
    return entries;
}

bool Lower(const std::wstring& folder) {
    for (const Entry& entry : EntriesOf(folder)) {
        std::wstring name = entry.name;
        CharLowerBuffW(name.data(), static_cast<DWORD>(name.size()));
        const std::wstring from = folder + L"\\" + entry.name;
        const std::wstring to = folder + L"\\" + name;
        const std::wstring between = to + L"@";
        if (MoveFileExW(from.c_str(), between.c_str(), 0) == 0) return false;
        if (MoveFileExW(between.c_str(), to.c_str(), 0) == 0) return false;
        if (entry.isFolder && !Lower(to)) return false;
    }
    return true;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        std::fputs("usage: BareRename FOLDER\n", stderr);
        return 2;
    }
    return Lower(arguments[1]) ? 0 : 1;
}
