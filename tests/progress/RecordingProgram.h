#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "progress/BusyDialog.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {

using Calls = std::vector<std::string>;

/// The program around the busy dialog. Records the calls that it receives.
class RecordingProgram final : public ProgramControl {
  public:
    explicit RecordingProgram(const ProgramState& state) : state_(state) {}

    void Ready(bool flag) override {
        EXPECT_TRUE(flag);
        EXPECT_TRUE(state_.cancel.IsRequested()) << "the flag comes first";
        EXPECT_FALSE(dialog->KeepsReport()) << "unticked before";
        calls.emplace_back("ready");
    }
    void frmUnload() override { calls.emplace_back("end"); }
    [[noreturn]] void EndAtOnce() override { throw ProgramEnded{0}; }
    [[nodiscard]] BusyDialog::Surroundings Surroundings() {
        return {
            .program = *this,
            .showIcon = [this](bool on) { calls.emplace_back(on ? "load icon" : "unload icon"); },
            .showMainWindow = [this] { calls.emplace_back("show main"); }};
    }

    Calls calls;
    BusyDialog* dialog = nullptr;

  private:
    const ProgramState& state_;
};

}  // namespace vw::test
