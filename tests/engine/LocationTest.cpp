#include <gtest/gtest.h>

#include "engine/CopyName.h"
#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

int LocationOf(EngineFixture& world, const std::wstring& item) {
    int location = -2;
    world.With([&](CPackage& engine) { location = engine.LocationID(world.Path(item)); });
    return location;
}

// A copy 1 of "a.txt" at a location number, with a comment that names a folder.
void MakeCopyFrom(const EngineFixture& world, const std::wstring& number,
                  const std::wstring& folder) {
    world.tree.File(L"Store\\a«" + number + L"01».txt", "copy");
    world.tree.File(L"Store\\a«" + number + L"01».txt.vwc",
                    "Original Location:" + world.ansi.Encode(folder) + "\r\n");
}

TEST(LocationNumber, FirstItem_IsZero) {
    EngineFixture world;
    EXPECT_EQ(LocationOf(world, L"a.txt"), 0);
    EXPECT_EQ(LocationOf(world, L"Work\\"), 0);
    EXPECT_EQ(LocationOf(world, L"Work\\*"), 0);
}

TEST(LocationNumber, KeepsTheNumberOfTheItemInAnyLetterCase) {
    EngineFixture world;
    world.tree.Folder(L"Docs");
    world.tree.Folder(L"Other");
    MakeCopyFrom(world, L"00", world.Path(L"Other"));
    MakeCopyFrom(world, L"01", world.Path(L"DOCS"));
    EXPECT_EQ(LocationOf(world, L"Docs\\a.txt"), 1);
    EXPECT_EQ(LocationOf(world, L"docs\\A.TXT"), 1);
    EXPECT_EQ(LocationOf(world, L"Other\\a.txt"), 0);
    EXPECT_EQ(LocationOf(world, L"Third\\a.txt"), 2);
}

TEST(LocationNumber, SkipsCopiesOfUnknownOrigin) {
    EngineFixture world;
    world.tree.Folder(L"Docs");
    world.tree.File(L"Store\\a«0001».txt", "no comment");
    MakeCopyFrom(world, L"01", world.Path(L"Gone"));
    EXPECT_EQ(LocationOf(world, L"Docs\\a.txt"), 2);
}

TEST(LocationNumber, UsesTheFirstFreeNumber) {
    EngineFixture world;
    world.tree.Folder(L"Docs");
    world.tree.Folder(L"Other");
    MakeCopyFrom(world, L"00", world.Path(L"Other"));
    MakeCopyFrom(world, L"02", world.Path(L"Docs"));
    // Number 1 is free, though the item's copies are at 2.
    EXPECT_EQ(LocationOf(world, L"Docs\\a.txt"), 1);
}

TEST(LocationNumber, FolderInThePlaceOfAFile_IsFree) {
    EngineFixture world;
    world.tree.Folder(L"Store\\a«0001».txt");
    EXPECT_EQ(LocationOf(world, L"a.txt"), 0);
}

TEST(LocationNumber, AcceptsNumbersAbove99) {
    EngineFixture world;
    for (int number = 0; number < 100; ++number) {
        const std::wstring digits = (number < 10 ? L"0" : L"") + std::to_wstring(number);
        world.tree.File(L"Store\\a«" + digits + L"01».txt");
    }
    EXPECT_EQ(LocationOf(world, L"a.txt"), 100);
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    EXPECT_EQ(ReadBytes(world.Store(L"a«10001».txt")), "a");
}

// Makes copy 1 at every location number, each from elsewhere.
class CrowdedStore : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;
    std::optional<FileInfo> Stat(std::wstring_view path) override {
        if (path.find(L"01».txt") == std::wstring_view::npos) return Inner().Stat(path);
        if (path.ends_with(L".vwc")) return std::nullopt;
        return FileInfo();
    }
};

