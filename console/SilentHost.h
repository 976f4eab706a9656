#pragma once

#include "console/BackupProgress.h"

namespace vw {

/// The host of an engine that is only asked, or that copies back: nothing is shown but notices.
class SilentHost final : public RunHost {
  public:
    explicit SilentHost(Console& console) : console_(console) {}

    void Msg(std::wstring_view, std::wstring_view, std::wstring_view, bool, bool, bool) override {}
    void Report(std::wstring_view, bool) override {}
    void Notice(std::wstring_view text) override { console_.output.Line(text); }
    void BusyHide(bool) override {}
    void Ready(bool) override {}
    void DuringCopy() override {}
    [[noreturn]] void EndAtOnce() override { throw EndOfRun{}; }

  private:
    Console& console_;
};

}  // namespace vw
