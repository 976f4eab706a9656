// What a person sees and types: the progress line of a terminal, and Ctrl+C.

#include <stdexcept>

#include "console/BackupProgress.h"
#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/console/VwTest.h"
#include "tests/support/OtherRun.h"

namespace vw::test {
namespace {

constexpr int kFiles = 500;
constexpr DWORD kPoll = 5;
constexpr int kTerminals = 20;
constexpr ULONGLONG kPatience = 120'000;

BOOL WINAPI Ignore(DWORD) { return TRUE; }

/// The program on a terminal that it shares with the test.
class VwTerminal : public VwTest {
  protected:
    VwTerminal() {
        // The terminal of the test before may still be on its way out.
        for (int tries = 0; tries < kTerminals && !screen_; ++tries) OpenTerminal();
        if (!screen_) throw std::runtime_error("the test has no terminal");
        for (int number = 0; number < kFiles; ++number) {
            tree.File(L"Work\\" + std::to_wstring(number), "12345678", Day(1));
        }
        MakeList({L"Work\\"});
        Clear();
    }

    void Start(const std::wstring& arguments) {
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = startup.hStdError = screen_.Get();
        if (errorsWrite_) startup.hStdError = errorsWrite_.Get();
        if (outputWrite_) startup.hStdOutput = outputWrite_.Get();
        std::wstring commandLine = L"\"" + BuiltConsole() + L"\" " + arguments;
        PROCESS_INFORMATION process{};
        ASSERT_NE(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                 nullptr, &startup, &process),
                  0);
        process_.Reset(process.hProcess);
        CloseHandle(process.hThread);
        errorsWrite_.Reset();
        outputWrite_.Reset();
    }

    /// Starts a verb that comes to a halt while it writes its results, which nobody takes yet. Its
    /// errors appear on the terminal.
    void StartAndHaltWhileWriting(const std::wstring& arguments) {
        constexpr DWORD kPipeBytes = 4096;
        HANDLE read = nullptr;
        HANDLE write = nullptr;
        ASSERT_NE(CreatePipe(&read, &write, &inherited_, kPipeBytes), 0);
        outputRead_.Reset(read);
        outputWrite_.Reset(write);
        SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
        Start(arguments);
        WaitUntil([this] {
            DWORD waiting = 0;
            PeekNamedPipe(outputRead_.Get(), nullptr, 0, nullptr, &waiting, nullptr);
            return waiting >= kPipeBytes;
        });
    }

    /// Takes all results until the program has ended.
    void TakeOutput() const {
        char text[4096];
        DWORD count = 0;
        while (ReadFile(outputRead_.Get(), text, sizeof text, &count, nullptr) != 0) continue;
    }

    /// Starts a backup that comes to a halt in the middle of a folder: one file cannot be read, and
    /// nobody takes the error yet.
    void StartAndHaltWhileCopying() {
        HANDLE read = nullptr;
        HANDLE write = nullptr;
        ASSERT_NE(CreatePipe(&read, &write, &inherited_, 1), 0);
        errorsRead_.Reset(read);
        errorsWrite_.Reset(write);
        SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
        held_.Reset(CreateFileW(tree.Path(L"Work\\7").c_str(), GENERIC_READ, 0, nullptr,
                                OPEN_EXISTING, 0, nullptr));
        Start(L"backup " + List());
        WaitUntil([this] {
            DWORD waiting = 0;
            PeekNamedPipe(errorsRead_.Get(), nullptr, 0, nullptr, &waiting, nullptr);
            return waiting > 0;
        });
        EXPECT_TRUE(IsCopying());
    }

    /// Takes the error, so that the run goes on.
    void LetGoOn() {
        char text[4096];
        DWORD count = 0;
        ReadFile(errorsRead_.Get(), text, sizeof text, &count, nullptr);
        EXPECT_NE(std::string(text, count).find("Permission denied"), std::string::npos);
    }

    template <class Condition>
    void WaitUntil(Condition condition) {
        const ULONGLONG start = GetTickCount64();
        while (!condition()) {
            if (!HasEnded() && GetTickCount64() - start < kPatience) continue;
            // It may have come true between the last look and the end of the program.
            if (condition()) return;
            FAIL() << (HasEnded() ? "the program has ended" : "nothing happens") << "\n"
                   << ToUtf8(Screen());
        }
    }

