#include "platform/StandardStreams.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>

#include "tests/support/CapturedStreams.h"
#include "tests/support/ImportHook.h"

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

TEST_F(StandardStreamsTest, Error_BehindTheReportBeforeIt) {
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

TEST_F(StandardStreamsTest, NoStreams_WritesNothing) {
    for (const HANDLE none : {static_cast<HANDLE>(nullptr), INVALID_HANDLE_VALUE}) {
        const OtherStreams redirected(none, none);
        StandardStreams streams;
        streams.Report(L"report");
        streams.Error(L"error");
        streams.Transient(L"50 %");
        EXPECT_FALSE(streams.AreOne());
        EXPECT_FALSE(streams.OutputIsConsole());
    }
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

TEST_F(StandardStreamsTest, AreOne_OneHandle) {
    const OtherStreams redirected(log.Get(), log.Get());
    EXPECT_TRUE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsTest, AreOne_TwoHandlesOfOneFile) {
    const FileHandle again = Open(L"Log.txt");
    const OtherStreams redirected(log.Get(), again.Get());
    EXPECT_TRUE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsTest, AreOne_TwoFiles) {
    const FileHandle other = Open(L"Other.txt");
    const OtherStreams redirected(log.Get(), other.Get());
    EXPECT_FALSE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsTest, AreOne_FileAndPipe) {
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

TEST_F(StandardStreamsTest, AreOne_TwoHandlesOfOnePipe) {
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

TEST_F(StandardStreamsTest, AreOne_OneIsMissing) {
    {
        const OtherStreams redirected(log.Get(), nullptr);
        EXPECT_FALSE(StandardStreams().AreOne());
    }
    const OtherStreams redirected(nullptr, log.Get());
    EXPECT_FALSE(StandardStreams().AreOne());
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

/// A console of this process, whose screen is the standard output and standard error.
class StandardStreamsOfAConsole : public testing::Test {
  protected:
    void SetUp() override {
        // The one that the tests were started in.
        FreeConsole();
        ASSERT_NE(AllocConsole(), FALSE) << GetLastError();
        screen.Reset(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                 nullptr));
        ASSERT_TRUE(screen) << GetLastError();
        SetStdHandle(STD_OUTPUT_HANDLE, screen.Get());
        SetStdHandle(STD_ERROR_HANDLE, screen.Get());
    }
    void TearDown() override {
        screen.Reset();
        FreeConsole();
        AttachConsole(ATTACH_PARENT_PROCESS);
        SetStdHandle(STD_OUTPUT_HANDLE, outputBefore);
        SetStdHandle(STD_ERROR_HANDLE, errorBefore);
    }
    /// The beginning of a line of the screen.
    [[nodiscard]] std::wstring Shown(SHORT line, std::size_t units) const {
        std::wstring text(units, L'\0');
        DWORD count = 0;
        ReadConsoleOutputCharacterW(screen.Get(), text.data(), static_cast<DWORD>(units), {0, line},
                                    &count);
        text.resize(count);
        return text;
    }

    const HANDLE outputBefore = GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE errorBefore = GetStdHandle(STD_ERROR_HANDLE);
    FileHandle screen;
};

TEST_F(StandardStreamsOfAConsole, Text_IsShownAsItIs) {
    StandardStreams streams;
    streams.Report(L"Größe");
    streams.Error(L"error");
    EXPECT_EQ(Shown(0, 5), L"Größe");
    EXPECT_EQ(Shown(1, 5), L"error");
    EXPECT_TRUE(streams.OutputIsConsole());
    EXPECT_TRUE(streams.AreOne());
}

TEST_F(StandardStreamsOfAConsole, FirstQuestion_FindsTheStreams) {
    EXPECT_TRUE(StandardStreams().OutputIsConsole());
    EXPECT_TRUE(StandardStreams().AreOne());
}

TEST_F(StandardStreamsOfAConsole, Width_IsThatOfTheWindow) {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    ASSERT_NE(GetConsoleScreenBufferInfo(screen.Get(), &info), FALSE);
    SMALL_RECT window{5, 0, 44, 9};
    ASSERT_NE(SetConsoleWindowInfo(screen.Get(), TRUE, &window), FALSE) << GetLastError();
    EXPECT_EQ(StandardStreams().ConsoleWidth(), 40U);
}

ULONGLONG ticks = 0;
ULONGLONG WINAPI SetTicks() { return ticks; }

TEST_F(StandardStreamsOfAConsole, Report_WrittenOnceASecond) {
    const ImportHook count("GetTickCount64", &SetTicks);
    ticks = 100'000;
    StandardStreams streams;
    streams.Report(L"one");
    EXPECT_EQ(Shown(0, 3), L"one");
    ticks += 999;
    streams.Report(L"two");
    EXPECT_EQ(Shown(1, 3), L"   ");
    ++ticks;
    streams.Report(L"three");
    EXPECT_EQ(Shown(1, 3), L"two");
    EXPECT_EQ(Shown(2, 5), L"three");
}

BOOL hasParent = TRUE;
int attached = 0;
int times = 0;
BOOL isInterruptIgnored = FALSE;

BOOL WINAPI Attach(DWORD process) {
    EXPECT_EQ(process, static_cast<DWORD>(ATTACH_PARENT_PROCESS));
    attached += hasParent;
    times += hasParent;
    return hasParent;
}
BOOL WINAPI Leave() {
    --attached;
    return TRUE;
}
BOOL WINAPI IgnoreInterrupt(PHANDLER_ROUTINE, BOOL isIgnored) {
    isInterruptIgnored = isIgnored;
    return TRUE;
}

/// The console of the process that started this one, which has no streams of its own.
class StandardStreamsOfAParent : public StandardStreamsOfAConsole {
  protected:
    void SetUp() override {
        StandardStreamsOfAConsole::SetUp();
        SetStdHandle(STD_OUTPUT_HANDLE, nullptr);
        SetStdHandle(STD_ERROR_HANDLE, nullptr);
        attach.emplace("AttachConsole", &Attach);
        leave.emplace("FreeConsole", &Leave);
        ignore.emplace("SetConsoleCtrlHandler", &IgnoreInterrupt);
        hasParent = TRUE;
        attached = 0;
        times = 0;
        isInterruptIgnored = FALSE;
    }
    void TearDown() override {
        attach.reset();
        leave.reset();
        ignore.reset();
        StandardStreamsOfAConsole::TearDown();
    }

    const TempTree tree;
    const FileHandle file{CreateFileW(tree.Path(L"File.txt").c_str(), GENERIC_WRITE, 0, nullptr,
                                      CREATE_ALWAYS, 0, nullptr)};
    std::optional<ImportHook> attach;
    std::optional<ImportHook> leave;
    std::optional<ImportHook> ignore;
};

TEST_F(StandardStreamsOfAParent, NoStreams_WritesToItsConsole) {
    StandardStreams streams;
    streams.Report(L"report");
    streams.Error(L"error");
    EXPECT_EQ(Shown(0, 6), L"report");
    EXPECT_EQ(Shown(1, 5), L"error");
    EXPECT_TRUE(streams.AreOne());
    EXPECT_FALSE(streams.OutputIsConsole()) << "nothing can be taken back there";
    EXPECT_TRUE(isInterruptIgnored) << "what its user types must not end a backup";
    EXPECT_GT(times, 1);
    EXPECT_EQ(attached, 0) << "it is left each time";
}

TEST_F(StandardStreamsOfAParent, ParentWithoutAConsole_WritesNothing) {
    hasParent = FALSE;
    StandardStreams streams;
    streams.Report(L"report");
    streams.Error(L"error");
    EXPECT_EQ(Shown(0, 6), L"      ");
    EXPECT_FALSE(streams.AreOne());
    EXPECT_FALSE(isInterruptIgnored);
    EXPECT_EQ(attached, 0);
}

TEST_F(StandardStreamsOfAParent, ClosedHandle_WritesToItsConsole) {
    FileHandle closed{CreateFileW(tree.Path(L"Closed.txt").c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_ALWAYS, 0, nullptr)};
    SetStdHandle(STD_OUTPUT_HANDLE, closed.Get());
    closed.Reset();
    StandardStreams streams;
    streams.Report(L"report");
    streams.Flush();
    EXPECT_EQ(Shown(0, 6), L"report");
}

TEST_F(StandardStreamsOfAParent, OutputAlone_ErrorsAreWrittenNowhere) {
    SetStdHandle(STD_OUTPUT_HANDLE, file.Get());
    StandardStreams streams;
    streams.Error(L"error");
    EXPECT_EQ(Shown(0, 5), L"     ");
    EXPECT_FALSE(streams.AreOne());
}

TEST_F(StandardStreamsOfAParent, ErrorsAlone_ReportIsWrittenNowhere) {
    SetStdHandle(STD_ERROR_HANDLE, file.Get());
    StandardStreams streams;
    streams.Report(L"report");
    streams.Flush();
    EXPECT_EQ(Shown(0, 6), L"      ");
    EXPECT_FALSE(streams.AreOne());
}

TEST_F(StandardStreamsOfAConsole, ErrorsInAFile_AreNotOne) {
    const TempTree tree;
    const FileHandle file(CreateFileW(tree.Path(L"Errors.txt").c_str(), GENERIC_WRITE, 0, nullptr,
                                      CREATE_ALWAYS, 0, nullptr));
    SetStdHandle(STD_ERROR_HANDLE, file.Get());
    EXPECT_FALSE(StandardStreams().AreOne());
    SetStdHandle(STD_ERROR_HANDLE, screen.Get());
    SetStdHandle(STD_OUTPUT_HANDLE, file.Get());
    StandardStreams streams;
    EXPECT_FALSE(streams.AreOne());
    EXPECT_FALSE(streams.OutputIsConsole());
}

}  // namespace
}  // namespace vw::test
