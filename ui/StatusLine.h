#pragma once

#include <string>
#include <string_view>

namespace vw {

class Form;

/// The text of sbrStatus in the main window. How the last run ended stays until the next one ends;
/// a notice is shown before it until it is withdrawn.
class StatusLine {
  public:
    explicit StatusLine(Form& main) : main_(main) {}

    /// Shows one sentence in the window's language; an empty one withdraws the last notice.
    void ShowNotice(std::wstring_view text);

    /// Shows how a run ended and withdraws the notice. `failed` gives the line its warning colour.
    void ShowOutcome(std::wstring_view text, bool failed);

  private:
    void Update();

    Form& main_;
    std::wstring notice_;
    std::wstring outcome_;
    bool failed_ = false;
};

}  // namespace vw
