#pragma once

#include <string_view>

namespace vw {

class StandardStreams;

/// The report of a run without windows: its lines go to standard output, if there is one.
class SilentReport {
  public:
    explicit SilentReport(StandardStreams& streams) : streams_(streams) {}

    void Msg(std::wstring_view title, std::wstring_view message, std::wstring_view subMessage);
    void Report(std::wstring_view text);
    /// Writes to standard error what counts for the exit code and stands in the report already.
    void Failure(std::wstring_view text);
    /// Sends on what waits.
    void Flush();

  private:
    StandardStreams& streams_;
};

}  // namespace vw
