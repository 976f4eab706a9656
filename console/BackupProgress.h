#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "console/Console.h"
#include "platform/ProgramControl.h"
#include "platform/ProgressReporter.h"

namespace vw {

/// Thrown where the engine ends the program: the destination is missing.
struct EndOfRun {};

/// The program as the engine sees it: it has no windows, and its end is an exception.
class ConsoleProgram final : public ProgramControl {
  public:
    void Ready(bool) override {}
    void frmUnload() override { throw EndOfRun{}; }
    [[noreturn]] void EndAtOnce() override { throw EndOfRun{}; }
};

/// What `vw backup` shows of a run: a line for each item, and on a terminal what is being copied.
class BackupProgress final : public ProgressReporter {
  public:
    explicit BackupProgress(Console& console);

    /// Writes the result of the last item and the sum of all.
    void Finish(int exitCode);

    /// Shows the progress anew when it is time to.
    void Tick();

    void Msg(std::wstring_view title, std::wstring_view message) override;
    void Report(std::wstring_view, bool) override {}
    void Notice(std::wstring_view text) override;
    void OnItem(ItemEvent event, std::wstring_view path, const ItemSize& size) override;
    void OnFileCopied(std::uint64_t bytes) override;
    void BusyHide(bool) override {}
    void DuringCopy() override { Tick(); }

  private:
    struct Counts {
        std::uint64_t copied = 0;
        std::uint64_t unchanged = 0;
        std::uint64_t missing = 0;
        std::uint64_t refused = 0;
        std::uint64_t failed = 0;
    };

    void Begin(std::wstring_view path);
    void End();
    [[nodiscard]] std::wstring ProgressText() const;

    Console& console_;
    bool isInItem_ = false;
    bool isCopying_ = false;
    std::wstring item_;
    std::string result_;
    ItemSize toDo_;
    ItemSize done_;
    std::wstring file_;
    int errorsBefore_ = 0;
    std::uint64_t copyingSince_ = 0;
    std::uint64_t begun_;
    std::uint64_t nextShow_ = 0;
    Counts counts_;
    ItemSize sum_;
};

}  // namespace vw