    [[nodiscard]] bool HasEnded() const {
        return WaitForSingleObject(process_.Get(), kPoll) == WAIT_OBJECT_0;
    }

    DWORD End() {
        const ULONGLONG start = GetTickCount64();
        while (!HasEnded()) {
            if (GetTickCount64() - start < kPatience) continue;
            ADD_FAILURE() << "the program does not end";
            TerminateProcess(process_.Get(), 1);
        }
        DWORD code = 0;
        GetExitCodeProcess(process_.Get(), &code);
        return code;
    }

    // Ctrl+C reaches everybody on the terminal; the test ignores it.
    static void Interrupt() {
        EXPECT_NE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), 0) << GetLastError();
    }

    /// Presses Ctrl+C and waits until the program has seen it.
    void InterruptOnce() {
        Interrupt();
        WaitUntil([this] {
            return Screen().find(L"Stopping. Press Ctrl+C again to stop at once.") !=
                   std::wstring::npos;
        });
    }

    /// The next run completes what an interrupted one left.
    void ExpectTheNextRunToComplete() {
        held_.Reset();
        RunsTo(0, L"backup " + List());
        EXPECT_EQ(ReadTree(Stored(L"Work«0001»")), ReadTree(tree.Path(L"Work")));
        EXPECT_FALSE(IsCopying());
        RunsTo(0, L"check --content " + List());
        EXPECT_EQ(lines, Texts{L"1 items checked, 0 findings"});
    }

    /// Whether a copy is being written.
    [[nodiscard]] bool IsCopying() const {
        WIN32_FIND_DATAW found{};
        const FindHandle search(FindFirstFileW(Stored(L"*.vwnew-*").c_str(), &found));
        return static_cast<bool>(search);
    }

    [[nodiscard]] HANDLE ScreenHandle() const { return screen_.Get(); }

    [[nodiscard]] std::wstring Screen() const {
        CONSOLE_SCREEN_BUFFER_INFO info{};
        GetConsoleScreenBufferInfo(screen_.Get(), &info);
        const DWORD units =
            static_cast<DWORD>(info.dwSize.X) * static_cast<DWORD>(info.dwCursorPosition.Y + 1);
        std::wstring text(units, L' ');
        DWORD count = 0;
        ReadConsoleOutputCharacterW(screen_.Get(), text.data(), units, {0, 0}, &count);
        text.resize(count);
        return text;
    }

    void Clear() const {
        CONSOLE_SCREEN_BUFFER_INFO info{};
        GetConsoleScreenBufferInfo(screen_.Get(), &info);
        DWORD count = 0;
        FillConsoleOutputCharacterW(
            screen_.Get(), L' ',
            static_cast<DWORD>(info.dwSize.X) * static_cast<DWORD>(info.dwSize.Y), {0, 0}, &count);
        SetConsoleCursorPosition(screen_.Get(), {0, 0});
    }

  private:
    // Whatever the test program was started from need not be a terminal that can be read.
    void OpenTerminal() {
        constexpr DWORD kPause = 50;
        FreeConsole();
        if (AllocConsole() == 0) Sleep(kPause);
        SetConsoleCtrlHandler(Ignore, TRUE);
        screen_.Reset(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited_, OPEN_EXISTING, 0,
                                  nullptr));
    }

    SECURITY_ATTRIBUTES inherited_{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    FileHandle screen_;
    KernelHandle process_;
    KernelHandle errorsRead_;
    KernelHandle errorsWrite_;
    KernelHandle outputRead_;
    KernelHandle outputWrite_;
    FileHandle held_;
};

TEST_F(VwTerminal, Backup_LeavesNothingOfItsProgress) {
    Start(L"backup " + List());
    EXPECT_EQ(End(), 0U);
    const std::wstring screen = Screen();
    EXPECT_EQ(screen.find(L"/" + std::to_wstring(kFiles) + L" files"), std::wstring::npos);
    EXPECT_NE(screen.find(L"1 copied, 0 unchanged, "), std::wstring::npos) << ToUtf8(screen);
}

