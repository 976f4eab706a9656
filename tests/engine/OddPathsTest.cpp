#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

TEST(OddPaths, Beyond260Characters_AreBackedUp) {
    EngineFixture world;
    std::wstring deep = L"Work";
    for (int level = 0; level < 12; ++level) deep += L"\\" + std::wstring(60, L'd');
    world.tree.File(deep + L"\\a.txt", "deep", Day(1));
    world.List({L"Work\\", deep + L"\\a.txt", deep + L"\\"}, 2);
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001»" + deep.substr(4) + L"\\a.txt")), "deep");
    EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "deep");
    EXPECT_EQ(ReadBytes(world.Store(std::wstring(60, L'd') + L"«0001»\\a.txt")), "deep");
    world.tree.File(deep + L"\\a.txt", "deep 2", Day(2));
    EXPECT_EQ(world.Run().exitCode, 0);
    world.tree.File(deep + L"\\a.txt", "deep 3", Day(3));
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»" + deep.substr(4) + L"\\a.txt")), "deep 2");
    world.ExpectRun(NoChange(L"~\\Work\\") + NoChange(L"~\\" + deep + L"\\a.txt") +
                    NoChange(L"~\\" + deep + L"\\"));
}

// The name of the copy's comment is fourteen characters longer than the item's.
TEST(OddPaths, LongNames_AreBackedUp) {
    EngineFixture world;
    const std::wstring name = std::wstring(235, L'n') + L".txt";
    world.tree.File(name, "long", Day(1));
    world.List({name});
    world.ExpectRun(BackedUp(L"~\\" + name));
    world.ExpectRun(NoChange(L"~\\" + name));
    EXPECT_EQ(world.Copies(), (Listing{{std::wstring(235, L'n') + L"«0001».txt", "long"}}));
}

TEST(OddPaths, NameTooLongForACopy_IsReported_LeavesNothing) {
    for (const std::size_t length : {242U, 246U, 251U}) {
        EngineFixture world;
        const std::wstring name = std::wstring(length, L'n');
        world.tree.File(name + L".txt", "long", Day(1));
        world.tree.File(L"next.txt", "next", Day(1));
        world.List({name + L".txt", L"next.txt"});
        world.ExpectRun(Lines{L"! 52 BackupPath ~\\Store\\" + name + L"«0001».txt"} +
                        BackedUp(L"~\\next.txt"));
        EXPECT_EQ(world.Copies(), (Listing{{L"next«0001».txt", "next"}}));
    }
}

TEST(OddPaths, OddNames_AreCopiedUnchanged) {
    const Lines names{L"two  words .txt", L"100%.doc",     L"#[x]!{y}.txt", L"a,b;c=d.txt",
                      L"O'Brien.txt",     L"ملف عربي.txt", L"日本語.txt",   L"«».txt",
                      L"x«0101»y.txt",    L".hidden",      L"a.b.c",        L"no extension",
                      L"\U0001F600.txt",  L"e\u0301.txt",  L"~$a&b@c`.txt", L"-n"};
    EngineFixture world;
    for (const std::wstring& name : names) {
        world.tree.File(L"Work\\" + name, world.ansi.Encode(name), Day(1));
    }
    world.List({L"Work\\"});
    EXPECT_EQ(world.Run().exitCode, 0);
    Tree source = ReadTree(world.Path(L"Work"));
    EXPECT_EQ(source.size(), names.size());
    EXPECT_EQ(ReadTree(world.Store(L"Work«0001»")), source);

    for (const std::wstring& name : names) {
        EngineFixture single;
        const std::wstring file = single.tree.File(L"Work\\" + name, "1", Day(1));
        const RunResult first = single.With([&](CPackage& engine) { engine.BackupItem(file); });
        EXPECT_EQ(Joined(first.lines), Joined(BackedUp(L"~\\Work\\" + name)));
        const RunResult second = single.With([&](CPackage& engine) { engine.BackupItem(file); });
        EXPECT_EQ(Joined(second.lines), Joined(NoChange(L"~\\Work\\" + name)));
        single.tree.File(L"Work\\" + name, "2", Day(2));
        single.With([&](CPackage& engine) { engine.BackupItem(file); });
        EXPECT_EQ(single.Copies().size(), 2U) << Joined({name});
    }
}

