#include <cstdlib>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/CPackage.h"
#include "engine/RunTexts.h"
#include "engine/SourceFolder.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWalk.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

// Completing a copy that a cancel cut short, or that misses files which could not be read. Its item
// has not changed since, so what is missing is added: each file is written under a working name and
// takes its name in the copy when it is whole. The comment loses its mark last, so that whatever
// goes wrong leaves a copy that is known to be incomplete, with the files that it has by then.

namespace vw {

/// What an incomplete copy lacks. Paths are relative to the item.
struct CPackage::CompletionPlan {
    struct File {
        std::wstring path;
        std::uint64_t size = 0;
    };
    std::vector<std::wstring> folders;  ///< each behind the one that holds it
    std::vector<File> files;
    std::vector<std::wstring> unreadable;  ///< folders that could not be listed
    std::vector<std::wstring> links;
};

namespace {

// Disks of the older formats keep times in steps of two seconds.
constexpr Date kTimeStep = 2;

bool HasContentOf(const FileFacts& copy, const SourceFile& source) {
    return !copy.isFolder && copy.size == source.size &&
           std::abs(copy.lastWrite - source.lastWrite) <= kTimeStep;
}

}  // namespace

CPackage::Completion CPackage::CompleteCopy(const NewCopy& copy, bool subFolders) {
    CompletionPlan plan;
    const std::wstring place = MFileDosShell::WithSeparator(copy.place);
    if (!PlanCompletion(place, {}, subFolders, copy.itemPath, plan)) return Completion::Differs;
    progress_.Report(L"Backing: " + copy.itemPath, false);
    CopyTally tally{.itemPath = copy.itemPath, .isFolder = true};
    AddMissing(copy, plan, tally);
    if (tally.givenUp) return Completion::Done;
    NewCopy completed = copy;
    completed.completeness = tally.cutShort     ? copy.completeness
                             : tally.failed > 0 ? Completeness::MissesFiles
                                                : Completeness::Whole;
    if (completed.completeness != copy.completeness) {
        const std::wstring comment = PrepareComment(completed);
        const std::wstring file = PackageCommentFile(copy.place);
        patience_.Perform([&] { system_.files.Replace(comment, file); }, file);
    }
    TellIncomplete(completed);
    if (completed.completeness == Completeness::Whole) {
        progress_.OnItem(ItemEvent::Copied, copy.itemPath, {});
        if (!state_.cancelRequested) progress_.Report(L"\tDone.", false);
    }
    return Completion::Done;
}

// Compares one folder of the item with that of the copy. False when the copy holds something that
// is not what the item holds now. Nothing is changed before all is compared.
bool CPackage::PlanCompletion(const std::wstring& copyFolder, const std::wstring& relative,
                              bool subFolders, const std::wstring& itemPath, CompletionPlan& plan) {
    SourceFolder source;
    try {
        source = ReadSourceFolder(system_.files, MFileDosShell::WithSeparator(itemPath) + relative);
    } catch (const RuntimeError&) {
        plan.unreadable.push_back(relative);
        return true;
    }
    std::unordered_map<std::wstring, FileFacts> present;
    const auto folder = Stat(copyFolder);
    if (folder) {
        system_.files.List(copyFolder, [&](const FolderEntry& entry) {
            present.emplace(UpperCase(entry.name), entry);
        });
    } else {
        plan.folders.push_back(relative);
    }
    for (const std::wstring& name : source.links) plan.links.push_back(relative + name);
    for (const SourceFile& file : source.files) {
        const auto found = present.find(UpperCase(file.name));
        if (found == present.end()) {
            plan.files.push_back({relative + file.name, file.size});
        } else if (!HasContentOf(found->second, file)) {
            return false;
        }
        system_.pump.DoEventsIfDue();
    }
    if (!subFolders) return true;
    for (const std::wstring& name : source.folders) {
        const auto found = present.find(UpperCase(name));
        if (found != present.end() && !found->second.isFolder) return false;
        if (!PlanCompletion(copyFolder + name + L"\\", relative + name + L"\\", true, itemPath,
                            plan)) {
            return false;
        }
    }
    return true;
}

void CPackage::AddMissing(const NewCopy& copy, const CompletionPlan& plan, CopyTally& tally) {
    const std::wstring from = MFileDosShell::WithSeparator(copy.itemPath);
    const std::wstring to = MFileDosShell::WithSeparator(copy.place);
    for (const std::wstring& name : plan.links) Tell(run_text::kLinkLeftOut, from + name);
    for (const std::wstring& folder : plan.unreadable) {
        // Once more, for the error. One that can be read by now is left to the next run.
        CopyStep(L"BackupFolder", 0, tally,
                 [&] { static_cast<void>(ReadSourceFolder(system_.files, from + folder)); });
        ++tally.failed;
    }
    for (const std::wstring& folder : plan.folders) {
        if (MustStop(tally)) return;
        const bool made =
            CopyStep(L"BackupFolder", 0, tally, [&] { system_.files.MakeFolder(to + folder); });
        if (!made) ++tally.failed;
    }
    for (const CompletionPlan::File& file : plan.files) {
        if (MustStop(tally)) return;
        AddFile(copy, from + file.path, to + file.path, file.size, tally);
        system_.pump.DoEventsIfDue();
    }
    // Last, since every entry that is made in a folder changes its date; the deepest first.
    std::set<std::wstring> touched(plan.folders.begin(), plan.folders.end());
    for (const CompletionPlan::File& file : plan.files) {
        touched.insert(file.path.substr(0, file.path.rfind(L'\\') + 1));
    }
    if (!touched.empty()) touched.insert(std::wstring());
    for (auto folder = touched.rbegin(); folder != touched.rend(); ++folder) {
        KeepFolderInfo(from + *folder, to + *folder);
    }
}

void CPackage::AddFile(const NewCopy& copy, const std::wstring& source, const std::wstring& target,
                       std::uint64_t size, CopyTally& tally) {
    const std::wstring entry =
        destination_->WorkingPath(WorkingState::New, copy.itemPath, copy.place);
    if (destination_->MayHold(entry)) Remove(entry);
    destination_->Added(entry);
    const std::size_t copiedBefore = tally.copied;
    BackupFile(entry, source, size, tally);
    if (tally.copied == copiedBefore) return;
    CheckFileCopy(entry, source, size, tally);
    if (tally.copied == copiedBefore) return;
    const bool placed = CopyStep(L"BackupFile", size, tally, [&] { MoveEntry(entry, target); });
    if (placed) return;
    Remove(entry);
    --tally.copied;
    ++tally.failed;
}

}  // namespace vw