// The first one's folder lies on a server that is down.
TEST(LocationNumber, FolderOfAnotherItemFails_HasNoEffect) {
    EngineFixture world;
    for (const wchar_t* const file : {L"Server\\a.txt", L"Here\\a.txt"}) {
        world.tree.File(file, "x", Day(1));
    }
    world.List({L"Server\\a.txt", L"Here\\a.txt"});
    EXPECT_EQ(world.Run().exitCode, 0);
    world.List({L"Here\\a.txt"});
    world.files.FailFrom(1, error_number::kDeviceError, [&](const FileOperation& operation) {
        return operation.path == world.Path(L"Server");
    });
    world.ExpectRun(NoChange(L"~\\Here\\a.txt"));
}

TEST(LocationNumber, MoreNumbersThanFit_ReportsOverflow) {
    EngineFixture world;
    CrowdedStore crowded(world.files);
    System system = world.TestEnvironment::With(crowded);
    CPackage engine(system, world.state, world.host, world.host);
    EXPECT_EQ(engine.LocationID(world.Path(L"a.txt")), -1);
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kOverflow);
    EXPECT_EQ(error.procedure, L"LocationID");
    EXPECT_EQ(error.container, L"MVaultwright");
    EXPECT_EQ(error.path, world.Path(L"a.txt"));
    EXPECT_EQ(world.pump.Yields(), 32768);
}

TEST(LocationNumber, FilesOfOneName_HaveTheirOwnSeries) {
    EngineFixture world;
    world.List({L"A\\r.doc", L"B\\r.doc", L"C\\r.doc"});
    for (int step = 1; step <= 2; ++step) {
        for (const wchar_t* folder : {L"A", L"B", L"C"}) {
            const std::string content = world.ansi.Encode(folder) + std::to_string(step);
            world.tree.File(std::wstring(folder) + L"\\r.doc", content, Day(step));
        }
        world.ExpectRun(BackedUp(L"~\\A\\r.doc") + BackedUp(L"~\\B\\r.doc") +
                        BackedUp(L"~\\C\\r.doc"));
    }
    EXPECT_EQ(world.Copies(), (Listing{{L"r«0001».doc", "A2"},
                                       {L"r«0002».doc", "A1"},
                                       {L"r«0101».doc", "B2"},
                                       {L"r«0102».doc", "B1"},
                                       {L"r«0201».doc", "C2"},
                                       {L"r«0202».doc", "C1"}}));
    // In another order each finds its own again.
    world.List({L"C\\r.doc", L"A\\r.doc", L"B\\r.doc"});
    world.ExpectRun(NoChange(L"~\\C\\r.doc") + NoChange(L"~\\A\\r.doc") + NoChange(L"~\\B\\r.doc"));
}

TEST(LocationNumber, FoldersOutsideTheCodePage_HaveTheirOwnNumbers) {
    EngineFixture world;
    const Lines items{world.Path(L"ملف\\r.doc"), world.Path(L"日本\\r.doc"),
                      world.Path(L"中国\\r.doc")};
    for (int step = 1; step <= 2; ++step) {
        for (const std::wstring& item : items) {
            world.tree.File(item, std::to_string(step), Day(step));
            const RunResult result = world.With([&](CPackage& engine) { engine.BackupItem(item); });
            EXPECT_EQ(Joined(result.lines), Joined(BackedUp(world.host.Short(item))));
        }
    }
    EXPECT_EQ(world.Copies(), (Listing{{L"r«0001».doc", "2"},
                                       {L"r«0002».doc", "1"},
                                       {L"r«0101».doc", "2"},
                                       {L"r«0102».doc", "1"},
                                       {L"r«0201».doc", "2"},
                                       {L"r«0202».doc", "1"}}));
    for (const std::wstring& item : items) {
        const RunResult result = world.With([&](CPackage& engine) { engine.BackupItem(item); });
        EXPECT_EQ(Joined(result.lines), Joined(NoChange(world.host.Short(item))));
    }
}

TEST(LocationNumber, FileBelowAnApostrophe_HasANewOneInEachRun) {
    EngineFixture world;
    world.tree.File(L"O'Brien\\r.doc", "same", Day(1));
    world.List({L"O'Brien\\r.doc"});
    for (int run = 0; run < 3; ++run) world.ExpectRun(BackedUp(L"~\\O'Brien\\r.doc"));
    EXPECT_EQ(
        world.Copies(),
        (Listing{{L"r«0001».doc", "same"}, {L"r«0101».doc", "same"}, {L"r«0201».doc", "same"}}));
}