TEST_F(VwTerminal, Progress_NamesItemFilesBytesRateAndFile) {
    const HANDLE before = GetStdHandle(STD_OUTPUT_HANDLE);
    SetStdHandle(STD_OUTPUT_HANDLE, ScreenHandle());
    {
        Output output;
        Console console(output);
        BackupProgress progress(console);
        progress.OnItem(ItemEvent::Started, L"C:\\Work\\", {});
        progress.OnItem(ItemEvent::Copying, L"C:\\Work\\", {.files = 3, .bytes = 6144});
        progress.OnFileCopied(2048);
        progress.Msg(L"", L"C:\\Work\\b.txt");
        const std::wstring shown = Screen();
        EXPECT_NE(shown.find(L"C:\\Work\\  1/3 files  2.0 KiB/6.0 KiB  "), std::wstring::npos)
            << ToUtf8(shown);
        EXPECT_NE(shown.find(L"/s  b.txt"), std::wstring::npos) << ToUtf8(shown);
    }
    SetStdHandle(STD_OUTPUT_HANDLE, before);
}

TEST_F(VwTerminal, Backup_Quiet_ShowsNothing) {
    Start(L"backup --quiet " + List());
    EXPECT_EQ(End(), 0U);
    EXPECT_EQ(Screen().find_first_not_of(L' '), std::wstring::npos);
}

TEST_F(VwTerminal, Interrupt_WhileWaitingForAnotherRun_Cancels) {
    const OtherRun other(vault);
    Start(L"backup " + List());
    WaitUntil(
        [this] { return Screen().find(L"Waiting for another backup") != std::wstring::npos; });
    InterruptOnce();
    EXPECT_EQ(End(), static_cast<DWORD>(error_number::kCancelled));
    EXPECT_NE(Screen().find(L"Cancelled. "), std::wstring::npos) << ToUtf8(Screen());
    EXPECT_FALSE(Exists(Stored(L"Work«0001»")));
}

TEST_F(VwTerminal, Interrupt_InAFolder_NextRunCompletesTheCopy) {
    StartAndHaltWhileCopying();
    InterruptOnce();
    LetGoOn();
    // The first error counts: that of the file.
    EXPECT_EQ(End(), static_cast<DWORD>(error_number::kPermissionDenied));
    EXPECT_FALSE(IsCopying());
    const std::wstring screen = Screen();
    EXPECT_NE(screen.find(L"Cancelled, copy 1 is incomplete: "), std::wstring::npos)
        << ToUtf8(screen);
    EXPECT_NE(screen.find(L"Cancelled. 1 copied, "), std::wstring::npos) << ToUtf8(screen);
    RunsTo(1, L"check " + List());
    EXPECT_TRUE(ShortLines().at(0).starts_with(L"incomplete: ~\\Vault\\Work«0001» ("));
    ExpectTheNextRunToComplete();
}

TEST_F(VwTerminal, Interrupt_InACheck_IsOneErrorHoweverManyItemsFollow) {
    for (const wchar_t* folder : {L"Work\\", L"Next\\", L"Last\\"}) {
        for (int number = 0; number < kFiles; ++number) {
            tree.File(folder + std::to_wstring(number), "12345678", Day(1));
        }
    }
    MakeList({L"Work\\", L"Next\\", L"Last\\"});
    RunsTo(0, L"backup " + List());
    for (int number = 0; number < kFiles; ++number) {
        tree.File(L"Work\\" + std::to_wstring(number), "other678", Day(1));
    }
    StartAndHaltWhileWriting(L"check --content " + List());
    InterruptOnce();
    TakeOutput();
    EXPECT_EQ(End(), static_cast<DWORD>(error_number::kCancelled));
    const std::wstring screen = Screen();
    const std::size_t first = screen.find(L"error: ");
    ASSERT_NE(first, std::wstring::npos) << ToUtf8(screen);
    EXPECT_EQ(screen.find(L"error: ", first + 1), std::wstring::npos) << ToUtf8(screen);
}

TEST_F(VwTerminal, SecondInterrupt_EndsTheRun_NextOneCompletes) {
    StartAndHaltWhileCopying();
    InterruptOnce();
    Interrupt();
    // It ends although nobody has taken its error.
    EXPECT_EQ(End(), static_cast<DWORD>(error_number::kCancelled));
    EXPECT_TRUE(IsCopying());
    EXPECT_FALSE(Exists(Stored(L"Work«0001»")));
    ExpectTheNextRunToComplete();
}

}  // namespace
}  // namespace vw::test
