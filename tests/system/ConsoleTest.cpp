// A silent run that was started from a command prompt.

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/NamedLock.h"
#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::HasSubstr;

/// A console of this process, as a command prompt has one.
class OwnConsole {
  public:
    OwnConsole() {
        FreeConsole();
        made_ = AllocConsole() != 0;
    }
    ~OwnConsole() {
        FreeConsole();
        SetStdHandle(STD_INPUT_HANDLE, input_);
        SetStdHandle(STD_OUTPUT_HANDLE, output_);
        SetStdHandle(STD_ERROR_HANDLE, error_);
    }
    OwnConsole(const OwnConsole&) = delete;
    OwnConsole& operator=(const OwnConsole&) = delete;

    [[nodiscard]] bool Stands() const noexcept { return made_; }

    [[nodiscard]] bool Has(DWORD process) const {
        std::vector<DWORD> processes(64);
        processes.resize(std::min<std::size_t>(
            processes.size(),
            GetConsoleProcessList(processes.data(), static_cast<DWORD>(processes.size()))));
        return std::find(processes.begin(), processes.end(), process) != processes.end();
    }

    /// All that it shows, without the ends of its lines.
    [[nodiscard]] std::wstring Text() const {
        const FileHandle screen(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                            OPEN_EXISTING, 0, nullptr));
        CONSOLE_SCREEN_BUFFER_INFO info{};
        GetConsoleScreenBufferInfo(screen.Get(), &info);
        std::wstring text(static_cast<std::size_t>(info.dwSize.X) *
                              static_cast<std::size_t>(info.dwCursorPosition.Y + 1),
                          L' ');
        DWORD read = 0;
        ReadConsoleOutputCharacterW(screen.Get(), text.data(), static_cast<DWORD>(text.size()),
                                    COORD{0, 0}, &read);
        text.resize(read);
        return text;
    }

  private:
    const HANDLE input_ = GetStdHandle(STD_INPUT_HANDLE);
    const HANDLE output_ = GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE error_ = GetStdHandle(STD_ERROR_HANDLE);
    bool made_ = false;
};

class Console : public SystemTest {};

TEST_F(Console, ShowsTheReport_MayBeClosedMeanwhile) {
    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "Dear Sir");
    const std::wstring list = program.List(L"List.vwl", {L"BackupTo: " + vault, letter});
    const OwnConsole console;
    if (!console.Stands()) GTEST_SKIP() << "no console to be had";
    ProgramStart start = program.With(L"/B " + list);
    start.streams = ProgramStart::Streams::None;
    std::optional<NamedLock> busy;
    ASSERT_TRUE(busy.emplace(L"destination", vault).TryTake());
    ProgramRun run(start);
    run.WaitForWindow(L"frmTrayIcon");
    EXPECT_TRUE(run.StaysFor(700));
    EXPECT_THAT(console.Text(), HasSubstr(L"Waiting for another backup"));
    EXPECT_FALSE(console.Has(run.ProcessId())) << "it would end with the console";
    busy.reset();
    EXPECT_EQ(run.WaitForEnd(), 0U);
    EXPECT_THAT(console.Text(), HasSubstr(L"Done."));
}

}  // namespace
}  // namespace vw::test
