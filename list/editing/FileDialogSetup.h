#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vw {

/// What a file dialog is opened for.
enum class FileDialogKind {
    AddFiles = 0,
    OpenList = 1,
    SaveList = 2,
    AddFolder = 3,         ///< the user opens the folder and confirms the file name standing there
    AddRule = 4,           ///< the same, for all files of a folder
    ChooseDestination = 5  ///< the same, for where copies go
};

/// What the system's file dialog is opened with. One of these lives as long as the main window:
/// what a kind leaves unchanged stays from the dialog before.
struct FileDialogSetup {
    std::wstring initialFolder;
    std::wstring lastFolder;  ///< where the user chose something last; empty before the first time
    std::uint32_t flags = 0;  ///< OFN_... flags of the system
    std::wstring filter;      ///< "name|pattern"
    std::wstring fileName;
    std::wstring title;
    bool cancelIsError = false;  ///< Cancel ends the command instead of giving an empty name
    /// Where dialogs on lists begin when the current folder is not known.
    std::wstring defaultFolder;
    std::wstring defaultExtension;  ///< for a name that was typed without one
};

/// Prepares the dialog for a kind. `defaultFolder` is used for lists when `currentFolder` is empty.
/// Throws kUnknownDialogKind for any other kind.
void SetUpFileDialog(FileDialogSetup& dialog, FileDialogKind kind, std::wstring_view currentFolder,
                     std::wstring_view defaultFolder);

}  // namespace vw