TEST(LocationNumber, FolderBelowAnApostrophe_KeepsItsNumber) {
    EngineFixture world;
    world.tree.File(L"O'Brien\\r.doc", "1", Day(1));
    world.tree.File(L"O'Brien\\O'Neil\\s.doc", "1", Day(1));
    world.List({L"O'Brien\\O'Neil\\", L"O'Brien\\"});
    world.Run();
    world.ExpectRun(NoChange(L"~\\O'Brien\\O'Neil\\") + NoChange(L"~\\O'Brien\\"));
}

TEST(LocationNumber, FoldersOfOneName_ShareIt) {
    EngineFixture world;
    world.tree.File(L"A\\Work\\a.txt", "a", Day(1));
    world.tree.File(L"B\\Work\\b.txt", "b", Day(2));
    world.List({L"A\\Work\\", L"B\\Work\\"});
    world.ExpectRun(BackedUp(L"~\\A\\Work\\", {L"~\\A\\Work\\a.txt"}) +
                    BackedUp(L"~\\B\\Work\\", {L"~\\B\\Work\\b.txt"}));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder},
                                       {L"Work«0001»\\b.txt", "b"},
                                       {L"Work«0002»", kFolder},
                                       {L"Work«0002»\\a.txt", "a"}}));
}

TEST(LocationNumber, FolderAndItsRule_ShareIt) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.List({L"Work\\", L"Work\\*"});
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt"}) + NoChange(L"~\\Work"));
}

TEST(LocationNumber, FileInADriveRoot_KeepsItsNumber) {
    EngineFixture world;
    const std::wstring drive = world.Path().substr(0, 2);
    MakeCopyFrom(world, L"00", world.Path());
    MakeCopyFrom(world, L"01", drive);
    int location = -2;
    world.With([&](CPackage& engine) { location = engine.LocationID(drive + L"\\a.txt"); });
    EXPECT_EQ(location, 1);
}

// The owner of the number is unknown, so every file of that name uses the next one.
TEST(LocationNumber, UnreadableComment_IsSkipped) {
    EngineFixture world;
    const Lines items{L"A\\r.doc", L"B\\r.doc", L"C\\r.doc"};
    world.List(items);
    for (int step = 1; step <= 2; ++step) {
        for (const std::wstring& item : items) {
            world.tree.File(item, std::to_string(step), Day(step));
        }
        if (step == 1) world.Run();
    }
    {
        const FileHandle held = HoldOpen(world.Store(L"r«0001».doc.vwc"));
        world.ExpectRun(BackedUp(L"~\\A\\r.doc") + BackedUp(L"~\\B\\r.doc") +
                        BackedUp(L"~\\C\\r.doc"));
    }
    EXPECT_EQ(world.Copies(), (Listing{{L"r«0001».doc", "1"},
                                       {L"r«0101».doc", "2"},
                                       {L"r«0102».doc", "1"},
                                       {L"r«0201».doc", "2"},
                                       {L"r«0202».doc", "1"},
                                       {L"r«0301».doc", "2"}}));
}

// What its second reading would give does not matter.
TEST(LocationNumber, CommentUnreadableOnce_IsSkipped) {
    EngineFixture world;
    world.List({L"A\\r.doc"});
    world.tree.File(L"A\\r.doc", "1", Day(1));
    world.Run();
    world.tree.File(L"A\\r.doc", "2", Day(2));
    world.files.FailNth(1, error_number::kPermissionDenied, [&](const FileOperation& operation) {
        return operation.call == FileCall::Read &&
               operation.path == world.Store(L"r«0001».doc.vwc");
    });
    world.ExpectRun(BackedUp(L"~\\A\\r.doc"));
    EXPECT_EQ(world.Copies(), (Listing{{L"r«0001».doc", "1"}, {L"r«0101».doc", "2"}}));
}

