// `vw backup`: what it copies, says and logs, and how it ends.

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/console/VwTest.h"
#include "tests/support/WineBridge.h"

namespace vw::test {
namespace {

class VwBackup : public VwTest {
  protected:
    VwBackup() {
        tree.File(L"a.txt", "123", Day(1));
        tree.File(L"Work\\b.txt", "12345", Day(1));
        tree.File(L"Work\\Sub\\c.txt", "1", Day(1));
    }

    [[nodiscard]] Texts LogFiles() const {
        Texts names;
        for (const auto& [name, node] : ReadTree(tree.Path(L"Logs"))) names.push_back(name);
        return names;
    }
};

TEST_F(VwBackup, NewItems_AreCopiedAndReportedWithTheirSize) {
    MakeList({L"a.txt", L"Work\\"});
    RunsTo(0, L"backup " + List());
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(Short(lines[0]), L"Backing up ~\\list.vwl");
    EXPECT_EQ(Short(lines[1]), L"copied: ~\\a.txt (1 file, 3 bytes)");
    EXPECT_EQ(Short(lines[2]), L"copied: ~\\Work\\ (2 files, 6 bytes)");
    EXPECT_TRUE(lines[3].starts_with(
        L"2 copied, 0 unchanged, 0 missing, 0 refused, 0 failed; 3 files, 9 bytes in "));
    EXPECT_EQ(ReadBytes(Stored(L"a«0001».txt")), "123");
    EXPECT_EQ(ReadBytes(Stored(L"Work«0001»\\Sub\\c.txt")), "1");
}

TEST_F(VwBackup, UnchangedItems_AreLeftAlone) {
    MakeList({L"a.txt", L"Work\\"});
    RunsTo(0, L"backup " + List());
    const Tree before = ReadTree(vault);
    RunsTo(0, L"backup " + List());
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(Short(lines[1]), L"unchanged: ~\\a.txt");
    EXPECT_EQ(Short(lines[2]), L"unchanged: ~\\Work\\");
    EXPECT_EQ(ReadTree(vault), before);
}

TEST_F(VwBackup, MissingItems_WithoutOption_KeepTheirCopies) {
    MakeList({L"a.txt", L"Work\\"});
    RunsTo(0, L"backup " + List());
    const Tree before = ReadTree(vault);
    tree.Remove(L"a.txt");
    RunsTo(error_number::kFileNotFound, L"backup " + List());
    EXPECT_EQ(Short(errors), L"error: ~\\a.txt: The item does not exist\r\n");
    EXPECT_EQ(Short(lines.at(1)), L"missing: ~\\a.txt");
    RunsTo(error_number::kFileNotFound, L"backup --keep-missing " + List());
    EXPECT_EQ(ReadTree(vault), before);

    RunsTo(error_number::kFileNotFound, L"backup --as-window " + List());
    EXPECT_FALSE(Exists(Stored(L"a«0001».txt")));
    EXPECT_TRUE(Exists(Stored(L"a«0002».txt")));

    tree.Remove(L"Work");
    MakeList({L"Work\\"});
    RunsTo(error_number::kPathNotFound, L"backup " + List());
    EXPECT_TRUE(Exists(Stored(L"Work«0001»")));
}

TEST_F(VwBackup, RefusedItem_EndsWith75) {
    MakeList({L"Vault\\"});
    RunsTo(error_number::kAccessError, L"backup " + List());
    EXPECT_EQ(Short(errors),
              L"error: ~\\Vault\\: The item holds the destination or lies in it\r\n");
    EXPECT_EQ(Short(lines.at(1)), L"refused: ~\\Vault\\");
}

TEST_F(VwBackup, MissingDestination_EndsWith76AndASentenceInEnglish) {
    MakeList({L"a.txt"});
    tree.Remove(L"Vault");
    RunsTo(error_number::kPathNotFound, L"backup " + List());
    EXPECT_EQ(Short(errors), L"error: ~\\Vault: The destination folder does not exist\r\n");
    EXPECT_FALSE(Exists(vault));
}

TEST_F(VwBackup, FileInUse_IsNamedAndTheOthersAreCopied) {
    MakeList({L"Work\\"});
    const FileHandle held(CreateFileW(tree.Path(L"Work\\b.txt").c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    RunsTo(error_number::kPermissionDenied, L"backup " + List());
    EXPECT_EQ(Short(errors), L"error: ~\\Work\\b.txt: Permission denied\r\n");
    EXPECT_EQ(Short(lines.at(1)), L"Files are missing, copy 1 is incomplete: ~\\Work\\");
    EXPECT_EQ(Short(lines.at(2)), L"copied: ~\\Work\\ (1 file, 1 byte, 1 failed)");
    EXPECT_EQ(ReadBytes(Stored(L"Work«0001»\\Sub\\c.txt")), "1");
}

TEST_F(VwBackup, ZeroCopies_FailInEnglish) {
    MakeList({L"a.txt"}, 0);
    RunsTo(error_number::kZeroCopyNumber, L"backup " + List());
    EXPECT_EQ(Short(errors), L"error: ~\\a.txt: Copies are numbered from 1\r\n");
}

TEST_F(VwBackup, Json_WritesOneObjectPerLine) {
    MakeList({L"a.txt", L"gone.txt"});
    RunsTo(error_number::kFileNotFound, L"backup --json " + List());
    ASSERT_EQ(lines.size(), 5U);
    for (const std::wstring& line : lines) {
        EXPECT_TRUE(line.starts_with(L"{\"event\":\"") && line.ends_with(L"}")) << ToUtf8(line);
    }
    EXPECT_TRUE(lines[0].starts_with(L"{\"event\":\"start\",\"list\":\""));
    EXPECT_NE(lines[1].find(L"a.txt\",\"result\":\"copied\",\"files\":1,\"bytes\":3,\"errors\":0}"),
              std::wstring::npos);
    EXPECT_NE(lines[2].find(L"\"reason\":\"The item does not exist\",\"code\":53}"),
              std::wstring::npos);
    EXPECT_NE(lines[3].find(L"\"result\":\"missing\""), std::wstring::npos);
    EXPECT_TRUE(lines[4].starts_with(
        L"{\"event\":\"end\",\"code\":53,\"copied\":1,\"unchanged\":0,\"missing\":1,"));
    EXPECT_EQ(Short(errors), L"error: ~\\gone.txt: The item does not exist\r\n");
}

TEST_F(VwBackup, Json_HasANoticeForWhatIsLineForPeople) {
    MakeList({L"Work\\"});
    const FileHandle held(CreateFileW(tree.Path(L"Work\\b.txt").c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    RunsTo(error_number::kPermissionDenied, L"backup " + List());
    const std::wstring notice = lines.at(1);
    EXPECT_EQ(Short(notice), L"Files are missing, copy 1 is incomplete: ~\\Work\\");
    tree.Remove(L"Vault");
    tree.Folder(L"Vault");

    RunsTo(error_number::kPermissionDenied, L"backup --json " + List());
    std::wstring escaped;
    for (const wchar_t unit : notice) escaped.append(unit == L'\\' ? 2 : 1, unit);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[2], L"{\"event\":\"notice\",\"text\":\"" + escaped + L"\"}");
}

TEST_F(VwBackup, Quiet_WritesErrorsOnly) {
    MakeList({L"a.txt", L"gone.txt"});
    RunsTo(error_number::kFileNotFound, L"backup --quiet " + List());
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(Short(errors), L"error: ~\\gone.txt: The item does not exist\r\n");
}

TEST_F(VwBackup, Log_HoldsLinesAndErrorsAndKeepsAsManyAsAsked) {
    MakeList({L"a.txt", L"gone.txt"});
    tree.File(L"Logs\\vw-2001-01-01-000000.log");
    tree.File(L"Logs\\vw-2002-01-01-000000.log");
    tree.File(L"Logs\\notes.log");
    RunsTo(error_number::kFileNotFound, L"backup --quiet --log Logs --keep 2 " + List());
    const auto names = LogFiles();
    ASSERT_EQ(names.size(), 3U);
    EXPECT_EQ(names[0], L"notes.log");
    EXPECT_EQ(names[1], L"vw-2002-01-01-000000.log");
    const std::wstring text = Short(FromUtf8(ReadBytes(tree.Path(L"Logs\\" + names[2]))));
    EXPECT_NE(text.find(L" copied: ~\\a.txt (1 file, 3 bytes)\r\n"), std::wstring::npos);
    EXPECT_NE(text.find(L" error: ~\\gone.txt: The item does not exist\r\n"), std::wstring::npos);
    EXPECT_TRUE(text.ends_with(L" s\r\n"));
}

TEST_F(VwBackup, LogThatCannotBeMade_StopsBeforeTheRun) {
    MakeList({L"a.txt"});
    tree.File(L"Logs");
    RunsTo(error_number::kPathNotFound, L"backup --log Logs " + List());
    EXPECT_TRUE(Short(errors).starts_with(L"error: ~\\Logs\\vw-"));
    EXPECT_TRUE(ReadTree(vault).empty());
}

TEST_F(VwBackup, ItemAboveTheDestinationLine_GoesToTheDefaultDestination) {
    if (!UnderWine() && Exists(L"C:\\Backup")) GTEST_SKIP() << "somebody keeps copies on C:";
    tree.File(L"list.vwl", ToUtf8(tree.Path(L"a.txt") + L"\r\nBackupTo: " + vault + L"\r\n"));
    RunsTo(error_number::kPathNotFound, L"backup " + List());
    EXPECT_EQ(errors, L"error: C:\\Backup: The destination folder does not exist\r\n");
}

}  // namespace
}  // namespace vw::test
