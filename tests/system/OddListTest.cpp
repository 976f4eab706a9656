// Lists that no editor of ours has written: read by the rules, and never a crash.

#include <gmock/gmock.h>

#include <random>

#include "platform/Utf8.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kMissing = ToUtf8(L"تأكد من توفر المجلد التالي");

class OddList : public SystemTest {
  protected:
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "Dear Sir");
    const std::string item = ToUtf8(letter);
    const std::string destination = "BackupTo: " + ToUtf8(vault);

    /// Backs up a list of these bytes from an empty folder.
    void RunsListTo(DWORD exitCode, std::string_view bytes) {
        ProgramStart start = program.With(L"/B " + program.tree.File(L"Odd.vwl", bytes));
        start.currentFolder = program.tree.Folder(L"Current");
        RunsTo(exitCode, start);
        EXPECT_EQ(ReadBytes(program.tree.Path(L"Odd.vwl")), bytes) << "the list has changed";
    }

    void ExpectLetterBackedUp() const {
        EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
        EXPECT_THAT(boxes, IsEmpty());
    }
};

TEST_F(OddList, WithoutAnEndOfTheLastLine) {
    RunsListTo(0, destination + "\r\n" + item);
    ExpectLetterBackedUp();
}

TEST_F(OddList, WithLineEndsOfOtherSystems) {
    RunsListTo(0, destination + "\n" + item + "\n");
    ExpectLetterBackedUp();
    RunsListTo(0, destination + "\r" + item + "\r");
    EXPECT_THAT(lines, ElementsAre(L"No change since last backup for the path:", letter));
}

TEST_F(OddList, OfSeveralItemsOnOneLine) {
    const std::string other = ToUtf8(program.tree.File(L"Home\\Other, one.txt"));
    RunsListTo(0, destination + ", \"" + other + "\" ,\t" + item + "\r\n");
    ExpectLetterBackedUp();
    EXPECT_THAT(InVault(), Contains(L"Other, one«0001».txt"));
}

TEST_F(OddList, OfNothing) {
    for (const std::string_view bytes : {"", "\r\n\r\n", ",,,\r\n,", " \t ", "\"\"", "\x1A"}) {
        RunsListTo(0, bytes);
        EXPECT_THAT(lines, IsEmpty());
        EXPECT_THAT(boxes, IsEmpty());
    }
}

TEST_F(OddList, EndsAtControlZ) {
    RunsListTo(0, destination + "\r\n" + item + "\r\n\x1ANo such file\r\n");
    ExpectLetterBackedUp();
}

TEST_F(OddList, WithAUtf8Mark) {
    const std::wstring arabic = program.tree.File(L"Home\\رسالة.txt", "salam");
    RunsListTo(0, "\xEF\xBB\xBF" + destination + "\r\n" + ToUtf8(arabic) + "\r\n");
    EXPECT_THAT(InVault(), Contains(L"رسالة«0001».txt"));
}

TEST_F(OddList, WithNulBytes) {
    using namespace std::string_literals;
    RunsListTo(53, "\0\r\nab\0cd\r\n"s + destination + "\r\n" + item + "\r\n\0\0"s);
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
}

TEST_F(OddList, WithALineOfAMegabyte) {
    const std::string longLine(1U << 20, 'x');
    RunsListTo(53, longLine + "\r\n" + destination + "\r\n" + item + "\r\n");
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
    EXPECT_EQ(lines.at(1), std::wstring(longLine.begin(), longLine.end()));
}

TEST_F(OddList, WithALongLineOfFolders) {
    std::string deep = item + "\\";
    for (int i = 0; i < 20000; ++i) deep += "folder\\";
    RunsListTo(76, destination + "\r\n" + deep + "\r\n" + item + "\r\n");
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
}

TEST_F(OddList, WithAQuotationMarkThatIsNeverClosed) {
    RunsListTo(53, destination + "\r\n" + item + "\r\n\"Home\r\nNo end");
    ExpectLetterBackedUp();
}

TEST_F(OddList, WithAnUnreadableCopiesCount) {
    RunsListTo(0,
               "Backages: many\r\nBackages: 70000\r\nBackages:\r\n" + destination + "\r\n" + item);
    ExpectLetterBackedUp();
}

// Its letters stand apart by NUL bytes, so it names nothing that exists.
TEST_F(OddList, InUtf16) {
    std::string bytes = "\xFF\xFE";
    for (const char letter8 : destination + "\r\n" + item + "\r\n") {
        bytes += letter8;
        bytes += '\0';
    }
    RunsListTo(53, bytes);
    EXPECT_THAT(InVault(), IsEmpty());
}

TEST_F(OddList, WithLinesThatNoFileSystemTakes) {
    RunsListTo(53, destination +
                       "\r\n<>|?\r\n:::\r\nC:\\a:b:c\r\n\\\\\r\n\\\\server\r\n\\\\?\\\r\n" + item +
                       "\r\n");
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
}

// Bytes without letters, so that no word of it can name a file of this machine.
TEST_F(OddList, OfGarbage) {
    std::mt19937 random(20240506);
    for (int round = 0; round < 2; ++round) {
        std::string bytes;
        for (int i = 0; i < 6000; ++i) {
            const auto byte = static_cast<unsigned char>(random());
            bytes += static_cast<char>(byte < 0x80 ? byte % 0x20 : byte);
        }
        for (char& byte : bytes) {
            if (byte == '\x1A') byte = ',';
        }
        RunsListTo(53, bytes + "\r\n" + destination + "\r\n" + item + "\r\n");
        EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
        program.tree.Remove(L"Vault");
        program.tree.Folder(L"Vault");
    }
}

}  // namespace
}  // namespace vw::test
