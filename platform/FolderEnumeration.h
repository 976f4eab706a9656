#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "platform/LocalTime.h"
#include "platform/WindowsHeader.h"

namespace vw {

/// Facts of a file or folder from the data of the system. A link to a file is followed: the
/// file that it shows is what a backup takes.
[[nodiscard]] FileInfo FactsOf(const WIN32_FILE_ATTRIBUTE_DATA& data,
                               const std::wstring& systemPath, const LocalTime& localTime);

/// Facts of an entry of a listing. `systemPath` gives its path where it has to be asked about.
[[nodiscard]] FileInfo FactsOf(const WIN32_FIND_DATAW& data, const LocalTime& localTime,
                               const std::function<std::wstring()>& systemPath);

/// The same from the listing of the parent folder; nothing when it is not listed.
[[nodiscard]] std::optional<FileInfo> FactsFromListing(const std::wstring& systemPath,
                                                       const LocalTime& localTime);

/// Shows each entry of a folder in one pass; `path` is its name for the user.
void EnumerateFolder(const std::wstring& systemPath, std::wstring_view path,
                     const LocalTime& localTime, const FileSystem::EntryVisitor& visitor);

}  // namespace vw
