// `vw copies` and `vw diff`.

#include "platform/Utf8.h"
#include "tests/console/VwTest.h"
#include "tests/support/WineBridge.h"

namespace vw::test {
namespace {

class VwCopies : public VwTest {
  protected:
    VwCopies() {
        MakeList({L"a.txt", L"Work\\", L"Old.dir\\Inner\\"});
        for (int step = 1; step <= 2; ++step) {
            tree.File(L"a.txt", std::string(static_cast<std::size_t>(step), 'a'), Day(step));
            tree.File(L"Work\\b.txt", "12345", Day(step));
            tree.File(L"Old.dir\\Inner\\c.txt", "1", Day(step));
            RunsTo(0, L"backup " + List());
        }
    }
};

TEST_F(VwCopies, List_ShowsItemNumberDateSizeAndPlace) {
    RunsTo(0, L"copies " + List());
    EXPECT_EQ(ShortLines(),
              (Texts{L"N01  2010-01-01 00:02:01  1 file, 1 byte  Inner\\  from ~\\Old.dir",
                     L"N02  2010-01-01 00:01:01  1 file, 1 byte  Inner\\  from ~\\Old.dir",
                     L"N01  2010-01-01 00:02:01  1 file, 5 bytes  Work\\  from ~",
                     L"N02  2010-01-01 00:01:01  1 file, 5 bytes  Work\\  from ~",
                     L"N01  2010-01-01 00:02:01  1 file, 2 bytes  a.txt  from ~",
                     L"N02  2010-01-01 00:01:01  1 file, 1 byte  a.txt  from ~"}));
}

TEST_F(VwCopies, FolderAndItem_ShowsThoseAlone) {
    RunsTo(0, L"copies " + InQuotes(vault) + L" A.TXT");
    EXPECT_EQ(lines.size(), 2U);
    RunsTo(0, L"copies " + InQuotes(vault) + L" " + InQuotes(tree.Path(L"a.txt")));
    EXPECT_EQ(lines.size(), 2U);
    RunsTo(0, L"copies " + InQuotes(vault) + L" C:\\Elsewhere\\a.txt");
    EXPECT_TRUE(lines.empty());
}

TEST_F(VwCopies, Json_HasAnObjectPerCopy) {
    RunsTo(0, L"copies --json " + InQuotes(vault) + L" a.txt");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].starts_with(
        L"{\"event\":\"copy\",\"item\":\"a.txt\",\"folder\":false,\"location\":0,\"number\":1,"
        L"\"label\":\"N01\",\"date\":\"2010-01-01 00:02:01\",\"files\":1,\"bytes\":2,"))
        << ToUtf8(lines[0]);
}

TEST_F(VwCopies, FolderThatDoesNotExist_EndsWith76) {
    RunsTo(76, L"copies Nowhere");
    EXPECT_EQ(Short(errors), L"error: ~\\Nowhere: Path not found\r\n");
}

TEST_F(VwCopies, DefaultDestinationThatIsAway_EndsWith76AndIsNotMade) {
    if (!UnderWine() && Exists(L"C:\\Backup")) GTEST_SKIP() << "somebody keeps copies on C:";
    RunsTo(76, L"copies");
    EXPECT_EQ(errors, L"error: C:\\Backup: Path not found\r\n");
    EXPECT_FALSE(Exists(L"C:\\Backup"));
}

TEST_F(VwCopies, Diff_EqualCopyAndOriginal_EndsWithZero) {
    RunsTo(0, L"diff " + InQuotes(Stored(L"Work«0001»")));
    EXPECT_TRUE(lines.empty());
    RunsTo(0, L"diff " + InQuotes(Stored(L"a«0001».txt")));
}

TEST_F(VwCopies, Diff_NamesFilesAddedRemovedAndChanged) {
    tree.File(L"Work\\new.txt", "12", Day(5));
    tree.File(L"Work\\Sub\\deep.txt", "1", Day(5));
    tree.File(L"Work\\b.txt", "123", Day(5));
    tree.File(Stored(L"Work«0001»\\gone.txt"), "1", Day(1));
    RunsTo(1, L"diff " + InQuotes(Stored(L"Work«0001»")));
    EXPECT_EQ(ShortLines(),
              (Texts{L"added: new.txt (2 bytes, 2010-01-01 00:05:01)",
                     L"removed: gone.txt (1 byte, 2010-01-01 00:01:01)",
                     L"changed: b.txt (5 bytes, 2010-01-01 00:02:01 -> 3 bytes, 2010-01-01 "
                     L"00:05:01)",
                     L"added: Sub\\deep.txt (1 byte, 2010-01-01 00:05:01)"}));
}

TEST_F(VwCopies, Diff_TwoCopiesOrCopyAndPath_NamesTheDifferences) {
    RunsTo(1,
           L"diff " + InQuotes(Stored(L"a«0002».txt")) + L" " + InQuotes(Stored(L"a«0001».txt")));
    EXPECT_EQ(ShortLines(), Texts{L"changed: a«0002».txt (1 byte, 2010-01-01 00:01:01 -> 2 bytes, "
                                  L"2010-01-01 00:02:01)"});
    RunsTo(0, L"diff " + InQuotes(Stored(L"a«0001».txt")) + L" " + InQuotes(tree.Path(L"a.txt")));
    RunsTo(1, L"diff --json " + InQuotes(Stored(L"a«0002».txt")));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(
        lines[0].starts_with(L"{\"event\":\"difference\",\"change\":\"changed\",\"path\":"
                             L"\"a«0002».txt\",\"beforeBytes\":1,"))
        << ToUtf8(lines[0]);
}

TEST_F(VwCopies, Diff_NoCopyOrMissingPath_EndsWithAnError) {
    RunsTo(53, L"diff gone«0001».txt");
    EXPECT_EQ(Short(errors), L"error: ~\\gone«0001».txt: File not found\r\n");
    RunsTo(52, L"diff a.txt");
    tree.Remove(L"a.txt");
    RunsTo(53, L"diff " + InQuotes(Stored(L"a«0001».txt")));
    EXPECT_EQ(Short(errors), L"error: ~\\a.txt: File not found\r\n");
    tree.Remove(Stored(L"a«0001».txt.vwc"));
    RunsTo(53, L"diff " + InQuotes(Stored(L"a«0001».txt")));
    EXPECT_TRUE(Short(errors).starts_with(L"error: ~\\Vault\\a«0001».txt: No comment says"));
}

}  // namespace
}  // namespace vw::test
