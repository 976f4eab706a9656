#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/FolderListing.h"
#include "engine/ItemCopier.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeOperations.h"
#include "platform/DriveFailure.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"

namespace vw {

ItemCopier::ItemCopier(const EngineContext& context, DestinationSession& session)
    : EnginePart(context), session_(session) {}

// The folders that are open are kept here and not on the stack: trees can be thousands of levels
// deep.
void ItemCopier::CopyFolder(const std::wstring& copy, const std::wstring& item, bool subFolders,
                            CopyResult& result) {
    const std::size_t rootLength = MFileDosShell::WithSeparator(item).size();
    std::vector<OpenFolder> open;
    // A folder that cannot be read or made is left out.
    const auto enter = [&](const std::wstring& folder) {
        OpenFolder level{.from = MFileDosShell::WithSeparator(folder)};
        level.to = MFileDosShell::WithSeparator(copy) + level.from.substr(rootLength);
        if (!CopyFiles(level, MFileDosShell::CFileName(copy), result)) return;
        if (!subFolders) level.folders.clear();
        open.push_back(std::move(level));
    };
    enter(item);
    while (!open.empty()) {
        OpenFolder& level = open.back();
        if (level.next < level.folders.size() && !MustStop(result)) {
            enter(level.from + level.folders[level.next++]);
            system_.pump.ProcessMessagesIfDue();
            continue;
        }
        // Last, since every entry that is made in it changes its date.
        if (level.next == level.folders.size()) KeepFolderInfo(level.from, level.to);
        open.pop_back();
        if (!open.empty()) system_.pump.ProcessMessagesIfDue();
    }
}

// Makes the folder of the copy and copies the files into it. False when the folder could not be
// read or made.
bool ItemCopier::CopyFiles(OpenFolder& level, const std::wstring& ownName, CopyResult& result) {
    // The name of a copy in the making is its own alone: it is met when a link or another drive
    // letter leads to the destination.
    FolderListing source;
    const bool read = CopyStep(L"BackupFolder", 0, result, [&] {
        source = ListFolder(system_.files, level.from, ownName);
        system_.files.CreateFolder(level.to);
    });
    if (!read) {
        ++result.failed;
        return false;
    }
    if (source.holdsCopyInTheMaking) result.containsDestination = true;
    for (const std::wstring& name : source.links) Notice(run_text::kLinkLeftOut, level.from + name);
    for (ListedFile& file : source.files) {
        if (MustStop(result)) break;
        const std::size_t copiedBefore = result.copied;
        BackupFile(level.to + file.name, level.from + file.name, file.size, result);
        file.copied = result.copied > copiedBefore;
        system_.pump.ProcessMessagesIfDue();
    }
    CheckFolderCopy(level.to, level.from, source, result);
    level.folders = std::move(source.folders);
    return true;
}

// Asked before each file and sub-folder of a folder.
bool ItemCopier::MustStop(CopyResult& result) const {
    // Nobody chose to keep what a shutdown interrupts: the next run makes the whole copy.
    if (state_.endRequested) result.aborted = true;
    if (state_.cancel.IsRequested()) result.cancelled = true;
    return result.cancelled || result.aborted || result.containsDestination;
}

// The trap of one step, which copies `size` bytes. A full disk, a drive or a cloud that is gone
// ends the copy: whatever is left would fail too, each with a box of its own.
bool ItemCopier::CopyStep(std::wstring_view procedure, std::uint64_t size, CopyResult& result,
                          const std::function<void()>& step) {
    return trap_(procedure, [&] {
        try {
            step();
        } catch (const RuntimeError& error) {
            if (error.Number() == error_number::kDiskFull && !IsTooLargeForDrive(size)) {
                result.aborted = true;
            }
            if (ConcernsCloud(error)) {
                result.aborted = true;
                const Texts& text = run_text::kCloudOutOfReach;
                throw RuntimeError(error.Number(), std::wstring(text.In(state_.language)),
                                   result.itemPath, error.Line(), error.SystemCode());
            }
            if (!result.aborted) AbortIfGone(result);
            throw;
        }
    });
}

// Asked only when something has failed. The item or the destination is reported, not the file
// that happened to be the next one when the server went down or the stick was pulled.
void ItemCopier::AbortIfGone(CopyResult& result) {
    const auto giveUp = [&](int number, const std::wstring& path) {
        result.aborted = true;
        Throw(number, path);
    };
    if (!Exists(result.itemPath)) {
        giveUp(result.isFolder ? error_number::kPathNotFound : error_number::kFileNotFound,
               result.itemPath);
    }
    if (!Exists(session_.Folder())) giveUp(error_number::kPathNotFound, session_.Target());
}

void ItemCopier::BackupFile(std::wstring_view destination, std::wstring_view source,
                            std::uint64_t size, CopyResult& result) {
    const bool copied = CopyStep(L"BackupFile", size, result, [&] {
        progress_.Msg(L"Backing:", source);
        system_.files.Copy(source, destination, duringCopy_);
    });
    if (copied) progress_.OnFileCopied(size);
    ++(copied ? result.copied : result.failed);
}

// Drives of the older formats call themselves full for a file of 4 GiB, however much room they
// have: that is the matter of this one file.
bool ItemCopier::IsTooLargeForDrive(std::uint64_t size) {
    constexpr std::uint64_t kLargest = 0xFFFFFFFF;
    try {
        return size > kLargest && system_.files.FreeSpace(session_.Folder()) >= size;
    } catch (const RuntimeError&) {
        return false;
    }
}

// The copy call may report success for a file that it cut short, so every length is looked at once
// more, in one listing for the whole folder.
void ItemCopier::CheckFolderCopy(const std::wstring& copyFolder, const std::wstring& folder,
                                 const FolderListing& source, CopyResult& result) {
    if (result.aborted || source.files.empty()) return;
    std::unordered_map<std::wstring, std::uint64_t> sizes;
    sizes.reserve(source.files.size());
    const bool listed = CopyStep(L"BackupFolder", 0, result, [&] {
        system_.files.List(copyFolder, [&](const FolderEntry& entry) {
            if (!entry.isFolder) sizes.emplace(entry.name, entry.size);
        });
    });
    for (const ListedFile& file : source.files) {
        if (result.aborted) return;
        if (!file.copied) continue;
        const auto copy = sizes.find(file.name);
        if (copy != sizes.end() && copy->second == file.size) continue;
        if (!listed) {
            --result.copied;
            ++result.failed;
            continue;
        }
        CheckFileCopy(copyFolder + file.name, folder + file.name, file.size, result);
    }
}

// A log grows while it is copied: a source that changed is reported, and its copy counts, unless
// the whole item is gone. Any other difference makes it a failed copy, and what there is of it is
// removed.
void ItemCopier::CheckFileCopy(const std::wstring& copy, const std::wstring& source,
                               std::uint64_t sourceSize, CopyResult& result) {
    const bool whole = CopyStep(L"BackupFile", sourceSize, result, [&] {
        const auto copied = system_.files.Stat(copy);
        if (copied && copied->size == sourceSize) return;
        const auto now = system_.files.Stat(source);
        if (!now) AbortIfGone(result);
        if (copied && (!now || now->size != sourceSize)) {
            Notice(run_text::kChangedMeanwhile, source);
            return;
        }
        if (copied) Remove(copy);
        const bool full = system_.files.FreeSpace(session_.Folder()) < sourceSize;
        Throw(full ? error_number::kDiskFull : error_number::kDeviceError, source);
    });
    if (whole) return;
    --result.copied;
    ++result.failed;
}

}  // namespace vw
