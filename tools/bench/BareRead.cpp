// BareRead FOLDER...: opens and reads every file below each folder, one thread for each, does
// nothing with the bytes, and prints how many files there are. No program that compares the folders
// through the system's calls can be much faster; scripts/bench measures it beside a check of
// contents.

#include <atomic>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "platform/Handle.h"
#include "platform/WindowsHeader.h"

namespace {

std::atomic<unsigned long> files = 0;

void ReadFile(const std::wstring& path, std::vector<char>& part) {
    const vw::FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    DWORD count = 0;
    do {
        if (::ReadFile(file.Get(), part.data(), static_cast<DWORD>(part.size()), &count, nullptr) ==
            0) {
            return;
        }
    } while (count == part.size());
    ++files;
}

void ReadTree(const std::wstring& folder, std::vector<char>& part) {
    WIN32_FIND_DATAW data{};
    const vw::FindHandle found(FindFirstFileExW((folder + L"\\*").c_str(), FindExInfoBasic, &data,
                                                FindExSearchNameMatch, nullptr,
                                                FIND_FIRST_EX_LARGE_FETCH));
    if (!found) return;
    do {
        const std::wstring name = data.cFileName;
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            ReadFile(folder + L"\\" + name, part);
        } else if (name != L"." && name != L"..") {
            ReadTree(folder + L"\\" + name, part);
        }
    } while (FindNextFileW(found.Get(), &data) != 0);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    constexpr std::size_t kPart = std::size_t{256} * 1024;
    if (count < 2) {
        std::fputs("usage: BareRead FOLDER...\n", stderr);
        return 2;
    }
    std::vector<std::thread> threads;
    for (int i = 1; i < count; ++i) {
        threads.emplace_back([root = std::wstring(arguments[i])] {
            std::vector<char> part(kPart);
            ReadTree(root, part);
        });
    }
    for (std::thread& thread : threads) thread.join();
    std::printf("%lu files\n", files.load());
    return 0;
}
