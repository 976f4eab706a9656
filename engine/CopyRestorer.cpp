#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "engine/CopyRestorer.h"
#include "engine/FolderListing.h"
#include "engine/RestoreName.h"
#include "engine/TargetState.h"
#include "fsutil/PathText.h"
#include "platform/MessagePump.h"
#include "platform/TextCase.h"

// Copying a stored copy back. A file is written beside its place first and takes it in one step, so
// that whatever goes wrong leaves the old file or the restored one, whole. A place that was free
// when the user was asked is taken by a rename that cannot replace. A folder that is not there is
// filled under another name in the same way and takes its place with all that it holds: what is in
// it needs no step of its own.

namespace vw {

namespace {

// Either may be empty: the root itself, or a place below the root that is meant.
std::wstring Below(const std::wstring& root, const std::wstring& place) {
    if (root.empty()) return place;
    return place.empty() ? root : JoinPath(root, place);
}

// What is below a folder comes after its earlier neighbours: they are taken from the back.
void AddFolders(std::vector<std::wstring>& pending, const std::wstring& folder,
                const FolderListing& source) {
    for (auto name = source.folders.rbegin(); name != source.folders.rend(); ++name) {
        pending.push_back(Below(folder, *name));
    }
}

std::wstring Next(std::vector<std::wstring>& pending) {
    std::wstring folder = std::move(pending.back());
    pending.pop_back();
    return folder;
}

template <class Step, class OnFailure>
void Attempt(const Step& step, const OnFailure& onFailure) {
    try {
        step();
    } catch (const RuntimeError& error) {
        onFailure(error);
    }
}

}  // namespace

/// The restore of a folder copy. Folders are named by their places below it.
struct CopyRestorer::FolderRestore {
    struct Entered {
        std::wstring folder;
        bool wasThere;
    };

    void Fail(const RuntimeError& error) {
        progress.Report(ErrorDetails(error), false);
        if (!failure) failure = error;
    }

    const std::wstring copy;
    const std::wstring& target;
    const TargetState& before;
    ProgressReporter& progress;
    std::vector<Entered> entered{};
    std::optional<RuntimeError> failure{};
};

/// A file to restore: from where, to where, and where it is written first.
struct CopyRestorer::FilePlace {
    std::wstring copy;
    std::wstring target;
    std::uint64_t size = 0;
    std::wstring below{};  ///< its place in the folder that is restored; empty for a file copy
    int number = 0;        ///< of the first working name to try
    std::wstring aside{};
    FileInfo written{};  ///< what was written there
};

/// A folder that is filled under a working name.
struct CopyRestorer::NewFolder {
    std::wstring copy;
    std::wstring target;
    std::wstring aside{};
    std::vector<std::wstring> made{};  ///< folders, by their places below it
    std::vector<RuntimeError> failures{};

