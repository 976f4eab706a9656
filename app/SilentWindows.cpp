#include "app/SilentWindows.h"

#include "platform/Clock.h"
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

void SilentWindows::Appear() {
    if (!appeared_) {
        appeared_ = true;
        icon_.Load();
    }
    busy_.SendView();
}

void SilentWindows::AppearIfDue() {
    if (appeared_ || clock_.Milliseconds() >= due_) Appear();
}

}  // namespace vw
