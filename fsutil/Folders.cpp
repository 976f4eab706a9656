#include "fsutil/Folders.h"

#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"

namespace vw::MFileDosShell {

bool FolderExists(FileSystem& files, std::wstring_view path) {
    try {
        const auto facts = files.Stat(path);
        return facts && facts->isFolder;
    } catch (const RuntimeError&) {
        return false;
    }
}

bool MakeFolderIfMissing(FileSystem& files, std::wstring_view path) {
    if (FolderExists(files, path)) return true;
    try {
        files.CreateFolder(path);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace vw::MFileDosShell
