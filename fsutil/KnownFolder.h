#pragma once

#include <string>

namespace vw {

/// The path that the system gives for a number of the "WScript.Shell" object's collection of
/// special folders (0 to 17); empty for any other number and for a folder that does not exist.
[[nodiscard]] std::wstring KnownFolderOfNumber(int number);

}  // namespace vw
