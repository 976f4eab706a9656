#pragma once

#include <optional>
#include <string>

#include "list/editing/FileDialogSetup.h"

namespace vw {

/// The system's file dialogs. They note in their setup which folder was the last one.
class FileDialogs {
  public:
    FileDialogs() = default;
    FileDialogs(const FileDialogs&) = delete;
    FileDialogs& operator=(const FileDialogs&) = delete;
    virtual ~FileDialogs() = default;

    /// Lets the user choose what exists; nothing on Cancel. With several files chosen: their folder
    /// and then their names, separated by the character with code 0.
    virtual std::optional<std::wstring> ShowOpen(FileDialogSetup& dialog) = 0;

    /// Lets the user name a file; nothing on Cancel.
    virtual std::optional<std::wstring> ShowSave(FileDialogSetup& dialog) = 0;
};

}  // namespace vw
