// What is big is only slow. In short numbers as a rule; with VW_BIG=1 in the environment in those
// that are guaranteed, which takes a quarter of an hour and 12 GiB of disk.

#include <gmock/gmock.h>

#include <cstdlib>
#include <iostream>
#include <sstream>

#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::SizeIs;

const bool kIsBig = std::getenv("VW_BIG") != nullptr;

int Big(int big, int usual) { return kIsBig ? big : usual; }

class BigThings : public SystemTest {
  protected:
    ~BigThings() override { std::cout << "1 big things: " << told_ << "\n"; }

    /// A run that may take an hour; gives its seconds.
    double BacksUp(DWORD exitCode, const std::wstring& list) {
        ProgramStart start = program.With(L"/B " + list);
        start.patience = 3'600'000;
        const ULONGLONG begin = GetTickCount64();
        RunsTo(exitCode, start);
        return static_cast<double>(GetTickCount64() - begin) / 1000;
    }

    std::wstring ListOf(const std::vector<std::wstring>& items) const {
        std::vector<std::wstring> all{L"BackupTo: " + vault, L"Backages: 2"};
        all.insert(all.end(), items.begin(), items.end());
        return program.List(L"List.vwl", all);
    }

    template <class... Parts>
    void Tell(const Parts&... parts) {
        std::ostringstream text;
        (text << ... << parts);
        told_ += text.str();
    }

    /// How many entries are in a folder and below it; ReadTree would keep them all.
    static int CountBelow(const std::wstring& folder) {
        int count = 0;
        WIN32_FIND_DATAW entry{};
        const FindHandle find(FindFirstFileExW((folder + L"\\*").c_str(), FindExInfoBasic, &entry,
                                               FindExSearchNameMatch, nullptr, 0));
        if (!find) return 0;
        do {
            const std::wstring name = entry.cFileName;
            if (name == L"." || name == L"..") continue;
            ++count;
            if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
                count += CountBelow(folder + L"\\" + name);
            }
        } while (FindNextFileW(find.Get(), &entry) != 0);
        return count;
    }

  private:
    std::string told_;
};

TEST_F(BigThings, FolderOfManyFiles_IsBackedUp) {
    const int folders = Big(200, 10);
    const int files = Big(500, 50);
    for (int i = 0; i < folders; ++i) {
        for (int j = 0; j < files; ++j) {
            program.tree.File(
                L"Home\\Many\\f" + std::to_wstring(i) + L"\\" + std::to_wstring(j) + L".txt", "x");
        }
    }
    const std::wstring list = ListOf({program.tree.Path(L"Home\\Many") + L"\\"});
    const double first = BacksUp(0, list);
    EXPECT_EQ(CountBelow(vault + L"\\Many«0001»"), folders * files + folders);
    const double second = BacksUp(0, list);
    EXPECT_THAT(InVault(), SizeIs(2));
    Tell(folders * files, " files in one item: ", first, " s, and ", second, " s when unchanged");
}

TEST_F(BigThings, PathOfAThousandCharacters_IsBackedUp) {
    std::wstring path = L"Home\\Deep";
    while (path.size() < 1000) path += L"\\" + std::wstring(90, L'd');
    program.tree.File(path + L"\\a.txt", "deep down");
    const std::wstring deep = program.tree.Path(L"Home\\Deep");
    BacksUp(0, ListOf({deep + L"\\"}));
    EXPECT_EQ(ReadTree(vault + L"\\Deep«0001»"), ReadTree(deep));
    Tell("a path of ", program.tree.Path(path).size() + 6, " characters");
}

TEST_F(BigThings, FileOfManyGigabytes_IsBackedUp) {
    const LONGLONG size = kIsBig ? 5'368'709'125 : 67'108'869;
    const std::wstring source = program.tree.File(L"Home\\Disk.img", "begin");
    {
        const FileHandle file(
            CreateFileW(source.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        LARGE_INTEGER place{};
        place.QuadPart = size - 5;
        SetFilePointerEx(file.Get(), place, nullptr, FILE_BEGIN);
        DWORD written = 0;
        ASSERT_NE(WriteFile(file.Get(), "endof", 5, &written, nullptr), 0);
    }
    const double seconds = BacksUp(0, ListOf({source}));
    const FileHandle copy(CreateFileW((vault + L"\\Disk«0001».img").c_str(), GENERIC_READ,
                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(copy);
    LARGE_INTEGER length{};
    GetFileSizeEx(copy.Get(), &length);
    EXPECT_EQ(length.QuadPart, size);
    LARGE_INTEGER place{};
    place.QuadPart = size - 5;
    SetFilePointerEx(copy.Get(), place, nullptr, FILE_BEGIN);
    std::string end(5, ' ');
    DWORD count = 0;
    ReadFile(copy.Get(), end.data(), 5, &count, nullptr);
    EXPECT_EQ(end, "endof");
    Tell("a file of ", size, " bytes: ", seconds, " s");
}

TEST_F(BigThings, ListOfManyLines_IsReadToItsEnd) {
    const int lines = Big(50'000, 1'000);
    std::vector<std::wstring> items;
    for (int i = 1; i < lines; ++i) {
        items.push_back(program.tree.Path(L"Home\\Nobody" + std::to_wstring(i) + L".txt"));
    }
    items.push_back(program.tree.File(L"Home\\Letter.txt", "the last one"));
    const double seconds = BacksUp(53, ListOf(items));
    EXPECT_EQ(ReadBytes(vault + L"\\Letter«0001».txt"), "the last one");
    EXPECT_THAT(InVault(), SizeIs(2));
    Tell("a list of ", lines, " lines: ", seconds, " s");
}

TEST_F(BigThings, DestinationOfManyCopies_NextCopyIsMade) {
    const int copies = Big(20'000, 400);
    for (int i = 0; i < copies; ++i) {
        program.tree.File(L"Vault\\Old" + std::to_wstring(i) + L"«0001».txt", "old");
    }
    const std::wstring letter =
        program.tree.File(L"Home\\Letter.txt", "first", {2024, 1, 1, 1, 1, 1});
    const std::wstring list = ListOf({letter});
    const double first = BacksUp(0, list);
    program.tree.File(L"Home\\Letter.txt", "second", {2024, 1, 2, 1, 1, 1});
    const double second = BacksUp(0, list);
    EXPECT_EQ(ReadBytes(vault + L"\\Letter«0001».txt"), "second");
    EXPECT_EQ(ReadBytes(vault + L"\\Letter«0002».txt"), "first");
    EXPECT_EQ(CountBelow(vault), copies + 3);
    Tell(copies, " copies beside: ", first, " s, and ", second, " s for the next one");
}

}  // namespace
}  // namespace vw::test
