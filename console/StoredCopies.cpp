#include "console/StoredCopies.h"

#include <algorithm>
#include <tuple>

#include "console/Console.h"
#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/NestedItems.h"

namespace vw {
namespace {

auto KeyOf(const DestinationEntry& entry) {
    return std::tie(entry.name, entry.size, entry.lastWrite, entry.isFolder);
}

}  // namespace

std::optional<CopyComment> CommentOf(Console& console, std::wstring_view copyPath) {
    return ReadCopyComment(console.system, copyPath, DamagedDate::LeaveOut);
}

DestinationView::DestinationView(Console& console, std::wstring_view folder)
    : console_(console), folder_(folder), entries_(Listed()) {}

std::vector<DestinationEntry> DestinationView::Listed() const {
    std::vector<DestinationEntry> entries;
    console_.system.files.List(folder_, [&](const FolderEntry& entry) {
        entries.push_back({static_cast<const FileInfo&>(entry), std::wstring(entry.name)});
    });
    std::ranges::sort(entries, {}, &DestinationEntry::name);
    return entries;
}

bool DestinationView::HasChanged() const {
    return !std::ranges::equal(entries_, Listed(), {}, KeyOf, KeyOf);
}

std::vector<CopyGroup> DestinationView::Series() const {
    std::vector<CopyEntry> copies;
    std::vector<std::wstring> comments;
    for (const DestinationEntry& entry : entries_) {
        std::wstring path = JoinPath(folder_, entry.name);
        if (IsCopyName(entry.name)) {
            copies.push_back({.path = std::move(path), .isFolder = entry.isFolder});
        } else if (IsCommentName(entry.name)) {
            comments.push_back(std::move(path));
        }
    }
    return GroupCopies(std::move(copies), comments);
}

std::optional<std::wstring> StoreOf(std::wstring_view copyPath) {
    for (std::wstring path(copyPath); !path.empty(); path = MFileDosShell::CFileLocation(path)) {
        if (IsCopyName(MFileDosShell::CFileName(path))) return MFileDosShell::CFileLocation(path);
    }
    return std::nullopt;
}

std::vector<ShownCopy> CopiesIn(Console& console, const DestinationView& view) {
    FileSystem& files = console.system.files;
    std::vector<ShownCopy> shown;
    for (const CopyGroup& series : view.Series()) {
        const std::vector<NestedItem> nested = FindNestedItems(files, console.system.pump, series);
        std::wstring commentOf;
        for (const CopyEntry& copy : series.copies) {
            if (copy.hasComment && commentOf.empty()) commentOf = copy.path;
        }
        for (const CopyEntry& copy : series.copies) {
            const int number = CFileBackNumber(MFileDosShell::CFileName(copy.path));
            for (const NestedItem& item : nested) {
                std::wstring path = JoinPath(copy.path, item.below);
                if (!copy.isFolder || !files.Stat(path)) continue;
                shown.push_back(
                    {MFileDosShell::CFileName(item.below), series.location, number, std::move(path),
                     item.commentIn.empty() ? L"" : JoinPath(item.commentIn, item.below)});
            }
            if (copy.isFolder && HoldsAny(files, copy.path, nested)) continue;
            shown.push_back({series.origin, series.location, number, copy.path, commentOf});
        }
    }
    return shown;
}

}  // namespace vw
