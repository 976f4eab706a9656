#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/engine/EngineFixture.h"
#include "tests/support/CurrentFolder.h"

// How a run reads the current list.

namespace vw::test {
namespace {

// A world with the files a.txt, b.txt, "c,d.txt" and a second destination.
void MakeFiles(const EngineFixture& world) {
    for (const wchar_t* name : {L"a.txt", L"b.txt", L"c,d.txt"}) {
        world.tree.File(name, "x", Day(1));
    }
}

const Lines kBoth = BackedUp(L"~\\a.txt") + BackedUp(L"~\\b.txt");

TEST(ListReading, MakesAMissingListEmpty) {
    EngineFixture world;
    world.ExpectRun({});
    EXPECT_EQ(ReadBytes(world.state.currentListPath), "");
}

TEST(ListReading, SplitsFieldsByCommaLineAndQuote) {
    EngineFixture world;
    MakeFiles(world);
    world.ListText(L",,\r\n\t~\\a.txt\n\n \"~\\c,d.txt\" dropped,~\\b.txt\r\n\x1A~\\none.txt\r\n");
    world.ExpectRun(BackedUp(L"~\\a.txt") + BackedUp(L"~\\c,d.txt") + BackedUp(L"~\\b.txt"));
}

TEST(ListReading, Keys_AnyLetterCaseAnywhere_AreRecognised) {
    EngineFixture world;
    MakeFiles(world);
    const std::wstring second = world.tree.Folder(L"Second");
    world.ListText(
        L"~\\a.txt\r\nBACKUPTO: ~\\Second\r\nbackages: 7\r\n~\\b.txt\r\nBackages: 9\r\n");
    world.ExpectRun(kBoth);
    EXPECT_EQ(world.state.BackupTo, second);
    EXPECT_EQ(world.state.copiesCount, 9);
    EXPECT_TRUE(Exists(second + L"\\b«0001».txt"));
}

TEST(ListReading, KeepsCountAndDestinationWithoutKeyLines) {
    EngineFixture world;
    MakeFiles(world);
    world.state.copiesCount = 17;
    world.ListText(L"~\\a.txt\r\n");
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.state.copiesCount, 17);
    EXPECT_EQ(world.state.BackupTo, world.Store());
}

TEST(ListReading, DriveAloneAsDestination_IsUsedUnchanged) {
    EngineFixture world;
    world.ListText(L"BackupTo: Q:\r\n");
    world.boxes.Expect(L"\r\nQ:");
    EXPECT_TRUE(world.Run().ended);
    EXPECT_EQ(world.state.BackupTo, L"Q:");
}

TEST(ListReading, LineEndsInAStar_IsARule) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "x", Day(1));
    world.tree.File(L"Work\\Sub\\b.txt", "x", Day(1));
    world.ListText(L"~\\Work\\*\r\n");
    world.ExpectRun(BackedUp(L"~\\Work", {L"~\\Work\\a.txt"}));
    // Without a separator before the star it is a rule all the same, for a folder that no disk has.
    world.ListText(L"~\\Work*\r\n");
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined(Missing(L"~\\Work*") + NoChange(L"~\\Work*") + kDone));
    EXPECT_EQ(result.exitCode, error_number::kPathNotFound);
}

TEST(ListReading, BacksUpAnItemThatIsNamedTwiceOnce) {
    EngineFixture world;
    MakeFiles(world);
    world.ListText(L"~\\a.txt\r\n~\\A.TXT\r\n");
    world.ExpectRun(BackedUp(L"~\\a.txt") + NoChange(L"~\\A.TXT"));
}

TEST(ListReading, ReadsTheCodePage) {
    EngineFixture world;
    world.tree.File(L"ملف.txt", "x", Day(1));
    world.List({L"ملف.txt"});
    world.ExpectRun(BackedUp(L"~\\ملف.txt"));
}

TEST(ListReading, ReadsUtf8AfterItsMark) {
    EngineFixture world;
    world.tree.File(L"日本 ملف.txt", "x", Day(1));
    world.tree.File(L"App\\List.vwl",
                    "\xEF\xBB\xBF" + ToUtf8(L"BackupTo: " + world.Store() + L"\r\n" +
                                            world.Path(L"日本 ملف.txt") + L"\r\n"));
    world.ExpectRun(BackedUp(L"~\\日本 ملف.txt"));
}

TEST(ListReading, DoesNotKeepTheListOpen) {
    EngineFixture world;
    MakeFiles(world);
    world.List({L"a.txt", L"b.txt"});
    // The user edits the list while the run works: the run goes on with what it read.
    bool replaced = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Copy || replaced) return;
        replaced = true;
        world.tree.Remove(L"App\\List.vwl");
        world.List({});
    });
    world.ExpectRun(kBoth);
    EXPECT_TRUE(replaced);
}

TEST(ListReading, DestinationIsANumber_CountOfCopiesStays) {
    EngineFixture world;
    MakeFiles(world);
    const CurrentFolder current(world.Path());
    world.tree.Folder(L"7");
    world.tree.File(L"App\\List.vwl",
                    "BackupTo: 7\r\n" + world.ansi.Encode(world.Path(L"a.txt")) + "\r\n");
    const std::int16_t count = world.state.copiesCount;
    world.Run();
    EXPECT_TRUE(Exists(world.Path(L"7\\a«0001».txt")));
    EXPECT_EQ(world.state.copiesCount, count);
}

TEST(ListReading, SurvivesZeroBytesAndGarbage) {
    EngineFixture world;
    MakeFiles(world);
    const std::string path = world.ansi.Encode(world.Path(L"a.txt"));
    using namespace std::string_literals;
    const std::string garbage = "\0\0\r\nx\0y\r\n\xFF\xFE\x81\r\n|<>?*:\r\nNUL\r\n"s;
    world.tree.File(L"App\\List.vwl", garbage + "\r\n" + path + "\r\n");
    world.Run();
    EXPECT_TRUE(Exists(world.Store(L"a«0001».txt")));
    EXPECT_EQ(ReadBytes(world.Path(L"a.txt")), "x");
}

TEST(ListReading, SurvivesAnyBytes) {
    std::mt19937 random(20050305);
    for (int round = 0; round < 50; ++round) {
        EngineFixture world;
        std::string bytes;
        for (int i = 0; i < 400; ++i) bytes += static_cast<char>(random());
        world.tree.File(L"App\\List.vwl", bytes);
        const Tree before = ReadTree(world.Path());
        world.Run();
        EXPECT_EQ(ReadTree(world.Path()), before) << round;
    }
}

}  // namespace
}  // namespace vw::test
