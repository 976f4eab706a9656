#include <optional>
#include <vector>

#include "engine/CopyRestorer.h"
#include "engine/FolderListing.h"
#include "engine/TargetState.h"
#include "fsutil/PathText.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"

// Copying a stored copy back. A file is written beside its place first and takes it in one step, so
// that whatever goes wrong leaves the old file or the restored one, whole. A place that was free
// when the user was asked is taken by a rename that cannot replace.

namespace vw {

namespace {

// A free name in the folder; nobody's file may be in the way of a restore.
std::wstring FreeName(FileSystem& files, const std::wstring& folder) {
    for (int number = 0;; ++number) {
        std::wstring path = JoinPath(folder, L"~vwr" + std::to_wstring(number) + L".tmp");
        if (!files.Stat(path)) return path;
    }
}

// A failed copy call names what it was to copy. The disk of the target refuses it when it is full,
// or when not even an empty file can be made beside the target.
bool IsRefusedBeside(FileSystem& files, const std::wstring& target, const RuntimeError& error) {
    if (error.Number() == error_number::kDiskFull) return true;
    try {
        const std::wstring probe = FreeName(files, MFileDosShell::CFileLocation(target));
        files.Write(probe, {}, FileSystem::Flush::No);
        files.RemoveFile(probe);
        return false;
    } catch (const RuntimeError&) {
        return true;
    }
}

// The error with another path that the user has to look at.
RuntimeError WithPath(const RuntimeError& error, const std::wstring& path) {
    return {error.Number(), error.Description(), path, error.Line(), error.SystemCode()};
}

}  // namespace

void CopyRestorer::Restore(std::wstring_view copyPath, const std::wstring& target,
                           const TargetState& before) {
    const auto facts = system_.files.Stat(copyPath);
    if (!facts) Throw(error_number::kFileNotFound, copyPath);
    if (facts->isFolder) {
        RestoreFolder(std::wstring(copyPath), target, before);
    } else {
        RestoreFile(std::wstring(copyPath), target, facts->size,
                    [&](const FileInfo& there) { return before.Holds({}, there); });
    }
}

// A file that cannot be restored does not affect the others: it is reported; the first failure is
// what the user sees at the end. A link that is the item itself is followed, as its backups do. One
// below it was left out of the safety copy, so nothing may be written through it. The folders to
// come are kept here and not on the stack: trees can be thousands of levels deep.
void CopyRestorer::RestoreFolder(const std::wstring& copy, const std::wstring& target,
                                 const TargetState& before) {
    std::optional<RuntimeError> failure;
    const auto attempt = [&](const auto& step) {
        try {
            step();
        } catch (const RuntimeError& error) {
            progress_.Report(ErrorDetails(error), false);
            if (!failure) failure = error;
        }
    };
    const auto below = [](const std::wstring& root, const std::wstring& folder) {
        return folder.empty() ? root : JoinPath(root, folder);
    };
    struct Entered {
        std::wstring folder;
        bool wasThere;
    };
    std::vector<Entered> entered;
    std::vector<std::wstring> pending{L""};
    while (!pending.empty()) {
        const std::wstring folder = std::move(pending.back());
        pending.pop_back();
        attempt([&] {
            const FolderListing source = ListFolder(system_.files, below(copy, folder) + L"\\");
            const bool wasThere =
                EnterTarget(below(target, folder), folder.empty() ? &before : nullptr);
            entered.push_back({folder, wasThere});
            for (const ListedFile& file : source.files) {
                const std::wstring path = folder.empty() ? file.name : JoinPath(folder, file.name);
                attempt([&] {
                    RestoreFile(JoinPath(copy, path), JoinPath(target, path), file.size,
                                [&](const FileInfo& there) { return before.Holds(path, there); });
                });
                system_.pump.ProcessMessagesIfDue();
            }
            for (auto name = source.folders.rbegin(); name != source.folders.rend(); ++name) {
                pending.push_back(folder.empty() ? *name : JoinPath(folder, *name));
            }
        });
    }
    // Last, since every file that is restored changes the date of its folder. What the user has
    // hidden or protected since stays so; copies of earlier versions have no marks.
    for (auto done = entered.rbegin(); done != entered.rend(); ++done) {
        KeepFolderInfo(below(copy, done->folder), below(target, done->folder),
                       done->wasThere ? FileSystem::Marks::Keep : FileSystem::Marks::Replace);
    }
    if (failure) throw RuntimeError(*failure);
}

// Makes a folder of the target unless it is there; `before` is given for the item itself. Whether
// it was there.
bool CopyRestorer::EnterTarget(const std::wstring& target, const TargetState* before) {
    const auto there = system_.files.Stat(target);
    const bool isItem = before != nullptr;
    if (there &&
        (!there->isFolder || (there->isLink && !isItem) || (isItem && !before->Exists()))) {
        Throw(error_number::kAlreadyExists, target);
    }
    if (!there) system_.files.CreateFolder(target);
    return there.has_value();
}

void CopyRestorer::RestoreFile(const std::wstring& copy, const std::wstring& target,
                               std::uint64_t size,
                               const std::function<bool(const FileInfo&)>& mayReplace) {
    // Whether a file there may be replaced; throws for whatever else is there.
    const auto replaces = [&] {
        const auto there = system_.files.Stat(target);
        if (!there) return false;
        if (there->isFolder || !mayReplace(*there)) Throw(error_number::kAlreadyExists, target);
        if (there->isReadOnly) Throw(error_number::kPermissionDenied, target);
        return true;
    };
    static_cast<void>(replaces());
    const std::wstring aside = FreeName(system_.files, MFileDosShell::CFileLocation(target));
    try {
        system_.files.Copy(copy, aside, duringCopy_);
    } catch (const RuntimeError& error) {
        if (error.Path() != aside && !IsRefusedBeside(system_.files, target, error)) throw;
        throw WithPath(error, target);
    }
    try {
        // The copy call may report success for a file that it cut short.
        const auto written = system_.files.Stat(aside);
        if (!written || written->size != size) Throw(error_number::kDeviceError, copy);
        if (replaces()) {
            system_.files.CopyAccessRights(target, aside);
            patience_.Perform([&] { system_.files.Replace(aside, target); }, target);
        } else {
            patience_.Perform([&] { system_.files.Rename(aside, target); }, target);
        }
        if (system_.files.Stat(aside)) Throw(error_number::kDeviceError, target);
    } catch (const RuntimeError& error) {
        Remove(aside);
        if (error.Path() != aside) throw;
        throw WithPath(error, target);
    }
}

}  // namespace vw
