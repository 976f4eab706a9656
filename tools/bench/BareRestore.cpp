// BareRestore COPY TARGET: puts every file of a folder over the one of the same name below another
// folder: copies it beside its place and renames it over what is there, and does nothing else. No
// look comes before, and no access rights are kept. scripts/bench measures it beside the restore of
// the program: no program that never leaves half a file in the place of a whole one can be faster.

#include <cstdio>
#include <string>
#include <vector>

#include "platform/Handle.h"
#include "platform/WindowsHeader.h"

namespace {

bool Restore(const std::wstring& copy, const std::wstring& target) {
    WIN32_FIND_DATAW data{};
    const vw::FindHandle found(FindFirstFileExW((copy + L"\\*").c_str(), FindExInfoBasic, &data,
                                                FindExSearchNameMatch, nullptr,
                                                FIND_FIRST_EX_LARGE_FETCH));
    if (!found) return false;
    do {
        const std::wstring name = data.cFileName;
        if (name == L"." || name == L"..") continue;
        const std::wstring from = copy + L"\\" + name;
        const std::wstring to = target + L"\\" + name;
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            if (!Restore(from, to)) return false;
            continue;
        }
        const std::wstring beside = to + L"@";
        if (CopyFileExW(from.c_str(), beside.c_str(), nullptr, nullptr, nullptr,
                        COPY_FILE_FAIL_IF_EXISTS) == 0) {
            return false;
        }
        if (MoveFileExW(beside.c_str(), to.c_str(),
                        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
            return false;
        }
    } while (FindNextFileW(found.Get(), &data) != 0);
    return true;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3) {
        std::fputs("usage: BareRestore COPY TARGET\n", stderr);
        return 2;
    }
    return Restore(arguments[1], arguments[2]) ? 0 : 1;
}