TEST(LocationNumber, FolderInPlaceOfTheComment_IsSkipped) {
    EngineFixture world;
    world.tree.Folder(L"Docs");
    world.tree.File(L"Store\\a«0001».txt");
    world.tree.Folder(L"Store\\a«0001».txt.vwc");
    world.tree.Folder(L"Store\\a«0101».txt.vwc");
    EXPECT_EQ(LocationOf(world, L"Docs\\a.txt"), 2);
}

// The network or the device is away: every comment would fail alike.
TEST(LocationNumber, DriveFails_IsReported_ItemIsSkipped) {
    EngineFixture world;
    world.tree.File(L"a.txt", "1", Day(1));
    world.tree.File(L"b.txt", "1", Day(1));
    world.List({L"a.txt", L"b.txt"});
    world.Run();
    world.tree.File(L"a.txt", "2", Day(2));
    world.files.FailFrom(1, error_number::kDeviceError, [&](const FileOperation& operation) {
        return operation.call == FileCall::Read &&
               operation.path == world.Store(L"a«0001».txt.vwc");
    });
    world.ExpectRun(Lines{L"! 57 LocationID ~\\Store\\a«0001».txt.vwc"} + NoChange(L"~\\b.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "1"}, {L"b«0001».txt", "1"}}));
}

void MakeVersions(const EngineFixture& world, const Lines& items, int step) {
    for (const std::wstring& item : items) {
        world.tree.File(item, world.ansi.Encode(item.substr(0, 1)) + std::to_string(step),
                        Day(step));
    }
}

// A's copies moved up while A was away; B must not move into their series and drive them out.
TEST(LocationNumber, OlderCopiesOfAnItem_KeepTheirNumber) {
    EngineFixture world;
    const Lines items{L"A\\r.doc", L"B\\r.doc"};
    world.List(items, 3);
    for (int step = 1; step <= 3; ++step) {
        MakeVersions(world, items, step);
        world.Run();
    }
    world.tree.Remove(L"A\\r.doc");
    world.Run();
    for (int step = 4; step <= 6; ++step) {
        MakeVersions(world, {L"B\\r.doc"}, step);
        world.Run();
        EXPECT_EQ(ReadBytes(world.Store(L"r«0002».doc")), "A3");
        EXPECT_EQ(ReadBytes(world.Store(L"r«0003».doc")), "A2");
        EXPECT_FALSE(Exists(world.Store(L"r«0001».doc")));
        EXPECT_EQ(ReadBytes(world.Store(L"r«0101».doc")), "B" + std::to_string(step));
    }
    MakeVersions(world, {L"A\\r.doc"}, 7);
    world.Run();
    EXPECT_EQ(ReadBytes(world.Store(L"r«0001».doc")), "A7");
}

TEST(LocationNumber, AnyOlderCopyOfAnItem_KeepsItsNumber) {
    for (const int number : {2, kHighestCopyNumber}) {
        EngineFixture world;
        world.tree.Folder(L"B");
        world.tree.File(CFilePackageName(L"r.doc", number, 0, L"Store"), "A");
        world.tree.File(L"Store\\r«0001».doc.vwc",
                        "Original Location:" + world.ansi.Encode(world.Path(L"A")) + "\r\n");
        EXPECT_EQ(LocationOf(world, L"B\\r.doc"), 1) << number;
    }
}

// Deleting copy 1 takes its comment along, which frees the number.
TEST(LocationNumber, NoCommentOfTheItem_IsFree) {
    EngineFixture world;
    world.tree.Folder(L"B");
    world.tree.File(L"Store\\r«0002».doc", "A1");
    EXPECT_EQ(LocationOf(world, L"B\\r.doc"), 0);
    world.tree.File(L"Store\\r«0001».doc.vwc",
                    "Original Location:" + world.ansi.Encode(world.Path(L"B")) + "\r\n");
    EXPECT_EQ(LocationOf(world, L"B\\r.doc"), 0);
    world.tree.Remove(L"Store\\r«0002».doc");
    world.tree.File(L"Store\\r«0001».doc.vwc",
                    "Original Location:" + world.ansi.Encode(world.Path(L"A")) + "\r\n");
    EXPECT_EQ(LocationOf(world, L"B\\r.doc"), 0);
}

}  // namespace
}  // namespace vw::test
