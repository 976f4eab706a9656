// Lists that no editor of ours has written: read by the rules, and never a crash.

#include <gmock/gmock.h>

#include <random>

#include "platform/Utf8.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::IsSupersetOf;

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
};

// How a list is taken apart is tested below: one list here has something of everything.
TEST_F(OddList, FieldsOfEveryKind_AreRead) {
    using namespace std::string_literals;
    const std::string other = ToUtf8(program.tree.File(L"Home\\رسالة, one.txt"));
    const std::string longLine(1U << 20, 'x');
    RunsListTo(53, "\xEF\xBB\xBF" + destination + "\n,,\r\nBackages: many\rab\0cd\r\n"s + longLine +
                       ", \"" + other + "\" ,\t" + item + "\r\n\"No end\r\n\x1A" + item);
    EXPECT_THAT(InVault(), IsSupersetOf({L"Letter«0001».txt", L"رسالة, one«0001».txt"}));
    EXPECT_EQ(lines.at(3), std::wstring(longLine.begin(), longLine.end()));
}

// Its letters are separated by NUL bytes, so it names nothing that exists.
TEST_F(OddList, Utf16_NamesNothingThatExists) {
    std::string bytes = "\xFF\xFE";
    for (const char letter8 : destination + "\r\n" + item + "\r\n") {
        bytes += letter8;
        bytes += '\0';
    }
    RunsListTo(53, bytes);
    EXPECT_THAT(InVault(), IsEmpty());
}

TEST_F(OddList, InvalidPaths_AreReportedAsMissing) {
    RunsListTo(53, destination +
                       "\r\n<>|?\r\n:::\r\nC:\\a:b:c\r\n\\\\\r\n\\\\server\r\n\\\\?\\\r\n" + item +
                       "\r\n");
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
}

// Bytes without letters, so that no word of it can name a file of this machine.
TEST_F(OddList, Garbage_ValidLinesAreBackedUp) {
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
