#pragma once

#include <cstdint>

namespace vw {

class BusyDialog;
class Clock;
class TrayIcon;

/// The windows of a silent run: the notification icon, and the busy dialog that nobody sees. Making
/// them takes longer than looking through a list in which nothing has changed, so a run of a moment
/// makes none. They come with the first box, or when the run has lasted.
class SilentWindows {
  public:
    SilentWindows(const Clock& clock, TrayIcon& icon, BusyDialog& busy);

    /// The run begins.
    void Begin();

    /// Makes the windows that are not there; nothing when there is no desktop to make them on.
    void ShowWindows();

    /// The same, once the run has lasted or the icon is there; to be called now and then.
    void ShowWindowsIfDue();

  private:
    static constexpr std::uint64_t kNever = ~std::uint64_t{0};

    const Clock& clock_;
    TrayIcon& icon_;
    BusyDialog& busy_;
    std::uint64_t due_ = kNever;
    bool appearing_ = false;
    bool appeared_ = false;
    bool isDesktopThere_ = true;
};

}  // namespace vw
