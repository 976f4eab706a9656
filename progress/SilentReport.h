#pragma once

#include <string_view>

#include "platform/ProgressReporter.h"

namespace vw {

class StandardStreams;

/// The report of a run without windows: its lines go to standard output, if there is one.
class SilentReport final : public ProgressReporter {
  public:
    explicit SilentReport(StandardStreams& streams) : streams_(streams) {}

    void Msg(std::wstring_view title, std::wstring_view message) override;
    void Report(std::wstring_view text, bool wait) override;
    /// Writes to standard error only: the report has its own line about it.
    void Failure(std::wstring_view text) override;
    void BusyHide(bool) override { Flush(); }
    /// Sends on what waits.
    void Flush();

  private:
    StandardStreams& streams_;
};

}  // namespace vw
