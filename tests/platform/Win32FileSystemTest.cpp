#include "platform/Win32FileSystem.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/RuntimeError.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/TempTree.h"

namespace vw {
namespace {

using test::NumberOf;
using test::TempTree;

class Win32FileSystemTest : public testing::Test {
  protected:
    TempTree tree_;
    Win32FileSystem files_;
};

TEST_F(Win32FileSystemTest, Stat_FilesFoldersAndMissingPaths_AreRecognised) {
    const std::wstring file = tree_.File(L"a.txt", "12345", {2020, 2, 3, 4, 5, 6});
    const auto facts = files_.Stat(file);
    ASSERT_TRUE(facts);
    EXPECT_FALSE(facts->isFolder);
    EXPECT_EQ(facts->size, 5U);
    EXPECT_EQ(facts->lastWrite, MakeDate({2020, 2, 3, 4, 5, 6}));
    const auto folder = files_.Stat(tree_.Folder(L"sub") + L"\\");
    ASSERT_TRUE(folder);
    EXPECT_TRUE(folder->isFolder);
    for (const wchar_t* missing : {L"b.txt", L"no\\b.txt", L"*", L"a.t?t", L"a.*", L"x<y>z|"}) {
        EXPECT_FALSE(files_.Stat(tree_.Path(missing))) << missing;
    }
    EXPECT_FALSE(files_.Stat({}));
    // Lengths whose bytes would overflow 16 bits to those of a folder that exists.
    for (const std::size_t length : {32'768U, 65'536U, 1U << 20}) {
        EXPECT_FALSE(files_.Stat(std::wstring(length, L'x')));
        EXPECT_FALSE(files_.Stat(tree_.Path() + L"\\" + std::wstring(length, L'x')));
    }
    EXPECT_FALSE(files_.Stat(L"Q:\\nothing\\here"));
    EXPECT_FALSE(files_.Stat(std::wstring_view(L"C:\\a\0b", 6)));
}

TEST_F(Win32FileSystemTest, Stat_EachAttribute_IsItsOwn) {
    struct Row {
        DWORD attribute;
        bool isReadOnly;
        bool isHidden;
        bool isSystem;
    };
    for (const Row& row : {Row{FILE_ATTRIBUTE_READONLY, true, false, false},
                           Row{FILE_ATTRIBUTE_HIDDEN, false, true, false},
                           Row{FILE_ATTRIBUTE_SYSTEM, false, false, true},
                           Row{FILE_ATTRIBUTE_ARCHIVE, false, false, false}}) {
        const std::wstring name = std::to_wstring(row.attribute);
        const std::wstring file = tree_.File(name);
        tree_.SetAttributes(name, row.attribute);
        const auto facts = files_.Stat(file);
        ASSERT_TRUE(facts);
        EXPECT_EQ(facts->isReadOnly, row.isReadOnly) << row.attribute;
        EXPECT_EQ(facts->isHidden, row.isHidden) << row.attribute;
        EXPECT_EQ(facts->isSystem, row.isSystem) << row.attribute;
    }
}

TEST_F(Win32FileSystemTest, ListsEachEntryOnceWithItsInfo) {
    tree_.File(L"a.txt", "123");
    tree_.File(L"\u0645\u0631\u062D\u0628\u0627.txt", "1");
    tree_.Folder(L"sub\\deeper");
    std::set<std::wstring> names;
    files_.List(tree_.Path(), [&](const FolderEntry& entry) {
        EXPECT_TRUE(names.insert(std::wstring(entry.name)).second);
        EXPECT_EQ(entry.isFolder, entry.name == L"sub");
        if (entry.name == L"a.txt") {
            EXPECT_EQ(entry.size, 3U);
        }
    });
    EXPECT_EQ(names,
              (std::set<std::wstring>{L"a.txt", L"\u0645\u0631\u062D\u0628\u0627.txt", L"sub"}));
}

TEST_F(Win32FileSystemTest, List_NamesThatBeginWithDots_AreEntries) {
    const std::set<std::wstring> wanted{L".a", L"..a", L".ab", L"...a"};
    for (const std::wstring& name : wanted) tree_.File(name);
    std::set<std::wstring> names;
    files_.List(tree_.Path(), [&](const FolderEntry& entry) { names.emplace(entry.name); });
    EXPECT_EQ(names, wanted);
}

TEST_F(Win32FileSystemTest, List_EmptyOrMissingFolder_ListsNothingOrThrows) {
    files_.List(tree_.Folder(L"empty"), [](const FolderEntry&) { ADD_FAILURE(); });
    EXPECT_EQ(NumberOf([&] { files_.List(tree_.Path(L"none"), [](const FolderEntry&) {}); }), 76);
    const std::wstring file = tree_.File(L"file");
    EXPECT_EQ(NumberOf([&] { files_.List(file, [](const FolderEntry&) {}); }), 76);
}

TEST_F(Win32FileSystemTest, Copy_KeepsBytesDateAndAttributes) {
    const std::wstring from =
        tree_.File(L"a", std::string(200000, 'x'), {1999, 12, 31, 23, 59, 58});
    tree_.SetAttributes(L"a", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    files_.Copy(from, tree_.Path(L"b"), {});
    EXPECT_EQ(test::ReadBytes(tree_.Path(L"b")), std::string(200000, 'x'));
    EXPECT_EQ(test::ReadDate(tree_.Path(L"b")), MakeDate({1999, 12, 31, 23, 59, 58}));
    EXPECT_TRUE(files_.Stat(tree_.Path(L"b"))->isHidden);
}

TEST_F(Win32FileSystemTest, Copy_ToAnExistingFile_ReplacesNothing) {
    const std::wstring a = tree_.File(L"a", "new");
    const std::wstring b = tree_.File(L"b", "old");
    EXPECT_EQ(NumberOf([&] { files_.Copy(a, b, {}); }), 58);
    EXPECT_EQ(test::ReadBytes(b), "old");
    EXPECT_EQ(NumberOf([&] { files_.Copy(tree_.Path(L"none"), tree_.Path(L"c"), {}); }), 53);
    EXPECT_EQ(NumberOf([&] { files_.Copy(tree_.Folder(L"sub"), tree_.Path(L"c"), {}); }), 53);
    EXPECT_EQ(NumberOf([&] { files_.Copy(a, tree_.Path(L"no\\c"), {}); }), 76);
    EXPECT_FALSE(test::Exists(tree_.Path(L"c")));
}

TEST_F(Win32FileSystemTest, FileInUse_ThrowsPermissionDenied) {
    const std::wstring file = tree_.File(L"held");
    const FileHandle held = test::OpenAlone(file);
    EXPECT_EQ(NumberOf([&] { files_.Copy(file, tree_.Path(L"c"), {}); }), 70);
    EXPECT_FALSE(test::Exists(tree_.Path(L"c")));
    EXPECT_EQ(NumberOf([&] { return files_.Read(file); }), 70);
    EXPECT_EQ(NumberOf([&] { files_.RemoveFile(file); }), 70);
    EXPECT_EQ(NumberOf([&] { files_.Rename(file, tree_.Path(L"d")); }), 70);
    EXPECT_TRUE(files_.Stat(file));
}

TEST_F(Win32FileSystemTest, CreateFolder_MissingParent_Throws) {
    files_.CreateFolder(tree_.Path(L"new"));
    EXPECT_TRUE(files_.Stat(tree_.Path(L"new"))->isFolder);
    EXPECT_EQ(NumberOf([&] { files_.CreateFolder(tree_.Path(L"new")); }), 58);
    EXPECT_EQ(NumberOf([&] { files_.CreateFolder(tree_.Path(L"x\\y")); }), 76);
}

TEST_F(Win32FileSystemTest, Remove_ReadOnlyFileOrFolder_Deletes) {
    const std::wstring file = tree_.File(L"a");
    tree_.SetAttributes(L"a", FILE_ATTRIBUTE_READONLY);
    files_.RemoveFile(file);
    EXPECT_FALSE(test::Exists(file));
    const std::wstring folder = tree_.Folder(L"sub");
    tree_.SetAttributes(L"sub", FILE_ATTRIBUTE_READONLY);
    files_.RemoveFolder(folder);
    EXPECT_FALSE(test::Exists(folder));
}

TEST_F(Win32FileSystemTest, RemoveFolder_NotEmpty_Throws) {
    tree_.File(L"sub\\a");
    EXPECT_EQ(NumberOf([&] { files_.RemoveFolder(tree_.Path(L"sub")); }), 75);
    EXPECT_TRUE(test::Exists(tree_.Path(L"sub\\a")));
}

TEST_F(Win32FileSystemTest, Rename_ExistingTarget_ThrowsButReplaceOverwrites) {
    const std::wstring a = tree_.File(L"a", "A");
    const std::wstring b = tree_.File(L"b", "B");
    EXPECT_EQ(NumberOf([&] { files_.Rename(a, b); }), 58);
    EXPECT_EQ(test::ReadBytes(b), "B");
    tree_.SetAttributes(L"b", FILE_ATTRIBUTE_READONLY);
    files_.Replace(a, b);
    EXPECT_EQ(test::ReadBytes(b), "A");
    EXPECT_FALSE(test::Exists(a));
    files_.Rename(b, a);
    EXPECT_EQ(test::ReadBytes(a), "A");
}

TEST_F(Win32FileSystemTest, Rename_Folder_MovesItsTreeNeverOntoAnother) {
    tree_.File(L"from\\x\\y", "1");
    tree_.Folder(L"to");
    EXPECT_NE(NumberOf([&] { files_.Rename(tree_.Path(L"from"), tree_.Path(L"to")); }), 0);
    files_.Rename(tree_.Path(L"from\\"), tree_.Path(L"to2\\"));
    EXPECT_EQ(test::ReadBytes(tree_.Path(L"to2\\x\\y")), "1");
}

TEST_F(Win32FileSystemTest, ReadAndWrite_TransferWholeFiles) {
    const std::wstring path = tree_.Path(L"list.vwl");
    const std::string bytes = std::string(100000, 'a') + std::string("\0b", 2);
    files_.Write(path, bytes, FileSystem::Flush::Yes);
    EXPECT_EQ(files_.Read(path), bytes);
    files_.Write(path, {}, FileSystem::Flush::No);
    EXPECT_EQ(files_.Read(path), "");
    EXPECT_EQ(NumberOf([&] { return files_.Read(tree_.Path(L"none")); }), 53);
    EXPECT_EQ(NumberOf([&] { files_.Write(tree_.Path(L"no\\x"), "a", FileSystem::Flush::No); }),
              76);
    EXPECT_EQ(NumberOf([&] { return files_.Read(tree_.Folder(L"sub")); }), 75);
}

TEST_F(Win32FileSystemTest, AcceptsPathsOf700Characters) {
    std::wstring folder = tree_.Path();
    for (int i = 0; i < 12; ++i) {
        folder += L"\\" + std::wstring(60, L'd');
        files_.CreateFolder(folder);
    }
    ASSERT_GT(folder.size(), 700U);
    files_.Write(folder + L"\\a.txt", "deep", FileSystem::Flush::No);
    files_.Copy(folder + L"\\a.txt", folder + L"\\b.txt", {});
    int count = 0;
    files_.List(folder, [&](const FolderEntry&) { ++count; });
    EXPECT_EQ(count, 2);
    EXPECT_EQ(files_.Read(folder + L"\\b.txt"), "deep");
}

TEST_F(Win32FileSystemTest, Drives_HaveKindAndFreeSpace) {
    EXPECT_EQ(files_.DriveTypeOf(L"C:\\windows"), DriveType::Fixed);
    EXPECT_EQ(files_.DriveTypeOf(tree_.Path(L"not made yet")), DriveType::Fixed);
    EXPECT_EQ(files_.DriveTypeOf(L"Q:\\none"), DriveType::Unknown);
    EXPECT_EQ(files_.DriveTypeOf(L"\\\\server\\share\\x"), DriveType::Network);
    EXPECT_GT(files_.FreeSpace(L"C:\\"), 0U);
    EXPECT_GT(files_.FreeSpace(tree_.Path()), 0U);
    EXPECT_NE(NumberOf([&] { return files_.FreeSpace(L"Q:\\"); }), 0);
}

TEST_F(Win32FileSystemTest, TempFolder_HasNoFinalSeparator) {
    const std::wstring folder = files_.TempFolder();
    EXPECT_TRUE(files_.Stat(folder)->isFolder);
    EXPECT_FALSE(folder.ends_with(L'\\'));
}

TEST_F(Win32FileSystemTest, Identify_FolderMadeAgain_IsAnother) {
    const std::wstring folder = tree_.Folder(L"Vault");
    const FolderIdentity first = files_.Identify(folder);
    EXPECT_TRUE(first.IsSameAs(files_.Identify(folder + L"\\")));
    EXPECT_TRUE(first.IsSameAs(files_.Identify(tree_.Path(L"VAULT\\..\\vault"))));
    EXPECT_FALSE(first.IsSameAs(files_.Identify(tree_.Folder(L"Other"))));
    // Its old place is not given to the new one while it is still there.
    files_.Rename(folder, tree_.Path(L"Away"));
    tree_.Folder(L"Vault");
    EXPECT_FALSE(first.IsSameAs(files_.Identify(folder)));
    EXPECT_TRUE(first.IsSameAs(files_.Identify(tree_.Path(L"Away"))));
}

TEST_F(Win32FileSystemTest, Identify_NoFolder_Throws) {
    EXPECT_EQ(NumberOf([&] { return files_.Identify(tree_.File(L"a.txt")); }),
              error_number::kFileNotFound);
    EXPECT_EQ(NumberOf([&] { return files_.Identify(tree_.Path(L"gone")); }),
              error_number::kFileNotFound);
}

TEST_F(Win32FileSystemTest, FolderIdentity_WithoutANumber_ComparesTheDevice) {
    const FolderIdentity share{.volume = 1, .folder = 0, .device = L"\\\\server\\share"};
    FolderIdentity other = share;
    EXPECT_TRUE(share.IsSameAs(other));
    other.device = L"\\\\server\\second";
    EXPECT_FALSE(share.IsSameAs(other));
    other = share;
    other.volume = 2;
    EXPECT_FALSE(share.IsSameAs(other));
}

TEST_F(Win32FileSystemTest, RealPath_FollowsLinks) {
    const std::wstring folder = tree_.Folder(L"Real\\Sub");
    EXPECT_EQ(files_.RealPath(folder), files_.RealPath(tree_.Path(L"Real")) + L"\\Sub");
    if (!tree_.Link(L"Way", tree_.Path(L"Real"))) GTEST_SKIP() << "no links here";
    EXPECT_EQ(files_.RealPath(tree_.Path(L"Way\\Sub")), files_.RealPath(folder));
}

TEST_F(Win32FileSystemTest, HaveSameBytes_ComparesEveryByte) {
    const std::string bytes(600'000, 'x');
    const std::wstring first = tree_.File(L"a.bin", bytes);
    std::string changed = bytes;
    changed.back() = 'y';
    int calls = 0;
    const auto progress = [&] { ++calls; };
    EXPECT_TRUE(files_.HaveSameBytes(first, tree_.File(L"b.bin", bytes), progress));
    EXPECT_GT(calls, 0);
    EXPECT_FALSE(files_.HaveSameBytes(first, tree_.File(L"c.bin", changed), progress));
    EXPECT_FALSE(files_.HaveSameBytes(first, tree_.File(L"d.bin", bytes + "x"), progress));
    EXPECT_TRUE(files_.HaveSameBytes(tree_.File(L"e", ""), tree_.File(L"f", ""), {}));
    EXPECT_EQ(NumberOf([&] { return files_.HaveSameBytes(first, tree_.Path(L"gone"), progress); }),
              error_number::kFileNotFound);
}

}  // namespace
}  // namespace vw
