// `vw check`: each fault is planted, and exactly that one is found.

#include <algorithm>

#include "fsutil/WorkingName.h"
#include "platform/Handle.h"
#include "platform/ProcessTag.h"
#include "platform/Utf8.h"
#include "tests/console/VwTest.h"

namespace vw::test {
namespace {

class VwCheck : public VwTest {
  protected:
    VwCheck() {
        tree.File(L"a.txt", "123", Day(1));
        tree.File(L"b.txt", "1", Day(2));
        tree.File(L"Work\\b.txt", "12345", Day(1));
        tree.File(L"Work\\c.txt", "123", Day(3));
        tree.File(L"Work\\Sub\\d.txt", "1234", Day(2));
        MakeList({L"a.txt", L"b.txt", L"Work\\"});
        RunsTo(0, L"backup " + List());
    }

    /// Runs the check; its findings must be these, in any order.
    void Finds(Texts expected, const std::wstring& options = L"") {
        RunsTo(expected.empty() ? 0 : 1, L"check " + options + L" " + List());
        EXPECT_EQ(errors, L"");
        Texts found = ShortLines();
        ASSERT_FALSE(found.empty());
        const std::wstring sum = std::to_wstring(expected.size()) + L" findings";
        EXPECT_TRUE(found.back().ends_with(sum)) << ToUtf8(found.back());
        found.pop_back();
        std::ranges::sort(found);
        std::ranges::sort(expected);
        EXPECT_EQ(found, expected);
    }

    /// Each of the two files has the comment of the other one afterwards.
    void SwapComments() const {
        const std::string first = ReadBytes(Stored(L"a«0001».txt.vwc"));
        tree.File(Stored(L"a«0001».txt.vwc"), ReadBytes(Stored(L"b«0001».txt.vwc")));
        tree.File(Stored(L"b«0001».txt.vwc"), first);
    }

