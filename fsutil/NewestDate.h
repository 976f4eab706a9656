#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "platform/Date.h"
#include "platform/FileSystem.h"

namespace vw {

/// The newest last-modified date of some files, by the rules of its own year and by those of the
/// present year: the comments of earlier versions hold the latter.
struct NewestDates {
    Date newest = kMissingDate;
    std::optional<Date> newestByPresentRules;  ///< nothing when the date is no file's

    void Take(const FileInfo& file);

    /// Whether a comment of this date describes the files as they are now, by either rule.
    [[nodiscard]] bool HasDate(Date date) const {
        return date == newest || date == newestByPresentRules;
    }
    /// Whether the newest file is newer than a comment of this date states, by both rules.
    [[nodiscard]] bool IsAfter(Date date) const {
        return newest > date && newestByPresentRules.value_or(newest) > date;
    }
};

/// The last-modified date of a file; for a folder the newest one of the files in its tree;
/// kMissingDate for nothing and for a tree without files. Links are not entered and what cannot be
/// read is left out. `yield` is called after each entry.
[[nodiscard]] NewestDates NewestFileDates(FileSystem& files, std::wstring_view path,
                                          const std::function<void()>& yield);

/// The same by the rules of the date's own year alone.
[[nodiscard]] Date NewestFileDate(FileSystem& files, std::wstring_view path,
                                  const std::function<void()>& yield);

}  // namespace vw
