#include "app/SilentWindows.h"

#include "platform/Clock.h"
#include "platform/RuntimeError.h"
#include "progress/BusyDialog.h"
#include "progress/TrayIcon.h"

namespace vw {

namespace {

// Runs shorter than a second show no icon: a brief flash would only distract.
constexpr std::uint64_t kMomentMilliseconds = 1000;

}  // namespace

SilentWindows::SilentWindows(const Clock& clock, TrayIcon& icon, BusyDialog& busy)
    : clock_(clock), icon_(icon), busy_(busy) {}

void SilentWindows::Begin() { due_ = clock_.Milliseconds() + kMomentMilliseconds; }

// Without an interactive desktop the run continues without windows. `appearing_` prevents
// recursion: reporting the failure shows a message box, which calls ShowWindows() again.
void SilentWindows::ShowWindows() {
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

void SilentWindows::ShowWindowsIfDue() {
    if (appeared_ || clock_.Milliseconds() >= due_) ShowWindows();
}

}  // namespace vw
