#include "platform/Desktop.h"

#include "platform/WindowsHeader.h"

namespace vw {

bool DesktopIsVisible() {
    USEROBJECTFLAGS flags{};
    DWORD needed = 0;
    const HWINSTA station = GetProcessWindowStation();
    if (station == nullptr ||
        GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof flags, &needed) == 0) {
        return false;
    }
    return (flags.dwFlags & WSF_VISIBLE) != 0;
}

}  // namespace vw
