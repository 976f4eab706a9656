#pragma once

#include "console/BackupProgress.h"

namespace vw {

/// The progress of an engine that is only asked, or that copies back: nothing is shown but notices.
class SilentHost final : public ProgressReporter {
  public:
    explicit SilentHost(Console& console) : console_(console) {}

    void Msg(std::wstring_view, std::wstring_view) override {}
    void Report(std::wstring_view, bool) override {}
    void Notice(std::wstring_view text) override { console_.output.Line(text); }
    void BusyHide(bool) override {}

  private:
    Console& console_;
};

}  // namespace vw
