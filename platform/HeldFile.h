#pragma once

#include <memory>
#include <string_view>

namespace vw {

/// A file that is kept open without sharing: nobody else can open it while this object lives. It
/// is deleted with the object, and by the system when the process or the computer fails.
class HeldFile {
  public:
    HeldFile() = default;
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    virtual ~HeldFile() = default;
};

/// Holds a file of the real disk; see FileSystem::Hold.
[[nodiscard]] std::unique_ptr<HeldFile> HoldFile(std::wstring_view path);

}  // namespace vw
