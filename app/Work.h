#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "app/RunRecord.h"
#include "engine/EngineProvider.h"
#include "platform/Date.h"
#include "platform/ErrorTrap.h"
#include "platform/ProgressReporter.h"
#include "platform/System.h"

namespace vw {

class SilentReport;
class WindowSet;
struct ProgramState;

/// The long work of the program and what is shown of it: in the busy dialog, or in the report of a
/// silent run. Counts what becomes of the items of a backup, and limits the boxes of its errors.
class Work final : public ProgressReporter {
  public:
    Work(System& system, ProgramState& state, SilentReport& report, EngineProvider engine);

    /// Sets the windows that show the work. They have to be set before it begins.
    void SetWindows(WindowSet* windows) noexcept { windows_ = windows; }

    /// Backs up the current list.
    void BackUpCurrentList();
    /// Backs up one item to the destination in use.
    void BackUpItem(std::wstring_view path);
    /// Does work that the user may cancel.
    void Run(const std::function<void()>& work);

    /// Cancels the work that is going on, for the end of the program.
    void Abort();
    /// Ends the record of a backup: its sum is reported once.
    void EndRun();

    /// Adds an error to the report of the work that it came in. In a silent run its box has written
    /// it to the standard streams.
    void NoteError(std::wstring_view details);

    void Msg(std::wstring_view title, std::wstring_view message) override;
    void Report(std::wstring_view text, bool wait) override;
    void Failure(std::wstring_view text) override;
    void OnItem(ItemEvent event, std::wstring_view path, const ItemSize& size) override;
    void OnItemStats(std::wstring_view path, std::uint64_t bytes, Date newest) override;
    void DuringCopy() override;
    void BusyHide(bool pause) override;
    [[nodiscard]] bool IsShown() const override;

  private:
    [[nodiscard]] ProgressReporter& Shown();
    void BackUp(std::wstring_view path, int items, const std::function<void()>& work);
    void ReportWarningsOfList();
    void EndErrors();

    System& system_;
    ProgramState& state_;
    SilentReport& report_;
    EngineProvider engine_;
    WindowSet* windows_ = nullptr;
    RunRecord run_;
    Date runBegan_ = kNoDate;
    std::optional<BoxLimit> boxLimit_;  ///< of the work that goes on
    bool isRunning_ = false;
    bool isNoting_ = false;
    std::uint64_t nextPainting_ = 0;
};

}  // namespace vw
