#include "restore/ShownFolder.h"

#include "platform/RuntimeError.h"

namespace vw {

void ShownFolder::Take(FileSystem& files, std::wstring_view path) {
    Clear();
    identity_ = files.Identify(path);
    path_ = path;
}

void ShownFolder::Clear() { path_.clear(); }

bool ShownFolder::IsStillThere(FileSystem& files) const {
    if (path_.empty()) return false;
    try {
        return identity_.IsSameAs(files.Identify(path_));
    } catch (const RuntimeError&) {
        // A drive that is gone has no such folder. One that could not answer only now shows it.
        const auto facts = files.Stat(path_);
        if (facts && facts->isFolder) throw;
        return false;
    }
}

}  // namespace vw
