// Standard streams that are a console: one of this process, or that of the process that started it.

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/StandardStreams.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

/// A console of this process, whose screen is the standard output and standard error.
class StandardStreamsOfAConsole : public testing::Test {
  protected:
    void SetUp() override {
        // A process has one console at most: that in which the tests were started is left.
        FreeConsole();
        if (AllocConsole() == FALSE) GTEST_SKIP() << "no console to be had";
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
        SetStdHandle(STD_INPUT_HANDLE, inputBefore);
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

    const HANDLE inputBefore = GetStdHandle(STD_INPUT_HANDLE);
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

SMALL_RECT shownPart{};
BOOL WINAPI AnswerScreen(HANDLE, PCONSOLE_SCREEN_BUFFER_INFO info) {
    info->srWindow = shownPart;
    return TRUE;
}

TEST_F(StandardStreamsOfAConsole, Width_IsThatOfTheWindow) {
    const ImportHook answer("GetConsoleScreenBufferInfo", &AnswerScreen);
    shownPart = {5, 0, 44, 9};
    EXPECT_EQ(StandardStreams().ConsoleWidth(), 40U);
    shownPart = {5, 0, 6, 9};
    EXPECT_EQ(StandardStreams().ConsoleWidth(), 2U);
    shownPart = {5, 0, 5, 9};
    EXPECT_EQ(StandardStreams().ConsoleWidth(), 80U) << "one column has no room for a text";
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
    for (const HANDLE none : {static_cast<HANDLE>(nullptr), INVALID_HANDLE_VALUE}) {
        SetStdHandle(STD_OUTPUT_HANDLE, none);
        SetStdHandle(STD_ERROR_HANDLE, none);
        StandardStreams streams;
        streams.Report(L"report");
        streams.Error(L"error");
        streams.Transient(L"50 %");
        EXPECT_EQ(Shown(0, 6), L"      ");
        EXPECT_FALSE(streams.AreOne());
        EXPECT_FALSE(streams.OutputIsConsole());
        EXPECT_FALSE(isInterruptIgnored);
        EXPECT_EQ(attached, 0);
    }
}

TEST_F(StandardStreamsOfAParent, ConsoleIsClosedMeanwhile_WritesNothing) {
    StandardStreams streams;
    EXPECT_TRUE(streams.AreOne());
    hasParent = FALSE;
    streams.Error(L"error");
    EXPECT_EQ(Shown(0, 5), L"     ");
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
