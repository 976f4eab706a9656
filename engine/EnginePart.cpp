#include "engine/EnginePart.h"

#include <string>

#include "engine/RunTexts.h"
#include "fsutil/TreeOperations.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"

namespace vw {

EnginePart::EnginePart(const EngineContext& context)
    : system_(context.system),
      state_(context.state),
      progress_(context.progress),
      program_(context.program),
      patience_(context.patience),
      duringCopy_(context.duringCopy),
      trap_(context.system.errors, L"Class Module", L"CPackage") {}

void EnginePart::Notice(const Texts& text, std::wstring_view path) {
    progress_.Notice(RunLine(text, state_.language, path));
}

void EnginePart::Remove(std::wstring_view path) noexcept {
    try {
        DeleteTree(
            system_.files, path, [this] { system_.pump.ProcessMessagesIfDue(); }, &patience_);
    } catch (...) {
    }
}

std::optional<FileInfo> EnginePart::Stat(std::wstring_view path) {
    return system_.files.Stat(path);
}

bool EnginePart::Exists(std::wstring_view path) {
    try {
        return system_.files.Stat(path).has_value();
    } catch (const RuntimeError&) {
        return false;
    }
}

// The root of a drive is hidden on most disks, and its dates mean nothing. A disk that keeps no
// such marks makes the copy no less whole.
void EnginePart::KeepFolderInfo(const std::wstring& from, const std::wstring& to,
                                FileSystem::Marks marks) {
    if (IsRoot(system_.files, from) || IsRoot(system_.files, to)) return;
    try {
        system_.files.CopyFolderInfo(from, to, marks);
    } catch (const RuntimeError&) {
    }
}

}  // namespace vw
