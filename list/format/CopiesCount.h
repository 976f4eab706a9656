#pragma once

#include <cstdint>
#include <string_view>

namespace vw {

/// Takes the copies count that a line of a list says. What is no 16-bit number leaves the count as
/// it is: neither a run nor a window may fail over it.
void TakeCopiesCount(std::wstring_view value, std::int16_t& count);

}  // namespace vw
