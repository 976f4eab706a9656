#include "platform/StandardStreams.h"

#include <gmock/gmock.h>

#include <string>

#include "tests/support/CapturedStreams.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t kHeldUnits = std::size_t{16} * 1024;

/// Other standard streams for this process until the end of the scope.
class OtherStreams {
  public:
    OtherStreams(HANDLE output, HANDLE error) {
        SetStdHandle(STD_OUTPUT_HANDLE, output);
        SetStdHandle(STD_ERROR_HANDLE, error);
    }
    OtherStreams(const OtherStreams&) = delete;
    OtherStreams& operator=(const OtherStreams&) = delete;
    ~OtherStreams() {
        SetStdHandle(STD_OUTPUT_HANDLE, outputBefore_);
        SetStdHandle(STD_ERROR_HANDLE, errorBefore_);
    }

  private:
    const HANDLE outputBefore_ = GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE errorBefore_ = GetStdHandle(STD_ERROR_HANDLE);
};

class StandardStreamsTest : public testing::Test {
  protected:
    /// One more handle of a file that is made when it is missing.
    [[nodiscard]] FileHandle Open(std::wstring_view name) const {
        return FileHandle(CreateFileW(tree.Path(name).c_str(), FILE_APPEND_DATA,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, 0,
                                      nullptr));
    }
    [[nodiscard]] std::string Log() const { return ReadBytes(tree.Path(L"Log.txt")); }

    const TempTree tree;
    const FileHandle log = Open(L"Log.txt");
};

TEST_F(StandardStreamsTest, Report_IsHeldUntilTheFlush) {
    const CapturedStreams captured;
    StandardStreams streams;
    streams.Report(L"one");
    streams.Report(L"two");
    EXPECT_THAT(captured.Output(), IsEmpty());
    streams.Flush();
    EXPECT_THAT(captured.Output(), ElementsAre(L"one", L"two"));
    streams.Flush();
    EXPECT_THAT(captured.Output(), ElementsAre(L"one", L"two"));
    EXPECT_THAT(captured.Errors(), IsEmpty());
}

TEST_F(StandardStreamsTest, End_WritesWhatIsHeld) {
    const CapturedStreams captured;
    StandardStreams().Report(L"held");
    EXPECT_THAT(captured.Output(), ElementsAre(L"held"));
}

TEST_F(StandardStreamsTest, HeldReport_WrittenAtSixteenThousandUnits) {
    const CapturedStreams captured;
    StandardStreams streams;
    const std::wstring line(kHeldUnits - 4, L'x');
    streams.Report(line);
    EXPECT_THAT(captured.Output(), IsEmpty()) << "with its line end it is two units too short";
    streams.Report(L"");
    EXPECT_THAT(captured.Output(), ElementsAre(line, L""));
}

TEST_F(StandardStreamsTest, Text_IsValidUtf8WithWindowsLineEnds) {
    const OtherStreams redirected(log.Get(), nullptr);
    StandardStreams streams;
    streams.Report(std::wstring(L"نسخة é ") + static_cast<wchar_t>(0xD83D));
    streams.Flush();
    EXPECT_EQ(Log(), "نسخة é \xEF\xBF\xBD\r\n") << "half a pair is no character";
}

TEST_F(StandardStreamsTest, Error_FollowsTheReportBeforeIt) {
    const OtherStreams redirected(log.Get(), log.Get());
    StandardStreams streams;
    streams.Report(L"report");
    streams.Error(L"error");
    streams.Report(L"rest");
    EXPECT_EQ(Log(), "report\r\nerror\r\n");
}

TEST_F(StandardStreamsTest, Error_WrittenToStandardErrorAlone) {
    const CapturedStreams captured;
    StandardStreams streams;
    streams.Error(L"error");
    EXPECT_THAT(captured.Errors(), ElementsAre(L"error"));
    EXPECT_THAT(captured.Output(), IsEmpty());
}

TEST_F(StandardStreamsTest, Transient_WrittenAtOnceWithoutALineEnd) {
    const OtherStreams redirected(log.Get(), nullptr);
    StandardStreams streams;
    streams.Transient(L"50 % ");
    EXPECT_EQ(Log(), "50 % ");
    streams.Report(L"report");
    streams.Transient(L"51 %");
    EXPECT_EQ(Log(), "50 % report\r\n51 %");
}

TEST_F(StandardStreamsTest, Streams_AreFoundAtTheFirstUse) {
    const FileHandle other = Open(L"Other.txt");
    const OtherStreams redirected(log.Get(), nullptr);
    StandardStreams streams;
    streams.Report(L"one");
    SetStdHandle(STD_OUTPUT_HANDLE, other.Get());
    streams.Report(L"two");
    streams.Flush();
    EXPECT_EQ(Log(), "one\r\ntwo\r\n");
}

TEST_F(StandardStreamsTest, ClosedHandle_IsNoStream) {
    FileHandle closed = Open(L"Closed.txt");
    const OtherStreams redirected(closed.Get(), log.Get());
    closed.Reset();
    StandardStreams streams;
    streams.Report(L"report");
    streams.Error(L"error");
    EXPECT_EQ(Log(), "error\r\n");
    EXPECT_FALSE(streams.AreOne());
}

TEST_F(StandardStreamsTest, AreOne_OneHandle_ReturnsTrue) {
    const OtherStreams redirected(log.Get(), log.Get());
    EXPECT_TRUE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsTest, AreOne_TwoHandlesOfOneFile_ReturnsTrue) {
    const FileHandle again = Open(L"Log.txt");
    const OtherStreams redirected(log.Get(), again.Get());
    EXPECT_TRUE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsTest, AreOne_TwoFiles_ReturnsFalse) {
    const FileHandle other = Open(L"Other.txt");
    const OtherStreams redirected(log.Get(), other.Get());
    EXPECT_FALSE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsTest, AreOne_FileAndPipe_ReturnsFalse) {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    ASSERT_NE(CreatePipe(&read, &write, nullptr, 0), FALSE);
    const FileHandle reader(read);
    const FileHandle writer(write);
    {
        const OtherStreams redirected(log.Get(), writer.Get());
        EXPECT_FALSE(StandardStreams().AreOne());
    }
    const OtherStreams redirected(writer.Get(), log.Get());
    EXPECT_FALSE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsTest, AreOne_TwoHandlesOfOnePipe_ReturnsTrue) {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    HANDLE again = nullptr;
    ASSERT_NE(CreatePipe(&read, &write, nullptr, 0), FALSE);
    const FileHandle reader(read);
    const FileHandle writer(write);
    ASSERT_NE(DuplicateHandle(GetCurrentProcess(), write, GetCurrentProcess(), &again, 0, FALSE,
                              DUPLICATE_SAME_ACCESS),
              FALSE);
    const FileHandle second(again);
    const OtherStreams redirected(writer.Get(), second.Get());
    EXPECT_TRUE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsTest, File_IsNoConsole) {
    const CapturedStreams captured;
    StandardStreams streams;
    EXPECT_FALSE(streams.OutputIsConsole());
    EXPECT_EQ(streams.ConsoleWidth(), 80U);
}

TEST_F(StandardStreamsTest, ReaderIsGone_WritingGoesOn) {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    ASSERT_NE(CreatePipe(&read, &write, nullptr, 0), FALSE);
    const FileHandle writer(write);
    CloseHandle(read);
    const OtherStreams redirected(writer.Get(), log.Get());
    StandardStreams streams;
    streams.Report(L"report");
    streams.Flush();
    streams.Error(L"error");
    EXPECT_EQ(Log(), "error\r\n");
}

}  // namespace
}  // namespace vw::test
