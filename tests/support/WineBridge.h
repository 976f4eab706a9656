#pragma once

#include <string_view>

namespace vw::test {

/// Whether the tests run under Wine, where a few things of the disk can only be made from outside.
[[nodiscard]] bool UnderWine();

/// Makes a symbolic link to a folder or file. False when this system cannot.
[[nodiscard]] bool MakeLink(std::wstring_view link, std::wstring_view target, bool targetIsFolder);

/// Removes a link without what it shows.
void RemoveLink(std::wstring_view link);

/// Puts a folder behind a drive letter, as plugging in a stick does. The letter must be free.
void PlugIn(wchar_t letter, std::wstring_view folder);

/// Under Wine the folder behind a drive, by a path through Z:, which stays when the letter goes.
[[nodiscard]] std::wstring OutsideFolderOfDrive(wchar_t letter);

/// Takes the drive away, whatever is open on it.
void PlugOut(wchar_t letter);

/// Removes from outside what Wine could not: links whose target is gone already are invisible to
/// it. Does nothing on Windows.
void RemoveRestOfTree(std::wstring_view folder);

}  // namespace vw::test
