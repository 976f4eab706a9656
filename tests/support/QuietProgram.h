#pragma once

#include "platform/ProgramControl.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {

/// The program around a part of it. Counts how often it is to end.
class QuietProgram final : public ProgramControl {
  public:
    void Ready(bool) override {}
    void frmUnload() override { ++ends; }
    [[noreturn]] void EndAtOnce() override { throw ProgramEnded{0}; }

    int ends = 0;
};

}  // namespace vw::test
