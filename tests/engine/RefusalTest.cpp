#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/WineBridge.h"

namespace vw::test {
namespace {

// Everything below the world's folder that a run must not change.
void ExpectRefused(EngineFixture& world, const std::wstring& item, const std::wstring& shown) {
    world.ListText(L"BackupTo: " + world.state.BackupTo + L"\r\n" + item + L"\r\n");
    const Tree before = ReadTree(world.Path());
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined(Refused(shown) + kDone));
    EXPECT_EQ(result.exitCode, error_number::kAccessError);
    EXPECT_EQ(ReadTree(world.Path()), before);
}

TEST(Refusal, DestinationItself_IsRefused) {
    EngineFixture world;
    ExpectRefused(world, L"~\\Store\\", L"~\\Store\\");
    ExpectRefused(world, L"~\\Store\\*", L"~\\Store");
    ExpectRefused(world, L"~\\Store", L"~\\Store");
}

TEST(Refusal, ItemInTheDestination_IsRefused) {
    EngineFixture world;
    world.tree.File(L"Store\\a.txt");
    world.tree.File(L"Store\\Sub\\b.txt");
    ExpectRefused(world, L"~\\Store\\a.txt", L"~\\Store\\a.txt");
    ExpectRefused(world, L"~\\Store\\Sub\\", L"~\\Store\\Sub\\");
    ExpectRefused(world, L"~\\STORE\\sub\\B.TXT", L"~\\STORE\\sub\\B.TXT");
}

TEST(Refusal, FolderAboveTheDestination_IsRefused) {
    EngineFixture world;
    ExpectRefused(world, L"~\\", L"~\\");
    ExpectRefused(world, L"~\\*", L"~");
    const std::wstring root = world.Path().substr(0, 3);
    ExpectRefused(world, root, root);
}

TEST(Refusal, PathWithThePrefixOfLongPaths_IsRefused) {
    EngineFixture world;
    world.tree.File(L"Store\\a.txt");
    const std::wstring prefix = L"\\\\?\\";
    for (const auto* item : {L"Store\\a.txt", L"Store\\", L""}) {
        const std::wstring path = prefix + world.Path() + L"\\" + item;
        ExpectRefused(world, path, prefix + L"~\\" + item);
    }
}

// Neither path shows that they meet; without an end the copy would be copied into itself.
TEST(Refusal, LinkAboveTheDestination_IsRefused) {
    EngineFixture world;
    world.tree.File(L"Disk\\a.txt", "a", Day(1));
    world.state.BackupTo = world.tree.Folder(L"Disk\\Sub\\Vault");
    ASSERT_TRUE(MakeLink(world.Path(L"Link"), world.Path(L"Disk"), true));
    world.ListText(L"BackupTo: " + world.state.BackupTo + L"\r\n~\\Link\\\r\n");
    const RunResult result = world.Run();
    EXPECT_EQ(result.exitCode, error_number::kAccessError);
    EXPECT_NE(Joined(result.lines).find(Joined(Refused(L"~\\Link\\"))), std::wstring::npos)
        << Joined(result.lines);
    EXPECT_EQ(ReadTree(world.state.BackupTo), Tree());
}

TEST(Refusal, PathBeginsWithTheDestination_IsRefused) {
    EngineFixture world;
    world.tree.File(L"Store2\\a.txt");
    world.tree.File(L"Storehouse.txt");
    ExpectRefused(world, L"~\\Store2\\a.txt", L"~\\Store2\\a.txt");
    ExpectRefused(world, L"~\\Store2\\", L"~\\Store2\\");
    ExpectRefused(world, L"~\\Storehouse.txt", L"~\\Storehouse.txt");
}

TEST(Refusal, DestinationBeginsWithThePath_IsRefused) {
    EngineFixture world;
    world.tree.File(L"St");
    ExpectRefused(world, L"~\\St", L"~\\St");
    // With its final separator the name of a folder is no beginning of the destination's.
    world.tree.Remove(L"St");
    world.tree.File(L"Sto\\a.txt", "a", Day(1));
    world.List({L"Sto\\"});
    world.ExpectRun(BackedUp(L"~\\Sto\\", {L"~\\Sto\\a.txt"}));
    ExpectRefused(world, L"~\\Sto\\*", L"~\\Sto");
}

TEST(Refusal, DestinationWithWildcards_IsAPattern) {
    EngineFixture world;
    world.state.BackupTo = world.tree.Folder(L"St[aou]re #");
    world.tree.File(L"Stare 7\\a.txt");
    world.tree.File(L"Store 77.txt");
    ExpectRefused(world, L"~\\Stare 7\\a.txt", L"~\\Stare 7\\a.txt");
    ExpectRefused(world, L"~\\Store 77.txt", L"~\\Store 77.txt");
    world.tree.File(L"Stire 7\\a.txt", "a", Day(1));
    world.ListText(L"~\\Stire 7\\a.txt\r\n");
    world.ExpectRun(BackedUp(L"~\\Stire 7\\a.txt"));
}

TEST(Refusal, ItemWithWildcards_IsAPattern) {
    EngineFixture world;
    world.tree.File(L"S[st]ore");
    ExpectRefused(world, L"~\\S[st]ore", L"~\\S[st]ore");
    world.tree.Remove(L"S[st]ore");
    world.tree.File(L"[S]t", "x", Day(1));
    ExpectRefused(world, L"~\\[S]t", L"~\\[S]t");
}

TEST(Refusal, DestinationWithWildcards_ItselfIsRefused) {
    EngineFixture world;
    world.state.BackupTo = world.tree.Folder(L"Data [1]\\Store #2");
    world.tree.File(L"Data [1]\\Store #2\\a.txt");
    ExpectRefused(world, L"~\\Data [1]\\", L"~\\Data [1]\\");
    ExpectRefused(world, L"~\\data [1]\\*", L"~\\data [1]");
    ExpectRefused(world, L"~\\Data [1]\\Store #2\\a.txt", L"~\\Data [1]\\Store #2\\a.txt");
    ExpectRefused(world, L"~\\Data [1]\\STORE #2\\", L"~\\Data [1]\\STORE #2\\");
}

TEST(Refusal, PathWithADetour_IsRefused) {
    EngineFixture world;
    world.tree.File(L"Store\\a.txt");
    world.tree.Folder(L"Other");
    ExpectRefused(world, L"~\\Other\\..\\Store\\a.txt", L"~\\Other\\..\\Store\\a.txt");
    ExpectRefused(world, L"~\\\\Store\\a.txt", L"~\\\\Store\\a.txt");
}

TEST(Refusal, MissingItem_IsNotRefused) {
    EngineFixture world;
    world.List({L"Store\\none.txt"});
    world.ExpectRun(Missing(L"~\\Store\\none.txt") + NoChange(L"~\\Store\\none.txt"));
}

TEST(Refusal, OneItem_RunContinues) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"Store\\", L"a.txt"});
    world.ExpectRun(Refused(L"~\\Store\\") + BackedUp(L"~\\a.txt"));
}

