#include "list/editing/Filter.h"

#include "platform/CurrentFolder.h"

namespace vw::MRecentFiles {

void Filter(FileDialogSetup& dialog, FileDialogKind kind, std::wstring_view defaultFolder) {
    SetUpFileDialog(dialog, kind, dialog.lastFolder.empty() ? CurrentFolder() : dialog.lastFolder,
                    defaultFolder);
}

}  // namespace vw::MRecentFiles
