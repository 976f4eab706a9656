#include "restore/ItemList.h"

#include <algorithm>
#include <utility>

#include "engine/CopyComment.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "fsutil/Sort.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/CopyGroup.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"

namespace vw {
namespace {

using namespace MFileDosShell;
constexpr int kRowReadsBackDifferently = 10000;

}  // namespace

ListView& ItemList::View() { return main_.List(control::lsvRestore1); }

void ItemList::Clear() {
    View().Clear();
    items_.clear();
    foldersThere_.clear();
}

void ItemList::Fill(const std::wstring& folder) {
    for (const CopyGroup& series : FindCopies(folder)) {
        if (series.MayHoldOthers()) {
            // An unreadable series must not hide the others.
            trap_(L"ListRestoreFiles", [&] { AddItems(series); });
        } else {
            AddItems(series);
        }
        system_.pump.ProcessMessagesIfDue();
    }
}

// In the order of their names, so that the first copy of each item is the lowest one.
std::vector<CopyGroup> ItemList::FindCopies(const std::wstring& folder) {
    std::vector<std::wstring> paths;
    std::unordered_map<std::wstring, bool> folders;
    std::vector<std::wstring> comments;
    system_.files.List(folder, [&](const FolderEntry& entry) {
        std::wstring path = JoinPath(folder, entry.name);
        if (IsCopyName(entry.name)) {
            folders.emplace(path, entry.isFolder);
            paths.push_back(std::move(path));
        } else if (IsCommentName(entry.name)) {
            comments.push_back(std::move(path));
        }
        system_.pump.ProcessMessagesIfDue();
    });
    MFileDosShell::Sort(paths, system_.pump);
    std::vector<CopyEntry> copies;
    copies.reserve(paths.size());
    for (std::wstring& path : paths) {
        const bool isFolder = folders.at(path);
        copies.push_back({.path = std::move(path), .isFolder = isFolder});
    }
    return GroupCopies(std::move(copies), comments);
}

// The copies of a series are those of one item, or folders around those of other items, or both.
void ItemList::AddItems(const CopyGroup& series) {
    std::vector<NestedItem> nested = FindNestedItems(system_.files, system_.pump, series);
    for (const NestedItem& item : nested) {
        if (!item.hasCopy) continue;
        AddItem({.shown = {.name = CFileName(item.below),
                           .location = series.location,
                           .commentOf =
                               item.commentIn.empty() ? L"" : JoinPath(item.commentIn, item.below)},
                 .topOrigin = series.origin,
                 .nested = item.below},
                item.isFolder);
    }
    const auto own = std::ranges::find_if(series.copies, [&](const CopyEntry& copy) {
        return !copy.isFolder || !HoldsAny(system_.files, copy.path, nested);
    });
    if (own == series.copies.end()) return;
    // Skip the lookup: probing for a missing file is slow in a large folder.
    AddItem({.shown = {.name = series.origin,
                       .location = series.location,
                       .commentOf = own->hasComment ? own->path : L""},
             .topOrigin = series.origin,
             .beside = std::move(nested)},
            own->isFolder);
}

void ItemList::AddItem(ItemRow item, bool isFolder) {
    ListView& items = View();
    ShownItem& shown = item.shown;
    shown.text = CFileFirstName(shown.name);
    const bool hasDetails = items.Style() == ViewStyle::Details;
    if (hasDetails) {
        shown.type = isFolder ? L"Folder" : CFileExt(shown.name);
        // May show an error: there is no row without its item meanwhile.
        shown.originalLocation = ReadPlace(shown);
    }
    const int row =
        items.Add(shown.text, isFolder ? RowIcon::Folder : RowIcon::File, items_.size());
    if (items.Rows().SubItem(row, kNameColumn) != shown.text) {
        Throw(kRowReadsBackDifferently, shown.name);
    }
    if (hasDetails) {
        items.SetSubItem(row, L"Type", shown.type);
        items.SetSubItem(row, L"SP", std::to_wstring(shown.location), shown.location);
        items.SetSubItem(row, L"Orginal Location", shown.originalLocation);
    }
    items_.push_back(std::move(item));
}

// What the row shows as the original location: the folder of the comment, while it exists.
std::wstring ItemList::ReadPlace(ShownItem& item) {
    std::wstring shown(kUnknownLocation);
    if (item.commentOf.empty()) return shown;
    ErrorTrap(system_.errors, L"Class Module", L"CPackage")(L"PackageOriginalLocation", [&] {
        const auto comment = ReadCopyComment(system_, item.commentOf);
        if (!comment || comment->place.empty()) return;
        item.place = comment->place;
        if (IsFolderThere(item.place)) shown = item.place;
    });
    return shown;
}

// Most copies of a listing come from few folders.
bool ItemList::IsFolderThere(const std::wstring& folder) {
    const auto [known, isNew] = foldersThere_.try_emplace(UpperCase(folder), false);
    if (isNew) {
        const auto facts = system_.files.Stat(folder);
        known->second = facts && facts->isFolder;
    }
    return known->second;
}

// A row shows the name of a folder without what is behind its point; the row that remembers the
// whole name goes before one that only shows it.
int ItemList::RowOf(std::wstring_view path) {
    if (path.ends_with(L'*')) path.remove_suffix(1);
    const std::wstring name = CFileName(path);
    const std::wstring folder = CFileLocation(path);
    ListView& items = View();
    const int count = items.Rows().Count();
    int shown = -1;
    for (int row = 0; row < count; ++row) {
        const ShownItem& item = At(row).shown;
        if (!EqualNoCase(item.originalLocation, folder)) continue;
        const bool hasExtension = !IsFolderType(item.type);
        if (!hasExtension && EqualNoCase(item.name, name)) return row;
        // The first one counts unless another row has the whole name.
        const std::wstring text = item.text + (hasExtension ? item.type : L"");
        if (shown < 0 && EqualNoCase(text, name)) shown = row;
    }
    return shown;
}

const ItemRow& ItemList::At(int row) {
    static const ItemRow kNone;
    const std::size_t tag = View().Rows().At(row).tag;
    return tag < items_.size() ? items_[tag] : kNone;
}

int ItemList::RowLike(const ShownItem& item) {
    for (int row = 0; row < View().Rows().Count(); ++row) {
        const ShownItem& shown = At(row).shown;
        if (EqualNoCase(shown.text, item.text) && EqualNoCase(shown.type, item.type) &&
            EqualNoCase(shown.originalLocation, item.originalLocation)) {
            return row;
        }
    }
    return 0;
}

}  // namespace vw