TEST(ImpossibleCopyName, DriveAsItem_IsRefused) {
    // The destination lies on another drive than the item.
    EngineFixture world;
    const std::wstring drive = world.Path().substr(0, 1) == L"Z" ? L"C:" : L"Z:";
    if (!Exists(drive + L"\\")) GTEST_SKIP() << "no second drive here";
    world.drive.shownEmpty = {drive, drive + L"\\"};
    for (const std::wstring& item : {drive + L"\\", drive + L"\\*"}) {
        world.ListText(L"BackupTo: ~\\Store\r\n" + item + L"\r\n");
        world.ExpectRun({L"! 52 BackupPath ~\\Store\\" + drive + L"«0001»"});
        EXPECT_EQ(ReadTree(world.Store()), Tree());
    }
}

TEST(MissingItem, Mask_IsReportedAsMissing) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    for (const wchar_t* mask : {L"*.txt", L"a*", L"a?.txt*", L"a?.txt", L"<a>", L"a|b.txt"}) {
        const std::wstring item = std::wstring(L"~\\Work\\") + mask;
        world.ListText(L"BackupTo: ~\\Store\r\n" + item + L"\r\n");
        world.ExpectRun(Missing(item) + NoChange(item));
    }
    EXPECT_EQ(ReadTree(world.Store()), Tree());
}

TEST(MissingItem, Stream_IsReportedAsMissing) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.ListText(L"BackupTo: ~\\Store\r\n~\\a.txt:stream\r\n");
    world.ExpectRun(Missing(L"~\\a.txt:stream") + NoChange(L"~\\a.txt:stream"));
    EXPECT_EQ(ReadTree(world.Store()), Tree());
}

// The copy's name begins with a folder that is longer than any disk takes.
TEST(ImpossibleCopyName, FolderNameIsTooLong_IsRefused) {
    EngineFixture world;
    const std::wstring item =
        L"a." + std::wstring(120, L'X') + L"\\" + std::wstring(130, L'n') + L"\\";
    world.tree.File(item + L"f.txt", "1", Day(1));
    world.List({item});
    for (int run = 0; run < 2; ++run) {
        const RunResult result = world.Run();
        ASSERT_EQ(result.errors.size(), 1U) << Joined(result.lines);
        EXPECT_EQ(result.errors[0].number, error_number::kBadName);
        EXPECT_EQ(ReadTree(world.Store()), Tree());
    }
}

// Another drive letter may lead to the destination: the copy in the making comes up in its source.
TEST(Refusal, CopyMeetsItselfInItsSource_IsReported) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.tree.Folder(L"Work\\Sub\\" +
                      LeftOverName(world, WorkingState::New, L"Work\\", ThisProcess()));
    world.List({L"Work\\"});
    const RunResult result = world.Run();
    EXPECT_EQ(result.exitCode, error_number::kAccessError);
    EXPECT_EQ(Joined(result.lines),
              Joined(Lines{L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\a.txt"} +
                     Refused(L"~\\Work\\") + kDone));
    EXPECT_EQ(world.Copies(), Listing());
}

}  // namespace
}  // namespace vw::test