    const std::wstring work_ = L"Work«0001»\\";
};

TEST_F(VwCheck, FreshCopies_AreClean) {
    Finds({});
    Finds({}, L"--content");
}

TEST_F(VwCheck, FlippedByte_IsFoundByContentOnly) {
    tree.File(Stored(work_ + L"b.txt"), "12X45", Day(1));
    Finds({});
    Finds({L"content: ~\\Vault\\Work«0001»\\b.txt (not the bytes of ~\\Work\\b.txt)"},
          L"--content");
}

TEST_F(VwCheck, FlippedByteOfAFileItem_IsFound) {
    tree.File(Stored(L"a«0001».txt"), "12X", Day(1));
    Finds({L"content: ~\\Vault\\a«0001».txt (not the bytes of ~\\a.txt)"}, L"--content");
}

TEST_F(VwCheck, FlippedByteInAnOlderCopy_IsFoundOnce) {
    tree.File(L"Work\\b.txt", "123456", Day(4));
    RunsTo(0, L"backup " + List());
    tree.File(L"Work\\b.txt", "1234567", Day(5));
    RunsTo(0, L"backup " + List());
    Finds({}, L"--content");
    tree.File(Stored(L"Work«0002»\\c.txt"), "12X", Day(3));
    Finds({L"content: ~\\Vault\\Work«0002»\\c.txt (not the bytes of ~\\Work\\c.txt)"},
          L"--content");
}

TEST_F(VwCheck, FlippedByteOfAFileThatTheItemLost_IsFoundBetweenTheCopies) {
    tree.File(L"Work\\b.txt", "123456", Day(4));
    RunsTo(0, L"backup " + List());
    tree.Remove(L"Work\\c.txt");
    tree.File(L"Work\\b.txt", "1234567", Day(5));
    tree.File(Stored(L"Work«0002»\\c.txt"), "12X", Day(3));
    RunsTo(1, L"check --content " + List());
    EXPECT_EQ(ShortLines().at(1),
              L"content: ~\\Vault\\Work«0002»\\c.txt (not the bytes of "
              L"~\\Vault\\Work«0001»\\c.txt)");
}

TEST_F(VwCheck, TruncatedFile_IsFound) {
    tree.File(Stored(work_ + L"c.txt"), "12", Day(3));
    Finds(
        {L"differs: ~\\Work\\c.txt (3 bytes, 2010-01-01 00:03:01; the copy: 2 bytes, "
         L"2010-01-01 00:03:01)"});
}

TEST_F(VwCheck, TruncatedFile_IsFoundThoughTheItemChangedSince) {
    tree.File(Stored(work_ + L"c.txt"), "12", Day(3));
    tree.File(L"Work\\b.txt", "new", Day(9));
    RunsTo(1, L"check " + List());
    EXPECT_TRUE(ShortLines().at(0).starts_with(L"differs: ~\\Work\\c.txt ("));
    EXPECT_EQ(ShortLines().at(1), L"due: ~\\Work\\ (changed since copy 1, 1 differences)");
    EXPECT_EQ(lines.size(), 3U);
}

TEST_F(VwCheck, PartialCopy_IsFound) {
    tree.Remove(Stored(work_ + L"Sub\\d.txt"));
    tree.Remove(Stored(work_ + L"c.txt"));
    Finds({L"not-in-copy: ~\\Work\\Sub\\d.txt (4 bytes, 2010-01-01 00:02:01)",
           L"not-in-copy: ~\\Work\\c.txt (3 bytes, 2010-01-01 00:03:01)"});
}

TEST_F(VwCheck, CopyThatIsMarkedIncomplete_IsFoundOnce) {
    tree.Remove(Stored(work_ + L"c.txt"));
    const std::wstring comment = Stored(L"Work«0001».vwc");
    tree.File(comment, ReadBytes(comment) + "Incomplete\r\n");
    Finds({L"incomplete: ~\\Vault\\Work«0001» (1 differences from the item)"});
}

TEST_F(VwCheck, OldDatedFile_IsFound) {
    tree.File(L"Work\\old.txt", "1", Day(0));
    Finds({L"not-in-copy: ~\\Work\\old.txt (1 byte, 2010-01-01 00:00:01)"});
}

TEST_F(VwCheck, EmptyFolderThatIsNotInTheCopy_IsFound) {
    tree.Folder(L"Work\\Empty");
    Finds({L"not-in-copy: ~\\Work\\Empty\\ (folder)"});
}

TEST_F(VwCheck, RenamedFile_IsFoundOnce) {
    MoveFileW(tree.Path(L"Work\\b.txt").c_str(), tree.Path(L"Work\\z.txt").c_str());
    Finds({L"renamed: ~\\Work\\z.txt (in the copy: b.txt)"});
}

TEST_F(VwCheck, DeletedFile_IsFound) {
    tree.Remove(L"Work\\b.txt");
    Finds({L"not-in-item: ~\\Work\\b.txt (5 bytes, 2010-01-01 00:01:01)"});
}

TEST_F(VwCheck, EditUnderADateInTheFuture_IsFound) {
    tree.File(L"Work\\future.txt", "1", {2099, 1, 1, 0, 0, 0});
    RunsTo(0, L"backup " + List());
    Finds({});
    tree.File(L"Work\\b.txt", "123456", Day(60));
    RunsTo(0, L"backup " + List());
    Finds(
        {L"differs: ~\\Work\\b.txt (6 bytes, 2010-01-01 01:00:01; the copy: 5 bytes, "
         L"2010-01-01 00:01:01)"});
}

TEST_F(VwCheck, SwappedComments_AreFound) {
    SwapComments();
    Finds({L"comment: ~\\Vault\\a«0001».txt (its date is not that of what was copied)",
           L"comment: ~\\Vault\\b«0001».txt (its date is not that of what was copied)"});
}

TEST_F(VwCheck, SwappedCommentsOfCopiesThatTheListDoesNotName_AreFound) {
    SwapComments();
    MakeList({L"Work\\"});
    Finds({L"comment: ~\\Vault\\a«0001».txt (its date is not that of the copy)",
           L"comment: ~\\Vault\\b«0001».txt (its date is not that of the copy)"});
}

TEST_F(VwCheck, CommentOfAnotherFolderOfTheName_IsFound) {
    tree.File(L"Other\\Work\\b.txt", "1", Day(7));
    MakeList({L"Other\\Work\\"});
    RunsTo(0, L"backup " + List());
    MakeList({L"Work\\"});
    RunsTo(1, L"check " + List());
    EXPECT_EQ(ShortLines().at(0),
              L"other-place: ~\\Vault\\Work«0001» (the comment says ~\\Other, the item is "
              L"~\\Work\\)");
}

TEST_F(VwCheck, CommentsWithoutCopiesAndTheReverse_AreFound) {
    tree.Remove(Stored(L"a«0001».txt.vwc"));
    tree.File(Stored(L"z«0001».txt.vwc"), "nothing");
    MakeList({L"b.txt", L"Work\\"});
    Finds({L"no-comment: ~\\Vault\\a«0001».txt (the copy has no comment)",
           L"comment-alone: ~\\Vault\\z«0001».txt.vwc (there is no such copy)"});
}

TEST_F(VwCheck, LockFileOfARun_IsIgnored) {
    tree.File(Stored(L"Vaultwright.vwlock"));
    Finds({});
}

TEST_F(VwCheck, ForeignContents_AreFound) {
    tree.File(Stored(L"notes.txt"));
    tree.Folder(Stored(L"Photos"));
    Finds({L"foreign: ~\\Vault\\Photos (no copy and no comment)",
           L"foreign: ~\\Vault\\notes.txt (no copy and no comment)"});
}

TEST_F(VwCheck, EntriesOfRuns_AreNotedByWhetherTheRunIsAlive) {
    WorkingName name;
    name.owner = ThisProcess();
    const std::wstring alive = FormatWorkingName(name, L"a");
    // A process id is in use again; the process of that time is gone.
    name.owner.processStart -= 1;
    const std::wstring dead = FormatWorkingName(name, L"b");
    tree.File(Stored(alive));
    tree.File(Stored(dead));
    RunsTo(0, L"check " + List());
    const Texts found = ShortLines();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0], L"working: ~\\Vault\\" + alive + L" (of a run that is going on)");
    EXPECT_EQ(found[1], L"left-over: ~\\Vault\\" + dead +
                            L" (of a run that was ended; the next one completes or removes it)");
}

