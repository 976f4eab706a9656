#pragma once

#include <string>

#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"

namespace vw {

/// The working name with a number under which a restore writes a file or a folder beside its place:
/// "~vwr0.tmp" and so on.
[[nodiscard]] std::wstring RestoreName(int number);

/// The path of the first such name in a folder that is free; a file of somebody else is never in
/// the way of a restore. Throws the error of the disk.
[[nodiscard]] std::wstring FreeRestoreName(FileSystem& files, const std::wstring& folder);

/// Whether the disk of the target refuses a file there. A failed copy call names what it was to
/// copy, so this decides whom the error is about: the disk is full, or not even an empty file can
/// be made beside the target.
[[nodiscard]] bool IsRefusedBeside(FileSystem& files, const std::wstring& target,
                                   const RuntimeError& error);

/// The error with another path that the user has to look at.
[[nodiscard]] RuntimeError WithPath(const RuntimeError& error, const std::wstring& path);

}  // namespace vw
