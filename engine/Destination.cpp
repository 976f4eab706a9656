#include "engine/Destination.h"

#include <tuple>
#include <utility>
#include <vector>

#include "engine/CommentLine.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "fsutil/Patience.h"
#include "fsutil/TreeOperations.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

namespace vw {

namespace {

// The comment of an unfinished copy has the copy's working name plus ".vwc".
std::wstring_view WithoutCommentExtension(std::wstring_view name) {
    if (name.ends_with(kCommentExtension)) name.remove_suffix(kCommentExtension.size());
    return name;
}

}  // namespace

Destination::Destination(System& system, std::wstring_view folder, Patience& patience)
    : system_(system),
      patience_(patience),
      folder_(folder),
      place_(MFileDosShell::DestinationFolder(folder)),
      lock_(system.files, place_),
      self_(ThisProcess()) {}

bool Destination::TryEnter() {
    if (!lock_.TryTake()) return false;
    Scan();
    return true;
}

void Destination::Scan() {
    std::vector<std::wstring> leftOvers;
    system_.files.List(place_, [&](const FolderEntry& entry) {
        system_.pump.ProcessMessagesIfDue();
        entries_.insert(NameKey(entry.name));
        const auto name = ParseWorkingName(WithoutCommentExtension(entry.name));
        if (!name || (name->owner != self_ && !IsGone(name->owner))) return;
        const bool isComment = entry.name.ends_with(kCommentExtension);
        if (name->state == WorkingState::Ready && !isComment) {
            ReadyCopy& ready = ready_[name->item];
            // Of two with the same dates the one that holds more is taken.
            if (ready.path.empty() || std::tuple(ready.made, ready.date, name->completeness) <
                                          std::tuple(name->made, name->date, ready.completeness)) {
                ready = {folder_ + L"\\" + std::wstring(entry.name), name->date, name->copy,
                         name->made, name->completeness};
            }
        } else if (name->state == WorkingState::Old && !isComment) {
            displaced_.Add(entry.name, name->item, name->copy);
        } else {
            leftOvers.emplace_back(entry.name);
        }
    });
    for (const std::wstring& name : leftOvers) Clean(name);
}

// What cannot be removed now (a virus scanner may hold it) is tried again by the next run.
void Destination::Clean(std::wstring_view entryName) {
    try {
        DeleteTree(
            system_.files, folder_ + L"\\" + std::wstring(entryName),
            [this] { system_.pump.ProcessMessagesIfDue(); }, &patience_);
    } catch (const RuntimeError&) {
    }
}

bool Destination::MayContain(std::wstring_view copyPath) const {
    if (copyPath.size() <= folder_.size() + 1) return true;
    // A copy of an item below a dotted folder lies deeper; its topmost folder decides.
    std::wstring_view name = copyPath.substr(folder_.size() + 1);
    name = name.substr(0, name.find(L'\\'));
    return entries_.contains(NameKey(name));
}

bool Destination::IsTopEntry(std::wstring_view copyPath) const {
    return copyPath.size() > folder_.size() + 1 &&
           copyPath.find(L'\\', folder_.size() + 1) == std::wstring_view::npos;
}

void Destination::OnAdded(std::wstring_view path) {
    std::wstring_view name = path.substr(folder_.size() + 1);
    entries_.insert(NameKey(name.substr(0, name.find(L'\\'))));
    cachedCopy_.clear();
}

// Removing a nested entry does not remove its top-level folder.
void Destination::OnRemoved(std::wstring_view path) {
    const std::wstring_view name = path.substr(folder_.size() + 1);
    if (name.find(L'\\') == std::wstring_view::npos) entries_.erase(NameKey(name));
}

void Destination::CacheComment(std::wstring_view copyPath, std::wstring comment) {
    cachedCopy_ = copyPath;
    cachedComment_ = std::move(comment);
}

std::optional<std::wstring> Destination::TakeCachedComment(std::wstring_view copyPath) {
    if (cachedCopy_.empty() || cachedCopy_ != copyPath) return std::nullopt;
    cachedCopy_.clear();
    return std::move(cachedComment_);
}

bool Destination::IsOnFixedDrive() {
    if (!onFixedDrive_) onFixedDrive_ = MFileDosShell::FolderOnFixedDrive(system_, place_);
    return *onFixedDrive_;
}

std::wstring Destination::WorkingPath(WorkingState state, std::wstring_view itemPath,
                                      std::wstring_view copyPath, Date date) const {
    const WorkingName name{state, NameKey(itemPath), NameKey(copyPath), date, self_};
    return folder_ + L"\\" + FormatWorkingName(name, MFileDosShell::CFileFirstName(itemPath));
}

std::wstring Destination::ReadyPath(std::wstring_view itemPath, std::wstring_view copyPath,
                                    Date date, Date made, Completeness completeness) const {
    const WorkingName name{
        WorkingState::Ready, NameKey(itemPath), NameKey(copyPath), date, self_, made, completeness};
    return folder_ + L"\\" + FormatWorkingName(name, MFileDosShell::CFileFirstName(itemPath));
}

const ReadyCopy* Destination::ReadyOf(std::wstring_view itemPath) const {
    const auto found = ready_.find(NameKey(itemPath));
    return found == ready_.end() ? nullptr : &found->second;
}

void Destination::AddPending(std::wstring_view itemPath, std::wstring_view copyPath,
                             ReadyCopy ready) {
    ready.copy = NameKey(copyPath);
    ready_[NameKey(itemPath)] = std::move(ready);
}

void Destination::RemovePending(std::wstring_view itemPath) { ready_.erase(NameKey(itemPath)); }

bool Destination::IsReservedForOther(std::wstring_view copyPath, std::wstring_view itemPath) const {
    const std::uint64_t item = NameKey(itemPath);
    const std::uint64_t copy = NameKey(copyPath);
    for (const auto& [owner, ready] : ready_) {
        if (owner != item && ready.copy == copy) return true;
    }
    return false;
}

}  // namespace vw
