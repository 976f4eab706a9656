#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Handle.h"
#include "tests/system/ProgramWindows.h"

namespace vw::test {

/// How a program is started.
struct ProgramStart {
    /// What the program finds as standard output and standard error.
    enum class Streams {
        Pipes,       ///< pipes that the test reads
        OnePipe,     ///< one pipe for both, as "2>&1" makes it
        None,        ///< nothing at all, as when Explorer starts it
        BrokenPipe,  ///< a pipe that nobody reads any more
    };

    std::wstring program;          ///< path of the executable
    std::wstring arguments;        ///< what follows its name, as it is
    std::wstring currentFolder{};  ///< empty: that of the tests
    Streams streams = Streams::Pipes;
    std::wstring temporaryFolder{};  ///< empty: that of the tests
    /// How long it may take to do what is waited for: far longer than anything takes, also on a
    /// machine that is busy with other tests.
    ULONGLONG patience = 90'000;
};

/// Another process, from its start to its end: its output, its boxes and its exit code. Whatever is
/// waited for, boxes are remembered and, unless the test looks at them, answered with OK at once.
/// A process that is still there when the object goes is ended.
class ProgramRun {
  public:
    explicit ProgramRun(const ProgramStart& start);
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;
    ~ProgramRun();

    /// Waits until the process has ended and gives its exit code; fails the test and ends the
    /// process when it does not end. `answerBoxes` false leaves boxes to themselves.
    DWORD WaitForEnd(bool answerBoxes = true);

    /// Waits until all of these processes have ended, and reads the output of all of them
    /// meanwhile: one that can write no further keeps its destination from the others.
    static void WaitForAll(const std::vector<ProgramRun*>& runs);

    /// Whether the process is there for all of this time. Boxes are left to themselves.
    [[nodiscard]] bool StaysFor(DWORD milliseconds);

    [[nodiscard]] bool HasEnded() const;

    /// Waits until the process has written more than its standard output takes, and so can go no
    /// further before the test takes that; fails the test when it ends or never writes so much.
    void WaitForFullOutput();

    /// Waits for a box that was not seen before; fails the test when none comes.
    Box WaitForBox();

    /// Presses a button and waits until the box is gone.
    void Answer(const Box& box, int button = IDOK);

    /// Waits until the process has a window of a class that begins like this. Null, without a
    /// failure, when the process ends before.
    HWND WaitForWindow(std::wstring_view classBeginning);
    /// The same for a window that is shown.
    HWND WaitForVisibleWindow(std::wstring_view classBeginning);

    /// Closes the window of the notification icon; gives the exit code.
    DWORD EndByIcon();

    /// Ends the process as the system's task manager does.
    void Terminate();

    [[nodiscard]] DWORD ProcessId() const noexcept { return processId_; }

    /// Every box so far that was answered or waited for.
    [[nodiscard]] const std::vector<Box>& Boxes() const noexcept { return boxes_; }

    /// What it has written so far, as bytes and as text.
    [[nodiscard]] const std::string& OutputBytes() const noexcept { return output_.bytes; }
    [[nodiscard]] std::wstring Output() const;
    [[nodiscard]] std::wstring Errors() const;

    /// The lines of its standard output.
    [[nodiscard]] std::vector<std::wstring> Lines() const;

  private:
    struct Pipe {
        KernelHandle read;
        KernelHandle write;
        std::string bytes;
    };

    static void Open(Pipe& pipe);
    static void Collect(Pipe& pipe);
    void Collect();
    void SeeBoxes(bool answer);
    HWND WaitForWindowThat(std::wstring_view classBeginning, bool isVisible);
    void FailAndEnd(const char* what);

    ULONGLONG patience_;
    DWORD processId_ = 0;
    KernelHandle process_;
    Pipe output_;
    Pipe errors_;
    std::vector<Box> boxes_;
};

}  // namespace vw::test