    /// The errors of a restore name the target.
    void Fail(const RuntimeError& error) {
        const std::wstring& path = error.Path();
        failures.push_back(
            path.starts_with(aside) ? WithPath(error, target + path.substr(aside.size())) : error);
    }
};

void CopyRestorer::Restore(std::wstring_view copyPath, const std::wstring& target,
                           const TargetState& before) {
    const auto facts = system_.files.Stat(copyPath);
    if (!facts) Throw(error_number::kFileNotFound, copyPath);
    if (facts->isFolder) {
        FolderRestore restore{std::wstring(copyPath), target, before, progress_};
        RestoreFolder(restore);
        return;
    }
    FilePlace place{std::wstring(copyPath), target, facts->size};
    std::string usualRights;
    RestoreFile(place, before, usualRights);
    CheckThatItMoved(place);
}

// A file that cannot be restored does not affect the others: it is reported; the first failure is
// what the user sees at the end. A link that is the item itself is followed, as its backups do. One
// below it was left out of the safety copy, so nothing may be written through it. The folders to
// come are kept here and not on the stack: trees can be thousands of levels deep.
void CopyRestorer::RestoreFolder(FolderRestore& restore) {
    std::vector<std::wstring> pending{L""};
    while (!pending.empty()) {
        const std::wstring folder = Next(pending);
        Attempt(
            [&] {
                const FolderListing source =
                    ListFolder(system_.files, Below(restore.copy, folder) + L"\\");
                bool isThere = IsThere(restore, folder);
                if (!isThere) {
                    if (RestoreWhole(restore, folder, source)) return;
                    // Somebody else may have made it since.
                    isThere = IsThere(restore, folder);
                }
                if (!isThere) system_.files.CreateFolder(Below(restore.target, folder));
                restore.entered.push_back({folder, isThere});
                RestoreInto(restore, folder, source);
                AddFolders(pending, folder, source);
            },
            [&](const RuntimeError& error) { restore.Fail(error); });
    }
    // Last, since every file that is restored changes the date of its folder. What the user has
    // hidden or protected since stays so; copies of earlier versions have no marks.
    for (auto done = restore.entered.rbegin(); done != restore.entered.rend(); ++done) {
        KeepFolderInfo(Below(restore.copy, done->folder), Below(restore.target, done->folder),
                       done->wasThere ? FileSystem::Marks::Keep : FileSystem::Marks::Replace);
    }
    if (restore.failure) throw RuntimeError(*restore.failure);
}

// Whether a folder of the target is there. Throws when something else is in its place.
bool CopyRestorer::IsThere(const FolderRestore& restore, const std::wstring& folder) {
    const std::wstring path = Below(restore.target, folder);
    const auto there = system_.files.Stat(path);
    const bool isItem = folder.empty();
    if (there &&
        (!there->isFolder || (there->isLink && !isItem) || (isItem && !restore.before.Exists()))) {
        Throw(error_number::kAlreadyExists, path);
    }
    return there.has_value();
}

// Restores a folder that is not there, with all below it, under a working name. False when it
// could not be made or not take its place: then nothing is left of it.
bool CopyRestorer::RestoreWhole(FolderRestore& restore, const std::wstring& folder,
                                const FolderListing& source) {
    NewFolder whole{Below(restore.copy, folder), Below(restore.target, folder)};
    try {
        whole.aside = FreeRestoreName(system_.files, MFileDosShell::CFileLocation(whole.target));
        system_.files.CreateFolder(whole.aside);
    } catch (const RuntimeError&) {
        return false;
    }
    std::vector<std::wstring> pending;
    const auto fill = [&](const std::wstring& below, const FolderListing& listing) {
        whole.made.push_back(below);
        FillFolder(whole, below, listing);
        AddFolders(pending, below, listing);
    };
    fill(L"", source);
    while (!pending.empty()) {
        const std::wstring below = Next(pending);
        Attempt(
            [&] {
                const FolderListing listing =
                    ListFolder(system_.files, Below(whole.copy, below) + L"\\");
                system_.files.CreateFolder(Below(whole.aside, below));
                fill(below, listing);
            },
            [&](const RuntimeError& error) { whole.Fail(error); });
    }
    bool isPlaced = false;
    try {
        patience_.Perform([&] { system_.files.Rename(whole.aside, whole.target); }, whole.target,
                          Patience::kLong);
        isPlaced = !system_.files.Stat(whole.aside);
    } catch (const RuntimeError&) {
    }
    if (!isPlaced) {
        Remove(whole.aside);
        return false;
    }
    for (const std::wstring& below : whole.made) {
        restore.entered.push_back({Below(folder, below), false});
    }
    for (const RuntimeError& error : whole.failures) restore.Fail(error);
    return true;
}

// Copies the files of one folder into a new one, where no other file is and none is looked for by
// its name yet. The copy call may report success for a file that it cut short: one listing shows
// all lengths, and what it does not confirm is asked itself.
void CopyRestorer::FillFolder(NewFolder& whole, const std::wstring& below,
                              const FolderListing& source) {
    const std::wstring copyFolder = Below(whole.copy, below);
    const std::wstring newFolder = Below(whole.aside, below);
    const auto fail = [&](const RuntimeError& error) { whole.Fail(error); };
    std::vector<const ListedFile*> copied;
    for (const ListedFile& file : source.files) {
        Attempt(
            [&] {
                const std::wstring to = JoinPath(newFolder, file.name);
                try {
                    system_.files.Copy(JoinPath(copyFolder, file.name), to, duringCopy_);
                } catch (const RuntimeError& error) {
                    if (error.Path() != to && !IsRefusedBeside(system_.files, to, error)) throw;
                    throw WithPath(error, to);
                }
                copied.push_back(&file);
            },
            fail);
        system_.pump.ProcessMessagesIfDue();
    }
    if (copied.empty()) return;
    std::unordered_map<std::wstring, std::uint64_t> sizes;
    Attempt(
        [&] {
            system_.files.List(newFolder, [&](const FolderEntry& entry) {
                if (!entry.isFolder) sizes.emplace(entry.name, entry.size);
            });
        },
        [](const RuntimeError&) {});
    for (const ListedFile* file : copied) {
        const auto listed = sizes.find(file->name);
        if (listed != sizes.end() && listed->second == file->size) continue;
        const std::wstring path = JoinPath(newFolder, file->name);
        Attempt(
            [&] {
                try {
                    const auto written = system_.files.Stat(path);
                    if (!written || written->size != file->size) {
                        Throw(error_number::kDeviceError, JoinPath(copyFolder, file->name));
                    }
                } catch (const RuntimeError&) {
                    Remove(path);
                    throw;
                }
            },
            fail);
    }
}

// Restores the files of one folder into one that is there.
void CopyRestorer::RestoreInto(FolderRestore& restore, const std::wstring& folder,
                               const FolderListing& source) {
    // A name that a file to restore has too would be its own working name.
    const auto isTaken = [&](const std::wstring& name) {
        return std::any_of(source.files.begin(), source.files.end(),
                           [&](const ListedFile& file) { return EqualNoCase(file.name, name); });
    };
    int number = 0;
    while (isTaken(RestoreName(number))) ++number;
    std::string usualRights;
    // By the numbers of the working names: the last file that had it. A name that could be taken
    // again was free.
    std::map<int, FilePlace> placed;
    for (const ListedFile& file : source.files) {
        Attempt(
            [&] {
                const std::wstring below = Below(folder, file.name);
                FilePlace place{JoinPath(restore.copy, below), JoinPath(restore.target, below),
                                file.size, below, number};
                RestoreFile(place, restore.before, usualRights);
                number = place.number;
                placed.insert_or_assign(number, std::move(place));
            },
            [&](const RuntimeError& error) { restore.Fail(error); });
        system_.pump.ProcessMessagesIfDue();
    }
    for (const auto& last : placed) {
        Attempt([&] { CheckThatItMoved(last.second); },
                [&](const RuntimeError& error) { restore.Fail(error); });
    }
}

// Some disks report that a file was renamed and leave it where it was. What another restore writes
// under the working name is not ours.
void CopyRestorer::CheckThatItMoved(const FilePlace& place) {
    const auto left = system_.files.Stat(place.aside);
    if (!left || left->isFolder || left->size != place.written.size ||
        left->lastWrite != place.written.lastWrite) {
        return;
    }
    Remove(place.aside);
    Throw(error_number::kDeviceError, place.target);
}

// Whether the file of before is at the target; throws when something else is, or when the file must
// not be replaced.
bool CopyRestorer::IsReplaceable(const FilePlace& place, const TargetState& before) {
    const auto there = system_.files.Stat(place.target);
    if (!there) return false;
    if (there->isFolder || !before.Holds(place.below, *there)) {
        Throw(error_number::kAlreadyExists, place.target);
    }
    if (there->isReadOnly) Throw(error_number::kPermissionDenied, place.target);
    return true;
}

// Copies a file to a free name beside its place.
void CopyRestorer::CopyAside(FilePlace& place) {
    const std::wstring folder = MFileDosShell::CFileLocation(place.target);
    for (;; ++place.number) {
        place.aside = JoinPath(folder, RestoreName(place.number));
        try {
            system_.files.Copy(place.copy, place.aside, duringCopy_);
            return;
        } catch (const RuntimeError& error) {
            const bool isAside = error.Path() == place.aside;
            if (isAside && error.Number() == error_number::kAlreadyExists) continue;
            if (!isAside && !IsRefusedBeside(system_.files, place.target, error)) throw;
            throw WithPath(error, place.target);
        }
    }
}

// Where no file was before, the rename fails when there is one now.
void CopyRestorer::RestoreFile(FilePlace& place, const TargetState& before,
                               std::string& usualRights) {
    CopyAside(place);
    try {
        // The copy call may report success for a file that it cut short.
        const auto written = system_.files.Stat(place.aside);
        if (!written || written->size != place.size) Throw(error_number::kDeviceError, place.copy);
        place.written = *written;
        if (before.Contains(place.below) && IsReplaceable(place, before)) {
            system_.files.CopyAccessRights(place.target, place.aside, usualRights);
            patience_.Perform([&] { system_.files.Replace(place.aside, place.target); },
                              place.target);
        } else {
            patience_.Perform([&] { system_.files.Rename(place.aside, place.target); },
                              place.target);
        }
    } catch (const RuntimeError& error) {
        Remove(place.aside);
        if (error.Path() != place.aside) throw;
        throw WithPath(error, place.target);
    }
}

}  // namespace vw
