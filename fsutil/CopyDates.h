#pragma once

#include <string_view>

#include "platform/Date.h"

namespace vw {

/// Gives the date that was stored with a copy. The backup engine has it; the date of a path asks
/// for it when the path names a copy.
class CopyDates {
  public:
    CopyDates() = default;
    CopyDates(const CopyDates&) = delete;
    CopyDates& operator=(const CopyDates&) = delete;
    virtual ~CopyDates() = default;

    /// The stored date of the copy at `copyPath`, or the dates of the copy's own files.
    [[nodiscard]] virtual Date PackageDate(std::wstring_view copyPath) = 0;
};

}  // namespace vw
