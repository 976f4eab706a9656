#include "engine/TargetState.h"

#include <vector>

#include "fsutil/PathText.h"
#include "platform/MessagePump.h"
#include "platform/TextCase.h"

namespace vw {

TargetState::TargetState(FileSystem& files, MessagePump& pump, std::wstring_view path) {
    const auto facts = files.Stat(path);
    if (!facts) return;
    exists_ = true;
    if (!facts->isFolder) {
        files_.emplace(std::wstring(), Known{facts->size, facts->lastWrite});
        return;
    }
    std::vector<std::wstring> pending{L""};
    while (!pending.empty()) {
        const std::wstring folder = std::move(pending.back());
        pending.pop_back();
        files.List(folder.empty() ? std::wstring(path) : JoinPath(path, folder),
                   [&](const FolderEntry& entry) {
                       std::wstring below =
                           folder.empty() ? std::wstring(entry.name) : JoinPath(folder, entry.name);
                       if (!entry.isFolder) {
                           files_.emplace(UpperCase(below), Known{entry.size, entry.lastWrite});
                       } else if (!entry.isLink) {
                           pending.push_back(std::move(below));
                       }
                       pump.ProcessMessagesIfDue();
                   });
    }
}

bool TargetState::Contains(std::wstring_view below) const {
    return files_.contains(UpperCase(below));
}

bool TargetState::Holds(std::wstring_view below, const FileInfo& file) const {
    const auto known = files_.find(UpperCase(below));
    return known != files_.end() && known->second.size == file.size &&
           known->second.lastWrite == file.lastWrite;
}

}  // namespace vw
