#include "platform/ErrorReports.h"

#include "platform/ErrorAdvice.h"
#include "platform/ExitStatus.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgramState.h"

namespace vw {

void ErrorReports::Report(const Procedure& where, const RuntimeError& error) {
    exitStatus_.Note(error.Number());
    if (note_) note_(ErrorDetails(error));
    if (limits_ > 0 && ++told_ > most_ && !state_.silentRun) return;
    boxes_.Show({.text = ErrorBoxText(where, error, state_.language)});
}

void ErrorReports::BeginLimit(int most) {
    if (limits_++ > 0) return;
    most_ = most;
    told_ = 0;
}

int ErrorReports::EndLimit() { return --limits_ > 0 ? 0 : told_; }

}  // namespace vw
