#include "app/SilentWindows.h"

#include "platform/Clock.h"
#include "platform/RuntimeError.h"
#include "progress/BusyDialog.h"
#include "progress/TrayIcon.h"

namespace vw {

namespace {

// Nobody misses an icon for a second, and one that goes before it was read only startles.
constexpr std::uint64_t kMomentMilliseconds = 1000;

}  // namespace

SilentWindows::SilentWindows(const Clock& clock, TrayIcon& icon, BusyDialog& busy)
    : clock_(clock), icon_(icon), busy_(busy) {}

void SilentWindows::Begin() { due_ = clock_.Milliseconds() + kMomentMilliseconds; }

// A run that nobody is logged on for may find no desktop, and backs up all the same. A window that
// cannot be made is told by a box, which asks for the windows again.
void SilentWindows::Appear() {
    if (appearing_) return;
    appearing_ = true;
    if (!appeared_) {
        appeared_ = true;
        try {
            icon_.Load();
        } catch (const RuntimeError&) {
            isDesktopThere_ = false;
        }
    }
    if (isDesktopThere_) busy_.SendView();
    appearing_ = false;
}

void SilentWindows::AppearIfDue() {
    if (appeared_ || clock_.Milliseconds() >= due_) Appear();
}

}  // namespace vw
