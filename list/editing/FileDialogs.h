#pragma once

#include <optional>
#include <string>

#include "list/editing/FileDialogSetup.h"

namespace vw {

/// The system's file dialogs.
class FileDialogs {
  public:
    FileDialogs() = default;
    FileDialogs(const FileDialogs&) = delete;
    FileDialogs& operator=(const FileDialogs&) = delete;
    virtual ~FileDialogs() = default;

    /// Lets the user choose what exists; nothing on Cancel. With several files chosen: their folder
    /// and then their names, separated by the character with code 0.
    virtual std::optional<std::wstring> ShowOpen(const FileDialogSetup& dialog) = 0;

    /// Lets the user name a file; nothing on Cancel.
    virtual std::optional<std::wstring> ShowSave(const FileDialogSetup& dialog) = 0;
};

}  // namespace vw
