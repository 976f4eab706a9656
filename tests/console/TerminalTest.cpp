// What a person sees and types: the progress line of a terminal, and Ctrl+C.

#include <stdexcept>

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/console/VwTest.h"

namespace vw::test {
namespace {

constexpr int kFiles = 500;
constexpr DWORD kPoll = 5;
constexpr ULONGLONG kPatience = 120'000;

BOOL WINAPI Ignore(DWORD) { return TRUE; }

/// The program on a terminal that it shares with the test.
class VwTerminal : public VwTest {
  protected:
    VwTerminal() {
        // Whatever the test program was started from need not be a terminal that can be read.
        FreeConsole();
        AllocConsole();
        SetConsoleCtrlHandler(Ignore, TRUE);
        screen_.Reset(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited_, OPEN_EXISTING, 0,
                                  nullptr));
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
        std::wstring commandLine = L"\"" + BuiltConsole() + L"\" " + arguments;
        PROCESS_INFORMATION process{};
        ASSERT_NE(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                 nullptr, &startup, &process),
                  0);
        process_.Reset(process.hProcess);
        CloseHandle(process.hThread);
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

    /// Whether a copy is being written.
    [[nodiscard]] bool IsCopying() const {
        WIN32_FIND_DATAW found{};
        const FindHandle search(FindFirstFileW(Stored(L"*.vwnew-*").c_str(), &found));
        return static_cast<bool>(search);
    }

    void WaitForCopying() {
        const ULONGLONG start = GetTickCount64();
        while (!IsCopying() && !HasEnded() && GetTickCount64() - start < kPatience) Sleep(1);
    }

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
    SECURITY_ATTRIBUTES inherited_{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    FileHandle screen_;
    KernelHandle process_;
};

TEST_F(VwTerminal, Backup_ShowsProgressAndLeavesNothingOfIt) {
    Start(L"backup " + List());
    bool shown = false;
    while (!HasEnded()) {
        shown = shown ||
                Screen().find(L"/" + std::to_wstring(kFiles) + L" files  ") != std::wstring::npos;
    }
    EXPECT_TRUE(shown);
    EXPECT_EQ(End(), 0U);
    const std::wstring screen = Screen();
    EXPECT_EQ(screen.find(L"/" + std::to_wstring(kFiles) + L" files"), std::wstring::npos);
    EXPECT_NE(screen.find(L"1 copied, 0 unchanged, "), std::wstring::npos) << ToUtf8(screen);
}

TEST_F(VwTerminal, Backup_OfQuietKindShowsNothing) {
    Start(L"backup --quiet " + List());
    EXPECT_EQ(End(), 0U);
    EXPECT_EQ(Screen().find_first_not_of(L' '), std::wstring::npos);
}

TEST_F(VwTerminal, Interrupt_CancelsTheRunAndItsCopyIsNoWholeOne) {
    Start(L"backup " + List());
    WaitForCopying();
    Interrupt();
    EXPECT_EQ(End(), static_cast<DWORD>(error_number::kCancelled));
    EXPECT_FALSE(IsCopying());
    EXPECT_NE(Screen().find(L"Cancelled. "), std::wstring::npos) << ToUtf8(Screen());
    RunsTo(1, L"check " + List());
    EXPECT_TRUE(ShortLines().at(0).starts_with(L"incomplete: ~\\Vault\\Work«0001» ("));
}

TEST_F(VwTerminal, SecondInterrupt_EndsTheRunAtOnce) {
    Start(L"backup " + List());
    WaitForCopying();
    Interrupt();
    Interrupt();
    EXPECT_EQ(End(), static_cast<DWORD>(error_number::kCancelled));
    RunsTo(0, L"backup " + List());
    EXPECT_EQ(ReadTree(Stored(L"Work«0001»")), ReadTree(tree.Path(L"Work")));
}

}  // namespace
}  // namespace vw::test
