#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vw {

/// Pattern of a copy's name as the copies browser and "/R" know it.
inline constexpr std::wstring_view kCopyNamePattern = L"*\u00AB????\u00BB*";

/// Copy number that stands for all of them: the name becomes a pattern with "??".
inline constexpr int kAnyCopyNumber = -1;

/// The full path of a copy: destination, "\", first name, "«", location number and copy number
/// with at least two digits each, "»", extension. Raises error 1000 for copy number 0.
[[nodiscard]] std::wstring CFilePackageName(std::wstring_view itemPath, int copyNumber,
                                            int locationNumber, std::wstring_view destination);

/// The copy number in a copy's name; 0 when there is none. Never fails.
[[nodiscard]] int CFileBackNumber(std::wstring_view copyName) noexcept;

/// The location number in a copy's name, the two characters as they stand; empty when there is
/// none. Never fails.
[[nodiscard]] std::wstring CFileSP(std::wstring_view copyName);

/// The name of the item that a copy was made from: Report«0102».doc gives Report.doc; empty for a
/// name without "«". Works on the whole text passed.
[[nodiscard]] std::wstring CFileOrigin(std::wstring_view copyName);

}  // namespace vw
