#pragma once

#include <cstdint>
#include <string>

namespace vw {

/// A size as people read it: "512Byte", "1.5KByte", "20.0MByte". A boundary belongs to the lower
/// unit (1024 bytes are "1024Byte"). `decimalSign` is the one of the user's locale. One decimal,
/// halves rounded away from zero; the size passes through single precision.
[[nodiscard]] std::wstring SizeText(std::uint64_t bytes, wchar_t decimalSign);

}  // namespace vw
