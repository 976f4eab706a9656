// `vw restore`: what comes back, and what is never overwritten.

#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/console/VerbTest.h"

namespace vw::test {
namespace {

class VwRestore : public VerbTest {
  protected:
    VwRestore() {
        MakeList({L"a.txt", L"Work\\"});
        for (int step = 1; step <= 3; ++step) {
            tree.File(L"a.txt", "a" + std::to_string(step), Day(step));
            tree.File(L"Work\\Sub\\b.txt", "b" + std::to_string(step), Day(step));
            RunsTo(0, L"backup " + List());
        }
    }
};

TEST_F(VwRestore, FileCopy_IsRestoredUnderItsName) {
    RunsTo(0, L"restore " + InQuotes(Stored(L"a«0001».txt")) + L" --to Back\\Deep");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\Deep\\a.txt")), "a3");
    EXPECT_EQ(ReadDate(tree.Path(L"Back\\Deep\\a.txt")), MakeDate(Day(3)));
    EXPECT_EQ(ShortLines(), Texts{L"restored: ~\\Vault\\a«0001».txt -> ~\\Back\\Deep\\a.txt "
                                  L"(2010-01-01 00:03:01)"});
}

TEST_F(VwRestore, OlderFolderCopy_SaysThatItsDateIsThatOfItsFiles) {
    RunsTo(0, L"restore " + InQuotes(Stored(L"Work«0002»")) + L" --to Back");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\Work\\Sub\\b.txt")), "b2");
    EXPECT_EQ(ShortLines(), Texts{L"restored: ~\\Vault\\Work«0002» -> ~\\Back\\Work "
                                  L"(2010-01-01 00:02:01, the date of its files)"});
}

TEST_F(VwRestore, ExistingTarget_IsNotTouched) {
    tree.File(L"Back\\a.txt", "mine", Day(9));
    const Tree before = ReadTree(tree.Path());
    RunsTo(58, L"restore " + InQuotes(Stored(L"a«0001».txt")) + L" --to Back");
    EXPECT_EQ(Short(errors), L"error: ~\\Back\\a.txt: It exists already\r\n");
    EXPECT_EQ(ReadTree(tree.Path()), before);
}

TEST_F(VwRestore, Overwrite_KeepsWhatNoCopyHasAsASafetyCopy) {
    tree.File(L"Back\\a.txt", "mine", Day(9));
    RunsTo(0, L"restore " + InQuotes(Stored(L"a«0001».txt")) + L" --to Back --overwrite");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\a.txt")), "a3");
    EXPECT_EQ(ReadBytes(Stored(L"a«0021».txt")), "mine");
    RunsTo(0, L"restore " + InQuotes(Stored(L"a«0021».txt")) + L" --to Back --overwrite");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\a.txt")), "mine");
    EXPECT_FALSE(Exists(Stored(L"a«0022».txt")));
}

TEST_F(VwRestore, OverwriteOfAFolder_KeepsItAsASafetyCopyAndItsOtherFiles) {
    tree.File(L"Back\\Work\\Sub\\b.txt", "mine", Day(9));
    tree.File(L"Back\\Work\\other.txt", "other", Day(9));
    RunsTo(0, L"restore " + InQuotes(Stored(L"Work«0001»")) + L" --to Back --overwrite");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\Work\\Sub\\b.txt")), "b3");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\Work\\other.txt")), "other");
    EXPECT_EQ(ReadBytes(Stored(L"Work«0021»\\Sub\\b.txt")), "mine");
}

TEST_F(VwRestore, OverwriteWhereTheSafetyCopyCannotBeMade_ChangesNothing) {
    const std::wstring target = tree.File(L"Back\\a.txt", "mine", Day(9));
    files.FailFrom(1, error_number::kDiskFull, [this](const FileOperation& operation) {
        return operation.call == FileCall::Copy && operation.to.starts_with(vault);
    });
    EXPECT_NE(RunVerb([&](Console& console) {
                  return Restore(console, {.source = Stored(L"a«0001».txt"),
                                           .asOf = {},
                                           .folder = tree.Path(L"Back"),
                                           .overwrite = true});
              }),
              0);
    EXPECT_EQ(ReadBytes(target), "mine");
}

TEST_F(VwRestore, FolderThatBelongsToAStoredCopy_IsRefused) {
    const Tree before = ReadTree(vault);
    RunsTo(75, L"restore " + InQuotes(Stored(L"a«0001».txt")) + L" --overwrite --to " +
                   InQuotes(Stored(L"Work«0002»")));
    EXPECT_EQ(Short(errors),
              L"error: ~\\Vault\\Work«0002»\\a.txt: This folder belongs to a stored copy\r\n");
    EXPECT_EQ(ReadTree(vault), before);
}

TEST_F(VwRestore, ListAsOfADate_RestoresTheNewestCopiesUpToIt) {
    RunsTo(0, L"restore " + List() + L" --to Back --as-of \"2010-01-01 00:02\"");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\a.txt")), "a2");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\Work\\Sub\\b.txt")), "b2");
    RunsTo(0, L"restore " + List() + L" --to Later --as-of 2010-01-01");
    EXPECT_EQ(ReadBytes(tree.Path(L"Later\\a.txt")), "a3");
}

TEST_F(VwRestore, ListAsOfADateBeforeAllCopies_EndsWith53) {
    RunsTo(53, L"restore " + List() + L" --to Back --as-of 2009-12-31");
    EXPECT_EQ(Short(errors),
              L"error: ~\\a.txt: No copy is of that date or older\r\n"
              L"error: ~\\Work\\: No copy is of that date or older\r\n");
    EXPECT_FALSE(Exists(tree.Path(L"Back")));
}

TEST_F(VwRestore, ListAsOfADate_IgnoresCopiesOfAnotherFolder) {
    tree.File(L"Other\\a.txt", "other", Day(4));
    MakeList({L"a.txt", L"Other\\a.txt"});
    RunsTo(0, L"backup " + List());
    MakeList({L"a.txt"});
    RunsTo(0, L"restore " + List() + L" --to Back --as-of 2010-02-01");
    EXPECT_EQ(ReadBytes(tree.Path(L"Back\\a.txt")), "a3");
}

TEST_F(VwRestore, CopyThatIsNotThereOrIsNone_EndsWithAnError) {
    RunsTo(53, L"restore " + InQuotes(Stored(L"a«0009».txt")) + L" --to Back");
    EXPECT_EQ(Short(errors), L"error: ~\\Vault\\a«0009».txt: File not found\r\n");
    RunsTo(52, L"restore a.txt --to Back");
    EXPECT_EQ(Short(errors), L"error: ~\\a.txt: This is the name of no copy\r\n");
    EXPECT_FALSE(Exists(tree.Path(L"Back")));
}

TEST_F(VwRestore, Json_NamesCopyAndPlace) {
    RunsTo(0, L"restore --json " + InQuotes(Stored(L"a«0002».txt")) + L" --to Back");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with(L"{\"event\":\"restored\",\"copy\":\""));
    EXPECT_TRUE(lines[0].ends_with(
        L"\"date\":\"2010-01-01 00:02:01\",\"dateOfFiles\":true,\"incomplete\":false}"))
        << ToUtf8(lines[0]);
}

}  // namespace
}  // namespace vw::test
