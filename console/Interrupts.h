#pragma once

namespace vw::Interrupts {

/// Makes Ctrl+C, Ctrl+Break and the closing of the console requests to stop. A second Ctrl+C ends
/// the process at once, with the exit code of a cancelled run. With `announces` the first one is
/// answered with a line on the terminal that says so.
void Watch(bool announces);

/// Whether a stop was requested.
[[nodiscard]] bool WasRequested() noexcept;

/// Sleeps for this time, less when a stop is requested meanwhile.
void WaitFor(unsigned milliseconds);

}  // namespace vw::Interrupts