TEST(OddPaths, ReadOnlyFiles_AreRotated) {
    EngineFixture world;
    world.List({L"a.txt", L"Work\\"}, 2);
    for (int step = 1; step <= 4; ++step) {
        for (const wchar_t* file : {L"a.txt", L"Work\\b.txt"}) {
            if (step > 1) world.tree.SetAttributes(file, FILE_ATTRIBUTE_READONLY, false);
            world.tree.File(file, std::to_string(step), Day(step));
            world.tree.SetAttributes(file, FILE_ATTRIBUTE_READONLY);
        }
        EXPECT_EQ(world.Run().exitCode, 0);
    }
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "4"},
                                       {L"a«0002».txt", "3"},
                                       {L"Work«0001»", kFolder},
                                       {L"Work«0001»\\b.txt", "4"},
                                       {L"Work«0002»", kFolder},
                                       {L"Work«0002»\\b.txt", "3"}}));
    const DWORD attributes = GetFileAttributesW(world.Store(L"a«0001».txt").c_str());
    EXPECT_NE(attributes & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST(OddPaths, HiddenAndSystemFiles_AreBackedUp) {
    EngineFixture world;
    world.tree.File(L"Work\\hidden.txt", "h", Day(1));
    world.tree.File(L"Work\\Hidden folder\\s.txt", "s", Day(2));
    world.tree.SetAttributes(L"Work\\hidden.txt", FILE_ATTRIBUTE_HIDDEN);
    world.tree.SetAttributes(L"Work\\Hidden folder", FILE_ATTRIBUTE_HIDDEN);
    world.tree.SetAttributes(L"Work\\Hidden folder\\s.txt",
                             FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    world.List({L"Work\\"});
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(ReadTree(world.Store(L"Work«0001»")), ReadTree(world.Path(L"Work")));
    world.ExpectRun(NoChange(L"~\\Work\\"));
}

TEST(OddPaths, OtherSpelling_IsTheSameItem) {
    EngineFixture world;
    world.tree.File(L"Work\\Sub\\a.txt", "a", Day(1));
    world.List({L"Work\\Sub\\"});
    world.Run();
    for (const wchar_t* item : {L"Work\\\\Sub\\", L"WORK\\sub\\"}) {
        world.List({item});
        const RunResult result = world.Run();
        EXPECT_EQ(Joined(result.lines), Joined(NoChange(L"~\\" + std::wstring(item)) + kDone));
    }
}

TEST(OddPaths, FolderTypedAsAFile_Fails) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.List({L"Work"});
    world.ExpectRun({L"Backing: ~\\Work", L"* Backing: ~\\Work", L"! 53 BackupFile ~\\Work"});
    EXPECT_EQ(world.Copies(), Listing());
}

TEST(OddPaths, FileTypedAsAFolder_Fails) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt\\", L"a.txt\\*"});
    world.ExpectRun({L"Backing: ~\\a.txt\\", L"! 76 BackupPath ~\\a.txt\\", L"Backing: ~\\a.txt",
                     L"! 76 BackupPath ~\\a.txt"});
    EXPECT_EQ(world.Copies(), Listing());
}

TEST(OddPaths, LargeAndEmptyFiles_AreCopiedWhole) {
    EngineFixture world;
    std::string bytes(3 * 1024 * 1024 + 17, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 2654435761U);
    world.tree.File(L"large.bin", bytes, Day(1));
    world.tree.File(L"empty.bin", "", Day(1));
    world.List({L"large.bin", L"empty.bin"});
    world.ExpectRun(BackedUp(L"~\\large.bin") + BackedUp(L"~\\empty.bin"));
    EXPECT_EQ(ReadBytes(world.Store(L"large«0001».bin")), bytes);
    EXPECT_EQ(ReadBytes(world.Store(L"empty«0001».bin")), "");
}

}  // namespace
}  // namespace vw::test
