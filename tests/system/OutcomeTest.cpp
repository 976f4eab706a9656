// What a script can read of a silent run: the last line of its report, and standard error.

#include <gmock/gmock.h>

#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class Outcome : public SystemTest {
  protected:
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "Dear Sir");
    const std::wstring gone = program.tree.Path(L"Home\\Gone.txt");

    std::wstring ListOf(std::vector<std::wstring> items) const {
        items.insert(items.begin(), L"BackupTo: " + vault);
        return program.List(L"List.vwl", items);
    }
    [[nodiscard]] static int Count(const std::wstring& text, const std::wstring& part) {
        int count = 0;
        for (std::size_t at = text.find(part); at != std::wstring::npos;
             at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    }
};

TEST_F(Outcome, ArabicRun_WritesArabicToStandardError) {
    program.SetSetting(L"Arabic", L"-1");
    RunsTo(53, L"/B " + ListOf({gone}));
    EXPECT_EQ(errors, L"تعذر العثور على المسار التالي\r\n" + gone + L"\r\n");
    EXPECT_THAT(outcome, HasSubstr(L"نُسخ: 0، لم يتغير: 0، فشل: 1"));
}

TEST_F(Outcome, OnePipeForBothStreams_HasEachErrorOnce) {
    const FileHandle lock(
        CreateFileW(letter.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ProgramStart start = program.With(L"/B " + ListOf({letter, gone}));
    start.streams = ProgramStart::Streams::OnePipe;
    ProgramRun run(start);
    EXPECT_EQ(run.WaitForEnd(), 70U);
    EXPECT_EQ(Count(run.Output(), L"Error 70 in line "), 1);
    EXPECT_EQ(Count(run.Output(), gone + L"\r\n"), 2) << "the two lines that the report always had";
    EXPECT_EQ(Count(run.Output(), L"Not found: "), 0);
}

TEST_F(Outcome, ItemWithTheNameOfADevice_IsMissingAndTheRunEnds) {
    program.SetSetting(L"BackupTo", vault);
    RunsTo(53, L"/B NUL");
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(errors, L"Not found: NUL\r\n");
}

}  // namespace
}  // namespace vw::test
