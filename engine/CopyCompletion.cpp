#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/CopyCompletion.h"
#include "engine/FolderListing.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

// Completing a copy that a cancel cut short, or that misses files which could not be read. Its item
// has not changed since, so what is missing is added: each file is written under a working name and
// takes its name in the copy when it is whole. The comment loses its mark last, so that whatever
// goes wrong leaves a copy that is known to be incomplete, with the files that it has by then.

namespace vw {

/// What an incomplete copy lacks. Paths are relative to the item.
struct CopyCompletion::Plan {
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

bool HasContentOf(const FileInfo& copy, const ListedFile& source) {
    return !copy.isFolder && copy.size == source.size &&
           IsSameDate(copy.lastWrite, source.lastWrite);
}

}  // namespace

CopyCompletion::CopyCompletion(const EngineContext& context, DestinationSession& session,
                               CommentStore& comments, CopySeries& series, ItemCopier& copier)
    : EnginePart(context),
      session_(session),
      comments_(comments),
      series_(series),
      copier_(copier) {}

Completion CopyCompletion::Complete(const PendingCopy& copy, bool subFolders) {
    Plan plan;
    const std::wstring place = MFileDosShell::WithSeparator(copy.finalPath);
    if (!Compare(place, subFolders, copy.itemPath, plan)) return Completion::Differs;
    progress_.Report(L"Backing: " + copy.itemPath, false);
    CopyResult result{.itemPath = copy.itemPath, .isFolder = true};
    AddMissing(copy, plan, result);
    if (result.aborted) return Completion::Done;
    PendingCopy completed = copy;
    completed.completeness = result.cancelled    ? copy.completeness
                             : result.failed > 0 ? Completeness::MissesFiles
                                                 : Completeness::Whole;
    if (completed.completeness != copy.completeness) {
        const std::wstring comment = comments_.Prepare(completed);
        const std::wstring file = CommentStore::FileOf(copy.finalPath);
        patience_.Perform([&] { system_.files.Replace(comment, file); }, file);
    }
    series_.ReportIncomplete(completed);
    if (completed.completeness == Completeness::Whole) {
        progress_.OnItem(ItemEvent::Copied, copy.itemPath, {});
        if (!state_.cancel.IsRequested()) progress_.Report(L"\tDone.", false);
    }
    return Completion::Done;
}

// Compares the item with its copy. False when the copy holds something that is not what the item
// holds now. Nothing is changed before all is compared.
bool CopyCompletion::Compare(const std::wstring& copyFolder, bool subFolders,
                             const std::wstring& itemPath, Plan& plan) {
    std::vector<std::wstring> pending{std::wstring()};
    while (!pending.empty()) {
        const std::wstring folder = std::move(pending.back());
        pending.pop_back();
        std::vector<std::wstring> below;
        if (!CompareFolder(copyFolder, folder, itemPath, plan, below)) return false;
        if (subFolders) pending.insert(pending.end(), below.rbegin(), below.rend());
    }
    return true;
}

// The same for one folder; `below` gets its subfolders.
bool CopyCompletion::CompareFolder(const std::wstring& copyRoot, const std::wstring& relative,
                                   const std::wstring& itemPath, Plan& plan,
                                   std::vector<std::wstring>& below) {
    FolderListing source;
    try {
        source = ListFolder(system_.files, MFileDosShell::WithSeparator(itemPath) + relative);
    } catch (const RuntimeError&) {
        plan.unreadable.push_back(relative);
        return true;
    }
    std::unordered_map<std::wstring, FileInfo> present;
    const std::wstring copyFolder = copyRoot + relative;
    if (Stat(copyFolder)) {
        system_.files.List(copyFolder, [&](const FolderEntry& entry) {
            present.emplace(UpperCase(entry.name), entry);
        });
    } else {
        plan.folders.push_back(relative);
    }
    for (const std::wstring& name : source.links) plan.links.push_back(relative + name);
    for (const ListedFile& file : source.files) {
        const auto found = present.find(UpperCase(file.name));
        if (found == present.end()) {
            plan.files.push_back({relative + file.name, file.size});
        } else if (!HasContentOf(found->second, file)) {
            return false;
        }
        system_.pump.ProcessMessagesIfDue();
    }
    for (const std::wstring& name : source.folders) {
        const auto found = present.find(UpperCase(name));
        if (found != present.end() && !found->second.isFolder) return false;
        below.push_back(relative + name + L"\\");
    }
    return true;
}

void CopyCompletion::AddMissing(const PendingCopy& copy, const Plan& plan, CopyResult& result) {
    const std::wstring from = MFileDosShell::WithSeparator(copy.itemPath);
    const std::wstring to = MFileDosShell::WithSeparator(copy.finalPath);
    for (const std::wstring& name : plan.links) Notice(run_text::kLinkLeftOut, from + name);
    for (const std::wstring& folder : plan.unreadable) {
        // Once more, for the error. One that can be read by now is left to the next run.
        copier_.CopyStep(L"BackupFolder", 0, result,
                         [&] { static_cast<void>(ListFolder(system_.files, from + folder)); });
        ++result.failed;
    }
    for (const std::wstring& folder : plan.folders) {
        if (copier_.MustStop(result)) return;
        const bool made = copier_.CopyStep(L"BackupFolder", 0, result,
                                           [&] { system_.files.CreateFolder(to + folder); });
        if (!made) ++result.failed;
    }
    for (const Plan::File& file : plan.files) {
        if (copier_.MustStop(result)) return;
        AddFile(copy, from + file.path, to + file.path, file.size, result);
        system_.pump.ProcessMessagesIfDue();
    }
    // Last, since every entry that is made in a folder changes its date; the deepest first.
    std::set<std::wstring> touched(plan.folders.begin(), plan.folders.end());
    for (const Plan::File& file : plan.files) {
        touched.insert(file.path.substr(0, file.path.rfind(L'\\') + 1));
    }
    if (!touched.empty()) touched.insert(std::wstring());
    for (auto folder = touched.rbegin(); folder != touched.rend(); ++folder) {
        KeepFolderInfo(from + *folder, to + *folder);
    }
}

void CopyCompletion::AddFile(const PendingCopy& copy, const std::wstring& source,
                             const std::wstring& target, std::uint64_t size, CopyResult& result) {
    const std::wstring entry =
        session_->WorkingPath(WorkingState::New, copy.itemPath, copy.finalPath);
    if (session_->MayContain(entry)) Remove(entry);
    session_->OnAdded(entry);
    const std::size_t copiedBefore = result.copied;
    copier_.BackupFile(entry, source, size, result);
    if (result.copied == copiedBefore) return;
    copier_.CheckFileCopy(entry, source, size, result);
    if (result.copied == copiedBefore) return;
    const bool placed =
        copier_.CopyStep(L"BackupFile", size, result, [&] { session_.MoveEntry(entry, target); });
    if (placed) return;
    Remove(entry);
    ++result.failed;
}

}  // namespace vw
