#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/System.h"

namespace vw {

class Form;
struct ProgramState;

/// The texts of the busy dialog: its message and the report of the work. The controls are updated
/// at intervals, so that a run of 100,000 files is not slowed down by windows that repaint.
class BusyTexts {
  public:
    BusyTexts(System& system, const ProgramState& state, Form& form)
        : system_(system), state_(state), form_(form) {}

    void SetMessage(std::wstring_view title, std::wstring_view message,
                    std::wstring_view subMessage);

    /// Adds a line to the report. The first line of new work begins a new report.
    void AddLine(std::wstring_view text);

    /// Everything reported so far, since the dialog was last loaded.
    [[nodiscard]] const std::wstring& Report() const noexcept { return report_; }
    [[nodiscard]] const std::wstring& Message() const noexcept { return message_; }

    /// Makes the report of a run whose dialog was closed the last report once that run is over.
    void EndClosedRun();

    /// The report of the dialog that was closed last.
    [[nodiscard]] const std::wstring& LastReport() const noexcept { return lastReport_; }

    /// Shows the last report once more, until new work begins.
    void ShowLastReport();

    void UpdateControls();

    /// Updates the controls when the interval since the last update is over.
    void UpdateControlsIfDue();

    /// The user or the program closes the dialog.
    void OnClose() noexcept;

    /// Whether the dialog was closed in a run that goes on, and has to stay closed.
    [[nodiscard]] bool IsClosedInRun() const noexcept { return closedInRun_; }

    /// The dialog is gone: its report is the last one from now on.
    void OnUnload();

  private:
    void EndShownAgain();

    System& system_;
    const ProgramState& state_;
    Form& form_;
    std::wstring title_;
    std::wstring message_;
    std::wstring subMessage_;
    std::wstring report_;
    std::wstring lastReport_;
    std::size_t shownUnits_ = 0;  ///< of the report, in its control
    std::uint64_t nextUpdate_ = 0;
    bool shownAgain_ = false;  ///< the report is that of earlier work
    bool closedInRun_ = false;
};

}  // namespace vw
