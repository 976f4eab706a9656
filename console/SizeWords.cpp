#include "console/SizeWords.h"

#include <array>

namespace vw {

std::wstring FilesText(std::uint64_t count) {
    return std::to_wstring(count) + (count == 1 ? L" file" : L" files");
}

// Tenths are cut off, not rounded, so that no unit ever shows 1024.0.
std::wstring BytesText(std::uint64_t bytes) {
    constexpr std::array kUnits{L" KiB", L" MiB", L" GiB", L" TiB"};
    constexpr std::uint64_t kStep = 1024;
    if (bytes < kStep) return std::to_wstring(bytes) + (bytes == 1 ? L" byte" : L" bytes");
    std::size_t unit = 0;
    std::uint64_t size = kStep;
    while (unit + 1 < kUnits.size() && bytes / size >= kStep) {
        size *= kStep;
        ++unit;
    }
    const std::uint64_t tenths = bytes % size * 10 / size;
    return std::to_wstring(bytes / size) + L"." + std::to_wstring(tenths) + kUnits[unit];
}

std::wstring FilesAndBytesText(std::uint64_t files, std::uint64_t bytes) {
    return FilesText(files) + L", " + BytesText(bytes);
}

}  // namespace vw
