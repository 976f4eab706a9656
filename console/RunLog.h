#pragma once

#include <string>
#include <string_view>

#include "platform/Handle.h"

namespace vw {

class Console;

/// The log file of one run: UTF-8, a time of day before each line.
class RunLog {
  public:
    /// Makes the file "vw-2024-05-31-190559.log" in the folder, which is made when its parent
    /// exists. Throws what the disk throws.
    RunLog(Console& console, std::wstring_view folder);

    /// Adds a line. A disk that takes no more costs the backup nothing.
    void Write(std::wstring_view line);

    /// Deletes all log files of such names but the newest `keep`.
    void DeleteOlder(int keep);

    [[nodiscard]] const std::wstring& Path() const noexcept { return path_; }

  private:
    Console& console_;
    std::wstring folder_;
    std::wstring path_;
    FileHandle file_;
};

}  // namespace vw
