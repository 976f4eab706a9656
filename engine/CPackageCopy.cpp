#include <unordered_map>

#include "engine/CPackage.h"
#include "engine/RunTexts.h"
#include "engine/SourceFolder.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWork.h"
#include "platform/DriveFailure.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"

namespace vw {

void CPackage::BackupFolder(std::wstring_view sPackage, std::wstring_view folder,
                            std::wstring_view root, bool bSubFolder, CopyTally& tally) {
    const std::wstring from = MFileDosShell::WithSeparator(folder);
    const std::wstring to = MFileDosShell::WithSeparator(sPackage) +
                            from.substr(MFileDosShell::WithSeparator(root).size());
    // The name of a copy in the making is its own alone: it is met when a link or another drive
    // letter leads to the destination.
    const std::wstring own = MFileDosShell::CFileName(sPackage);
    SourceFolder source;
    const bool read = CopyStep(L"BackupFolder", 0, tally, [&] {
        source = ReadSourceFolder(system_.files, from, own);
        system_.files.MakeFolder(to);
    });
    if (!read) {
        ++tally.failed;
        return;
    }
    if (source.holdsCopyInTheMaking) tally.holdsItself = true;
    for (const std::wstring& name : source.links) Tell(run_text::kLinkLeftOut, from + name);
    for (SourceFile& file : source.files) {
        if (MustStop(tally)) break;
        const std::size_t copiedBefore = tally.copied;
        BackupFile(to + file.name, from + file.name, file.size, tally);
        file.copied = tally.copied > copiedBefore;
        system_.pump.DoEventsIfDue();
    }
    CheckFolderCopy(to, from, source, tally);
    if (bSubFolder) {
        for (const std::wstring& name : source.folders) {
            if (MustStop(tally)) return;
            BackupFolder(sPackage, from + name, root, true, tally);
            system_.pump.DoEventsIfDue();
        }
    }
    // Last, since every entry that is made in it changes its date.
    KeepFolderInfo(from, to);
}

// The root of a drive is hidden on most disks, and its dates mean nothing. A disk that keeps no
// such marks makes the copy no less whole.
void CPackage::KeepFolderInfo(const std::wstring& from, const std::wstring& to,
                              FileSystem::Marks marks) {
    if (IsRoot(system_.files, from) || IsRoot(system_.files, to)) return;
    try {
        system_.files.CopyFolderInfo(from, to, marks);
    } catch (const RuntimeError&) {
    }
}

// Asked before each file and sub-folder of a folder.
bool CPackage::MustStop(CopyTally& tally) const {
    // Nobody chose to keep what a shutdown interrupts: the next run makes the whole copy.
    if (state_.endRequested) tally.givenUp = true;
    if (state_.cancelRequested) tally.cutShort = true;
    return tally.cutShort || tally.givenUp || tally.holdsItself;
}

// The trap of one step, which copies `size` bytes. A full disk, a drive or a cloud that is gone
// ends the copy: whatever is left would fail too, each with a box of its own.
bool CPackage::CopyStep(std::wstring_view procedure, std::uint64_t size, CopyTally& tally,
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
void CPackage::GiveUpIfGone(CopyTally& tally) {
    const auto giveUp = [&](int number, const std::wstring& path) {
        tally.givenUp = true;
        Raise(number, path);
    };
    if (!Stands(tally.itemPath)) {
        giveUp(tally.isFolder ? error_number::kPathNotFound : error_number::kFileNotFound,
               tally.itemPath);
    }
    if (!Stands(TargetFolder())) giveUp(error_number::kPathNotFound, Target());
}

// What cannot be asked is out of reach, which is no better than gone.
bool CPackage::Stands(std::wstring_view path) {
    try {
        return system_.files.Look(path).has_value();
    } catch (const RuntimeError&) {
        return false;
    }
}

void CPackage::BackupFile(std::wstring_view destination, std::wstring_view source,
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
bool CPackage::IsTooLargeForDrive(std::uint64_t size) {
    constexpr std::uint64_t kLargest = 0xFFFFFFFF;
    try {
        return size > kLargest && system_.files.FreeSpace(TargetFolder()) >= size;
    } catch (const RuntimeError&) {
        return false;
    }
}

// The copy call may report success for a file that it cut short, so every length is looked at once
// more, in one listing for the whole folder.
void CPackage::CheckFolderCopy(const std::wstring& copyFolder, const std::wstring& folder,
                               const SourceFolder& source, CopyTally& tally) {
    if (tally.givenUp || source.files.empty()) return;
    std::unordered_map<std::wstring, std::uint64_t> sizes;
    sizes.reserve(source.files.size());
    const bool listed = CopyStep(L"BackupFolder", 0, tally, [&] {
        system_.files.List(copyFolder, [&](const FolderEntry& entry) {
            if (!entry.isFolder) sizes.emplace(entry.name, entry.size);
        });
    });
    for (const SourceFile& file : source.files) {
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
void CPackage::CheckFileCopy(const std::wstring& copy, const std::wstring& source,
                             std::uint64_t sourceSize, CopyTally& tally) {
    const bool whole = CopyStep(L"BackupFile", sourceSize, tally, [&] {
        const auto copied = system_.files.Look(copy);
        if (copied && copied->size == sourceSize) return;
        const auto now = system_.files.Look(source);
        if (!now) GiveUpIfGone(tally);
        if (copied && (!now || now->size != sourceSize)) {
            Tell(run_text::kChangedMeanwhile, source);
            return;
        }
        if (copied) Remove(copy);
        const bool full = system_.files.FreeSpace(TargetFolder()) < sourceSize;
        Raise(full ? error_number::kDiskFull : error_number::kDeviceError, source);
    });
    if (whole) return;
    --tally.copied;
    ++tally.failed;
}

}  // namespace vw
