#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/FolderListing.h"
#include "engine/ItemCopier.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWork.h"
#include "platform/DriveFailure.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"

namespace vw {

ItemCopier::ItemCopier(const EngineContext& context, DestinationSession& session)
    : EnginePart(context), session_(session) {}

// The folders that are open are kept here and not on the stack: trees can be thousands of levels
// deep.
void ItemCopier::CopyFolder(const std::wstring& copy, const std::wstring& item, bool subFolders,
                            CopyTally& tally) {
    const std::size_t rootLength = MFileDosShell::WithSeparator(item).size();
    std::vector<OpenFolder> open;
    // True when the folder was opened and its files are copied.
    const auto enter = [&](const std::wstring& folder) {
        OpenFolder level{.from = MFileDosShell::WithSeparator(folder)};
        level.to = MFileDosShell::WithSeparator(copy) + level.from.substr(rootLength);
        if (!CopyFiles(level, MFileDosShell::CFileName(copy), tally)) return false;
        if (!subFolders) level.folders.clear();
        open.push_back(std::move(level));
        return true;
    };
    enter(item);
    while (!open.empty()) {
        OpenFolder& level = open.back();
        if (level.next < level.folders.size() && !MustStop(tally)) {
            const std::wstring folder = level.from + level.folders[level.next++];
            if (!enter(folder)) system_.pump.DoEventsIfDue();
            continue;
        }
        // Last, since every entry that is made in it changes its date.
        if (level.next == level.folders.size()) KeepFolderInfo(level.from, level.to);
        open.pop_back();
        if (!open.empty()) system_.pump.DoEventsIfDue();
    }
}

// Makes the folder of the copy and copies the files into it. False when the folder could not be
// read or made.
bool ItemCopier::CopyFiles(OpenFolder& level, const std::wstring& ownName, CopyTally& tally) {
    // The name of a copy in the making is its own alone: it is met when a link or another drive
    // letter leads to the destination.
    FolderListing source;
    const bool read = CopyStep(L"BackupFolder", 0, tally, [&] {
        source = ListFolder(system_.files, level.from, ownName);
        system_.files.MakeFolder(level.to);
    });
    if (!read) {
        ++tally.failed;
        return false;
    }
    if (source.holdsCopyInTheMaking) tally.holdsItself = true;
    for (const std::wstring& name : source.links) Notice(run_text::kLinkLeftOut, level.from + name);
    for (ListedFile& file : source.files) {
        if (MustStop(tally)) break;
        const std::size_t copiedBefore = tally.copied;
        BackupFile(level.to + file.name, level.from + file.name, file.size, tally);
        file.copied = tally.copied > copiedBefore;
        system_.pump.DoEventsIfDue();
    }
    CheckFolderCopy(level.to, level.from, source, tally);
    level.folders = std::move(source.folders);
    return true;
}

// Asked before each file and sub-folder of a folder.
bool ItemCopier::MustStop(CopyTally& tally) const {
    // Nobody chose to keep what a shutdown interrupts: the next run makes the whole copy.
    if (state_.endRequested) tally.givenUp = true;
    if (state_.cancelRequested) tally.cutShort = true;
    return tally.cutShort || tally.givenUp || tally.holdsItself;
}

// The trap of one step, which copies `size` bytes. A full disk, a drive or a cloud that is gone
// ends the copy: whatever is left would fail too, each with a box of its own.
bool ItemCopier::CopyStep(std::wstring_view procedure, std::uint64_t size, CopyTally& tally,
                          const std::function<void()>& step) {
    return trap_(procedure, [&] {
        try {
            step();
        } catch (const RuntimeError& error) {
            if (error.Number() == error_number::kDiskFull && !IsTooLargeForDrive(size)) {
                tally.givenUp = true;
            }
            if (ConcernsCloud(error)) {
                tally.givenUp = true;
                const RunText& text = run_text::kCloudOutOfReach;
                throw RuntimeError(error.Number(),
                                   std::wstring(state_.arabic ? text.arabic : text.english),
                                   tally.itemPath, error.Line(), error.SystemCode());
            }
            if (!tally.givenUp) GiveUpIfGone(tally);
            throw;
        }
    });
}

// Asked only when something has failed. What is told is the item or the destination, not the file
// that happened to be the next one when the server went down or the stick was pulled.
void ItemCopier::GiveUpIfGone(CopyTally& tally) {
    const auto giveUp = [&](int number, const std::wstring& path) {
        tally.givenUp = true;
        Raise(number, path);
    };
    if (!Exists(tally.itemPath)) {
        giveUp(tally.isFolder ? error_number::kPathNotFound : error_number::kFileNotFound,
               tally.itemPath);
    }
    if (!Exists(session_.Folder())) giveUp(error_number::kPathNotFound, session_.Target());
}

void ItemCopier::BackupFile(std::wstring_view destination, std::wstring_view source,
                            std::uint64_t size, CopyTally& tally) {
    const bool copied = CopyStep(L"BackupFile", size, tally, [&] {
        progress_.Msg(L"Backing:", source);
        system_.files.Copy(source, destination, duringCopy_);
    });
    if (copied) progress_.OnFileCopied(size);
    ++(copied ? tally.copied : tally.failed);
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
                                 const FolderListing& source, CopyTally& tally) {
    if (tally.givenUp || source.files.empty()) return;
    std::unordered_map<std::wstring, std::uint64_t> sizes;
    sizes.reserve(source.files.size());
    const bool listed = CopyStep(L"BackupFolder", 0, tally, [&] {
        system_.files.List(copyFolder, [&](const FolderEntry& entry) {
            if (!entry.isFolder) sizes.emplace(entry.name, entry.size);
        });
    });
    for (const ListedFile& file : source.files) {
        if (tally.givenUp) return;
        if (!file.copied) continue;
        const auto copy = sizes.find(file.name);
        if (copy != sizes.end() && copy->second == file.size) continue;
        if (!listed) {
            --tally.copied;
            ++tally.failed;
            continue;
        }
        CheckFileCopy(copyFolder + file.name, folder + file.name, file.size, tally);
    }
}

// A log grows while it is copied: a source that changed is told, and its copy counts, unless the
// whole item is gone. Any other difference makes it a failed copy, and what there is of it is
// removed.
void ItemCopier::CheckFileCopy(const std::wstring& copy, const std::wstring& source,
                               std::uint64_t sourceSize, CopyTally& tally) {
    const bool whole = CopyStep(L"BackupFile", sourceSize, tally, [&] {
        const auto copied = system_.files.Look(copy);
        if (copied && copied->size == sourceSize) return;
        const auto now = system_.files.Look(source);
        if (!now) GiveUpIfGone(tally);
        if (copied && (!now || now->size != sourceSize)) {
            Notice(run_text::kChangedMeanwhile, source);
            return;
        }
        if (copied) Remove(copy);
        const bool full = system_.files.FreeSpace(session_.Folder()) < sourceSize;
        Raise(full ? error_number::kDiskFull : error_number::kDeviceError, source);
    });
    if (whole) return;
    --tally.copied;
    ++tally.failed;
}

}  // namespace vw
