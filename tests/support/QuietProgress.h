#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ProgressReporter.h"

namespace vw::test {

/// Shows nothing; keeps the lines of the report.
class QuietProgress final : public ProgressReporter {
  public:
    void Msg(std::wstring_view, std::wstring_view) override {}
    void Report(std::wstring_view text, bool) override { report.emplace_back(text); }
    void BusyHide(bool) override {}

    std::vector<std::wstring> report;
};

}  // namespace vw::test
