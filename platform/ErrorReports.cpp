#include "platform/ErrorReports.h"

#include "platform/ExitStatus.h"
#include "platform/MsgBox.h"

namespace vw {

void ErrorReports::Tell(const Procedure& where, const RuntimeError& error) {
    exitStatus_.Note(error.Number());
    if (note_) note_(ErrorDetails(error));
    boxes_.MsgBox({.text = ErrorText(where, error)});
}

}  // namespace vw
