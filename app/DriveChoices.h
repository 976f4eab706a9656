#pragma once

#include <string>
#include <vector>

namespace vw {

class FileSystem;

/// The drives that the main window offers for copies, such as "D:": A: and C: always, every other
/// one that is ready and has more than 1 GiB free. A network drive that does not answer within a
/// second is left out: its server may be gone, and asking would hold up the start. `files` is still
/// asked then and has to outlive that.
[[nodiscard]] std::vector<std::wstring> DriveChoices(FileSystem& files);

}  // namespace vw
