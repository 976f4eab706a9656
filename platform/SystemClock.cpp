#include "platform/SystemClock.h"

#include "platform/WindowsHeader.h"

namespace vw {

std::uint64_t SystemClock::Milliseconds() const { return GetTickCount64(); }

}  // namespace vw
