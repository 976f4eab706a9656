#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "platform/ExitStatus.h"
#include "platform/ProcessExit.h"
#include "platform/System.h"
#include "platform/SystemCodePage.h"
#include "platform/Win32FileSystem.h"
#include "tests/support/FakeMessageBoxes.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/RecordedErrors.h"
#include "tests/support/ScriptedPump.h"
#include "tests/support/SteadyDisk.h"
#include "tests/support/TestClock.h"

namespace vw::test {

/// What the end of the program is in a test. It is no std::exception, so that no error trap takes
/// it: catch it with EXPECT_THROW or by this type.
struct ProgramEnded {
    int exitCode;
};

/// Ends the test's call instead of the process. A window procedure lets no exception out: a test
/// asks with Take() behind it.
class ThrowingProgramEnd final : public ProcessExit {
  public:
    [[noreturn]] void End(int exitCode) override {
        exitCode_ = exitCode;
        throw ProgramEnded{exitCode};
    }
    /// The exit code if the program has ended since the last call.
    [[nodiscard]] std::optional<int> Take() noexcept { return std::exchange(exitCode_, {}); }

  private:
    std::optional<int> exitCode_;
};

/// A code page that a test can change: 1256 (Arabic) at the start, so that Arabic names survive in
/// lists and comments whatever the machine's own code page is.
class TestCodePage final : public AnsiCodec {
  public:
    TestCodePage() { Use(1256); }

    void Use(unsigned number, unsigned before = 0) {
        page_ = std::make_unique<CodePage>(number, before);
    }

    [[nodiscard]] std::string Encode(std::wstring_view text) const override {
        return page_->Encode(text);
    }
    [[nodiscard]] bool IsUnicode() const override { return page_->IsUnicode(); }
    [[nodiscard]] std::wstring Decode(std::string_view bytes) const override {
        return page_->Decode(bytes);
    }

  private:
    std::unique_ptr<CodePage> page_;
};

/// A whole world for the layers above: the real disk (which can be made to fail), and doubles for
/// windows, boxes, clock and the end of the process. Every test makes its own. When it is
/// destroyed, errors that the test did not take and planned boxes that did not come fail the test.
class TestEnvironment {
  public:
    /// The real disk.
    Win32FileSystem disk;
    SteadyDisk steadyDisk{disk};
    /// The disk as the code under test sees it: `disk`, with faults on request.
    FaultyFileSystem files{steadyDisk};

    TestClock clock;
    ScriptedPump pump{clock};
    FakeMessageBoxes boxes;
    ExitStatus exitStatus;
    RecordedErrors errors{exitStatus};
    ThrowingProgramEnd programEnd;
    TestCodePage ansi;

    System system{files, pump, boxes, errors, exitStatus, programEnd, clock, ansi};

    /// The same world with another file system, which has to outlive it.
    [[nodiscard]] System With(FileSystem& other) {
        return {other, pump, boxes, errors, exitStatus, programEnd, clock, ansi};
    }
};

}  // namespace vw::test
