#include "app/IdleWatch.h"

#include "platform/Clock.h"
#include "platform/ProgramState.h"
#include "progress/BusyDialog.h"
#include "progress/TrayIcon.h"

namespace vw {

namespace {

constexpr std::uint64_t kPatienceMilliseconds = 1000;

}  // namespace

IdleWatch::IdleWatch(const Clock& clock, const ProgramState& state, Form& main, BusyDialog& busy,
                     TrayIcon& tray)
    : clock_(clock), state_(state), main_(main), busy_(busy), tray_(tray) {}

void IdleWatch::Check() {
    if (!UserIsLockedOut()) return since_.reset();
    const std::uint64_t now = clock_.Milliseconds();
    if (!since_) since_ = now;
    if (now - *since_ < kPatienceMilliseconds) return;
    since_.reset();
    GiveAccess();
}

bool IdleWatch::UserIsLockedOut() const {
    if (state_.silentRun || !main_.IsLoaded() || tray_.IsReachable()) return false;
    if (busy_.Window().IsVisible()) return false;
    return !main_.IsVisible() || !main_.IsFormEnabled();
}

void IdleWatch::GiveAccess() {
    if (!main_.IsVisible()) main_.Show();
    if (busy_.Window().IsLoaded()) busy_.Window().Show(ShowHow::Normal);
    // The main window waits until the user has closed the report that he wanted to keep.
    if (busy_.KeepsReport()) return;
    main_.EnableForm(true);
    main_.SetMousePointer(MousePointer::Default);
}

}  // namespace vw
