#pragma once

#include <cstdint>
#include <string>

namespace vw {

/// "1 file" or "12 files".
[[nodiscard]] std::wstring FilesText(std::uint64_t count);

/// A size with its unit: "512 bytes", "1.5 KiB", "20.0 MiB", "3.2 GiB".
[[nodiscard]] std::wstring BytesText(std::uint64_t bytes);

/// What a walk or a run went through: "12 files, 1.5 KiB".
[[nodiscard]] std::wstring FilesAndBytesText(std::uint64_t files, std::uint64_t bytes);

}  // namespace vw