TEST_F(VwCheck, SafetyCopies_AreNotedOnly) {
    tree.File(Stored(L"a«0021».txt"), "12", Day(0));
    RunsTo(0, L"check " + List());
    EXPECT_EQ(ShortLines().at(0), L"safety: ~\\Vault\\a«0021».txt");
}

TEST_F(VwCheck, ItemWithoutACopyOrWithoutItself_IsFound) {
    tree.File(L"new.txt");
    MakeList({L"a.txt", L"new.txt", L"gone.txt", L"Vault\\"});
    Finds({L"no-copy: ~\\new.txt (it has no copy 1)",
           L"missing: ~\\gone.txt (the item does not exist)",
           L"refused: ~\\Vault\\ (it holds the destination or lies in it)"});
}

TEST_F(VwCheck, ItemThatChangedSince_IsNotedOnly) {
    tree.File(L"Work\\new.txt", "1", Day(50));
    tree.File(L"a.txt", "1", Day(50));
    RunsTo(0, L"check " + List());
    EXPECT_EQ(ShortLines(), (Texts{L"due: ~\\a.txt (changed since copy 1, 1 differences)",
                                   L"due: ~\\Work\\ (changed since copy 1, 1 differences)",
                                   L"3 items checked, 0 findings"}));
}

TEST_F(VwCheck, DestinationThatIsAway_EndsWith76) {
    tree.Remove(L"Vault");
    RunsTo(76, L"check " + List());
    EXPECT_EQ(Short(errors), L"error: ~\\Vault: Path not found\r\n");
    EXPECT_FALSE(Exists(vault));
}

TEST_F(VwCheck, FileThatCannotBeRead_IsAnErrorOfItsOwn) {
    const FileHandle held(CreateFileW(tree.Path(L"Work\\b.txt").c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    RunsTo(70, L"check --content " + List());
    EXPECT_EQ(Short(errors), L"error: ~\\Work\\b.txt: Permission denied\r\n");
}

TEST_F(VwCheck, Json_NamesKindPathAndDetail) {
    tree.File(Stored(L"notes.txt"));
    RunsTo(1, L"check --json " + List());
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].starts_with(L"{\"event\":\"finding\",\"kind\":\"foreign\",\"path\":\""));
    EXPECT_EQ(lines[1], L"{\"event\":\"end\",\"items\":3,\"findings\":1}");
}

TEST_F(VwCheck, Check_ChangesNothing) {
    tree.File(L"Work\\new.txt", "1", Day(50));
    tree.File(Stored(L"notes.txt"));
    const Tree before = ReadTree(tree.Path());
    RunsTo(1, L"check --content " + List());
    EXPECT_EQ(ReadTree(tree.Path()), before);
}

}  // namespace
}  // namespace vw::test
