#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "platform/ErrorTrap.h"
#include "platform/ExitStatus.h"

namespace vw::test {

/// An error that was reported.
struct ToldError {
    int number = 0;
    std::wstring description;
    std::wstring path;
    std::wstring procedure;
    std::wstring kind;       ///< "Module", "Form" or "Class Module"
    std::wstring container;  ///< such as "MFileDosShell"
};

std::ostream& operator<<(std::ostream& stream, const ToldError& error);

/// Keeps the errors that are reported, in order, and notes them for the exit code as the program
/// does. Errors that the test never took fail it: no error may be reported that the test did not
/// plan.
class RecordedErrors : public ErrorSink {
  public:
    explicit RecordedErrors(ExitStatus& exitStatus) : exitStatus_(exitStatus) {}
    ~RecordedErrors() override;

    /// The errors since the last Take. They count as planned.
    [[nodiscard]] std::vector<ToldError> Take();

    /// The same when exactly one error is there; otherwise the test fails and an empty one is
    /// given.
    [[nodiscard]] ToldError TakeOne();

    /// The errors since the last Take, left where they are.
    [[nodiscard]] const std::vector<ToldError>& All() const noexcept { return errors_; }

    void Report(const Procedure& where, const RuntimeError& error) override;
    /// Errors beyond a limit, which get no box, are not recorded.
    void BeginLimit(int most) override;
    int EndLimit() override;

  private:
    ExitStatus& exitStatus_;
    std::vector<ToldError> errors_;
    int limits_ = 0;
    int most_ = 0;
    int told_ = 0;
};

}  // namespace vw::test
