#pragma once

#include <string_view>

#include "list/editing/FileDialogSetup.h"

namespace vw::MRecentFiles {

/// Prepares a file dialog to begin where the last one ended, the first one in the current folder.
/// `defaultFolder` is where dialogs on lists begin when that folder is not known.
/// Throws 1000 for an unknown kind.
void Filter(FileDialogSetup& dialog, FileDialogKind kind, std::wstring_view defaultFolder);

}  // namespace vw::MRecentFiles
