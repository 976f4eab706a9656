// `vw preview`: what it foretells is what the next backup does.

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/console/VwTest.h"

namespace vw::test {
namespace {

class VwPreview : public VwTest {
  protected:
    VwPreview() {
        tree.File(L"a.txt", "123", Day(1));
        tree.File(L"Work\\b.txt", "12345", Day(1));
        tree.File(L"Work\\Sub\\c.txt", "1", Day(1));
    }

    /// The lines of a preview but the last one, which names the free room.
    Texts Foretold(DWORD exitCode) {
        const Tree before = ReadTree(tree.Path());
        RunsTo(exitCode, L"preview " + List());
        EXPECT_EQ(ReadTree(tree.Path()), before);
        Texts shown = ShortLines();
        EXPECT_FALSE(shown.empty());
        if (!shown.empty()) shown.pop_back();
        return shown;
    }
};

TEST_F(VwPreview, NewItems_AreToBeCopiedWithTheirSize) {
    MakeList({L"a.txt", L"Work\\"});
    EXPECT_EQ(Foretold(0), (Texts{L"new copy: ~\\a.txt (1 file, 3 bytes)",
                                  L"new copy: ~\\Work\\ (2 files, 6 bytes)"}));
    EXPECT_TRUE(ShortLines().back().starts_with(L"room: ~\\Vault (9 bytes needed, "));
    MakeList({L"Work\\*"});
    EXPECT_EQ(Foretold(0), Texts{L"new copy: ~\\Work\\* (1 file, 5 bytes)"});
}

TEST_F(VwPreview, ItemLargerThanTheFreeRoom_EndsWith1004) {
    tree.File(L"large.bin", "1", Day(1));
    {
        // A file with a hole takes no room itself.
        constexpr LONGLONG kSize = LONGLONG{4} << 40;
        const FileHandle file(CreateFileW(tree.Path(L"large.bin").c_str(), GENERIC_WRITE, 0,
                                          nullptr, OPEN_EXISTING, 0, nullptr));
        LARGE_INTEGER end{};
        end.QuadPart = kSize;
        if (SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) == 0 ||
            SetEndOfFile(file.Get()) == 0) {
            GTEST_SKIP() << "no files with holes here";
        }
    }
    MakeList({L"large.bin"});
    RunsTo(error_number::kNotEnoughSpace, L"preview " + List());
    EXPECT_EQ(ShortLines().at(0), L"new copy: ~\\large.bin (1 file, 4.0 TiB)");
    EXPECT_TRUE(ShortLines().at(1).starts_with(L"too little room: ~\\Vault (4.0 TiB needed, "));
    EXPECT_TRUE(ReadTree(vault).empty());
}

TEST_F(VwPreview, UnchangedItems_AreToBeLeftAlone) {
    MakeList({L"a.txt", L"Work\\"});
    RunsTo(0, L"backup " + List());
    EXPECT_EQ(Foretold(0), (Texts{L"unchanged: ~\\a.txt", L"unchanged: ~\\Work\\"}));
}

TEST_F(VwPreview, FullSeries_NamesTheCopyThatLeaves) {
    MakeList({L"a.txt"}, 2);
    for (int step = 1; step <= 3; ++step) {
        tree.File(L"a.txt", "1", Day(step));
        RunsTo(0, L"backup " + List());
    }
    tree.File(L"a.txt", "1", Day(4));
    EXPECT_EQ(Foretold(0),
              Texts{L"new copy: ~\\a.txt (1 file, 1 byte; leaves: ~\\Vault\\a«0002».txt)"});
}

TEST_F(VwPreview, MissingAndRefusedItems_HaveTheCodesOfABackup) {
    MakeList({L"gone.txt"});
    EXPECT_EQ(Foretold(53), Texts{L"missing: ~\\gone.txt (the item does not exist)"});
    MakeList({L"Gone\\"});
    EXPECT_EQ(Foretold(76), Texts{L"missing: ~\\Gone\\ (the item does not exist)"});
    MakeList({L"Vault\\"});
    EXPECT_EQ(Foretold(75), Texts{L"refused: ~\\Vault\\ (it holds the destination or lies in it)"});
    MakeList({L"a.txt"}, 0);
    EXPECT_EQ(Foretold(1000), Texts{L"fails: ~\\a.txt (Copies are numbered from 1)"});
    MakeList({L"Work"});
    EXPECT_EQ(Foretold(53),
              Texts{L"fails: ~\\Work (it is a folder: a folder's line ends with \"\\\")"});
}

TEST_F(VwPreview, MissingDestination_EndsWith76) {
    MakeList({L"a.txt"});
    tree.Remove(L"Vault");
    RunsTo(76, L"preview " + List());
    EXPECT_EQ(Short(errors), L"error: ~\\Vault: The destination folder does not exist\r\n");
    EXPECT_TRUE(lines.empty());
}

TEST_F(VwPreview, ItemsThatShareASeriesOrLieInTheFuture_AreWarnedOf) {
    tree.File(L"Other\\Work\\b.txt", "1", Day(1));
    tree.File(L"future.txt", "1", {2099, 1, 1, 0, 0, 0});
    MakeList({L"Work\\", L"Other\\Work\\", L"future.txt", L"a.txt"});
    const Texts shown = Foretold(0);
    ASSERT_EQ(shown.size(), 7U);
    EXPECT_TRUE(shown[4].starts_with(L"warning: ~\\Work\\ ("));
    EXPECT_TRUE(shown[5].starts_with(L"warning: ~\\Other\\Work\\ ("));
    EXPECT_TRUE(shown[6].starts_with(L"warning: ~\\future.txt ("));
}

TEST_F(VwPreview, IncompleteCopy_IsToBeCompleted) {
    MakeList({L"Work\\"});
    RunsTo(0, L"backup " + List());
    const std::wstring comment = Stored(L"Work«0001».vwc");
    tree.File(comment, ReadBytes(comment) + "Incomplete\r\n");
    EXPECT_EQ(Foretold(0), Texts{L"incomplete: ~\\Work\\ (copy 1 is completed)"});
}

TEST_F(VwPreview, Json_HasAnObjectPerItemAndDestination) {
    MakeList({L"a.txt"});
    RunsTo(0, L"preview --json " + List());
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NE(lines[0].find(L"\"result\":\"new copy\",\"detail\":\"1 file, 3 bytes\",\"files\":1,"
                            L"\"bytes\":3,\"leaves\":\"\"}"),
              std::wstring::npos)
        << ToUtf8(lines[0]);
    EXPECT_TRUE(lines[1].starts_with(L"{\"event\":\"room\",\"path\":\""));
    EXPECT_NE(lines[1].find(L"\"needed\":3,\"free\":"), std::wstring::npos);
}

}  // namespace
}  // namespace vw::test
