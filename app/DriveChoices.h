#pragma once

#include <string>
#include <vector>

namespace vw {

class FileSystem;

/// The drives that the main window offers for copies, such as "D:": A: and C: always, every other
/// one that is ready and has more than 1 GiB free. A network drive that is not connected is not
/// asked for: that would hold up the start.
[[nodiscard]] std::vector<std::wstring> DriveChoices(FileSystem& files);

}  // namespace vw
