#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "fsutil/Sort.h"
#include "fsutil/TreeWalk.h"
#include "platform/DateText.h"
#include "platform/ErrorTrap.h"
#include "platform/EventPump.h"
#include "platform/FileSystem.h"
#include "platform/Like.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "platform/TextDirection.h"
#include "platform/Val.h"
#include "restore/CopiesBrowser.h"
#include "restore/CopiesIndex.h"
#include "restore/NestedItems.h"
#include "restore/RestoreHost.h"
#include "ui/Form.h"

// How the two lists of the restore view are filled from the copy folder.

namespace vw {
namespace {

using namespace MFileDosShell;

constexpr Procedure Named(std::wstring_view name) { return {name, L"Form", L"frmMain"}; }

constexpr int kRowReadsBackDifferently = 10000;
constexpr std::wstring_view kUnknownLocation = L"??";

/// Keeps a second listing from beginning while messages are processed in the first.
class Listing {
  public:
    explicit Listing(bool& flag) noexcept : flag_(flag) { flag_ = true; }
    ~Listing() { flag_ = false; }
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;

  private:
    bool& flag_;
};

std::wstring WithoutFinalSeparator(const std::wstring& folder) {
    return Like(folder, L"?:\\") ? folder.substr(0, 2) : folder;
}

}  // namespace

void CopiesBrowser::ListRestoreFiles() {
    if (!sourceChosen_ || listing_) return;
    const Listing guard(listing_);
    Trapped(system_.errors, Named(L"ListRestoreFiles"), [this] {
        const RedrawPause pause(Items());
        Items().Clear();
        items_.clear();
        listed_.reset();
        List();
        Sort(Items(), itemsSort_);
        if (Items().Count() > 0) {
            Items().Select(0);
            lsvRestore1ItemClick(0);
        } else {
            ClearCopies();
        }
    });
}

void CopiesBrowser::List() {
    const std::wstring folder = WithoutFinalSeparator(RestoreFrom());
    // A drive that takes no folder has no copies, and needs no word about it.
    if (!system_.files.Look(folder)) return;
    for (const CopySeries& series : FindCopies(folder)) {
        if (series.MayHoldOthers()) {
            // One that cannot be looked into hides the others nothing.
            Trapped(system_.errors, Named(L"ListRestoreFiles"), [&] { AddItems(series); });
        } else {
            AddItems(series);
        }
        system_.pump.DoEventsIfDue();
    }
}

// In the order of their names, so that the first copy of each item is the lowest one.
std::vector<CopySeries> CopiesBrowser::FindCopies(const std::wstring& folder) {
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
        system_.pump.DoEventsIfDue();
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
void CopiesBrowser::AddItems(const CopySeries& series) {
    std::vector<NestedItem> nested;
    if (series.MayHoldOthers()) {
        std::vector<std::wstring> folders;
        for (const CopyEntry& copy : series.copies) {
            if (copy.isFolder) folders.push_back(copy.path);
        }
        nested = FindNestedItems(system_.files, system_.pump, folders);
    }
    for (const NestedItem& item : nested) {
        if (!item.stands) continue;
        AddItem({.item = {CFileName(item.below), series.origin, series.location, item.below, {}},
                 .isFolder = item.isFolder,
                 .commentOf = item.commentIn.empty() ? L"" : JoinPath(item.commentIn, item.below)});
    }
    const auto own = std::ranges::find_if(series.copies, [&](const CopyEntry& copy) {
        return !copy.isFolder || !HoldsAny(system_.files, copy.path, nested);
    });
    if (own == series.copies.end()) return;
    // Looking for a comment that is known not to be there takes long in a large folder.
    AddItem({.item = {series.origin, series.origin, series.location, {}, std::move(nested)},
             .isFolder = own->isFolder,
             .commentOf = own->hasComment ? own->path : L""});
}

void CopiesBrowser::AddItem(ItemRow added) {
    ListView& items = Items();
    const Item& item = added.item;
    const std::wstring text = CFileFirstName(item.origin);
    const int row = items.Add(text, added.isFolder ? RowIcon::Folder : RowIcon::File);
    if (items.SubItem(row, kNameColumn) != text) Raise(kRowReadsBackDifferently, item.origin);
    items.SetTag(row, items_.size());
    if (items.Style() == ViewStyle::Details) {
        items.SetSubItem(row, L"Type", added.isFolder ? L"Folder" : CFileExt(item.origin));
        items.SetSubItem(row, L"SP", std::to_wstring(item.location), item.location);
        items.SetSubItem(row, L"Orginal Location",
                         added.commentOf.empty()
                             ? std::wstring(kUnknownLocation)
                             : host_.Engine().PackageOriginalLocation(added.commentOf));
    }
    items_.push_back(std::move(added.item));
}

void CopiesBrowser::ListCopyes(int row) {
    Trapped(system_.errors, Named(L"ListCopyes"), [&] {
        listed_ = Items().Tag(row);
        const RedrawPause pause(Copies());
        ClearCopies();
        NameCopies(row);
        if (!AddCopies(WithoutFinalSeparator(RestoreFrom()), row)) return;
        Sort(Copies(), copiesSort_);
        SelectFirstCopy();
    });
}

// A listing that is still under way ends here: its copies are those of another item.
void CopiesBrowser::ClearCopies() {
    ++copiesListing_;
    Copies().Clear();
    main_.ResetText(L"lblCopiesHeading");
}

// The heading says whose copies they are, wherever the eye has lost the selected row.
void CopiesBrowser::NameCopies(int row) {
    ListView& items = Items();
    const std::size_t tag = items.Tag(row);
    if (tag >= items_.size()) return;
    const bool arabic = main_.InLanguage() == Language::Arabic;
    std::wstring text(arabic ? L"نسخ " : L"Copies of ");
    text += items_[tag].origin;
    const std::wstring location = items.SubItem(row, L"Orginal Location");
    if (!location.empty() && location != kUnknownLocation) {
        text.append(arabic ? L"، " + MarkPath(location) : L", " + location);
    }
    main_.SetText(L"lblCopiesHeading", text);
}

// The name that the row shows finds the copies of most items. Those of a folder with a point in its
// name, and of items below such a folder, are found by what the listing remembers: its name without
// the part behind the point may be that of another folder. False when another listing began
// meanwhile.
bool CopiesBrowser::AddCopies(const std::wstring& folder, int row) {
    ListView& items = Items();
    const int location = Val(L"0" + items.SubItem(row, L"SP"));
    const std::wstring type = items.SubItem(row, L"Type");
    const bool isFolder = EqualNoCase(type, L"Folder") || EqualNoCase(type, L"Rule");
    const std::wstring name = items.SubItem(row, kNameColumn) + (isFolder ? L"" : type);
    const CopiesOfItem wanted(name, location);
    const std::size_t tag = items.Tag(row);
    const Item item = tag < items_.size() ? items_[tag] : Item{};
    const bool byOrigin = isFolder || !item.nested.empty();
    const int listing = copiesListing_;

    std::vector<std::pair<std::wstring, FileFacts>> found;
    std::vector<std::pair<std::wstring, FileFacts>> foundByOrigin;
    system_.files.List(folder, [&](const FolderEntry& entry) {
        if (entry.isSystem || Like(entry.name, L"*.vwc")) return;
        if (item.nested.empty() && wanted.Contains(entry.name)) {
            found.emplace_back(entry.name, entry);
        } else if (byOrigin && entry.isFolder && IsCopyName(entry.name) &&
                   LocationOf(entry.name) == item.location &&
                   EqualNoCase(CFileOrigin(entry.name), item.topOrigin)) {
            foundByOrigin.emplace_back(entry.name, entry);
        }
    });
    const bool isOther = isFolder && !EqualNoCase(name, item.topOrigin) && !foundByOrigin.empty();
    for (const auto& [entryName, facts] : found.empty() || isOther ? foundByOrigin : found) {
        const std::wstring entry = JoinPath(folder, entryName);
        const auto stored = CopyIn(entry, facts, item);
        if (!stored) continue;
        const CopyRow copy = ReadCopy(entry, *stored, item.nested);
        if (listing != copiesListing_) return false;
        AddCopy(copy);
        system_.pump.DoEventsIfDue();
        if (listing != copiesListing_) return false;
    }
    return true;
}

// Facts of the item's copy in an entry of the copy folder; nothing when it has none there.
std::optional<FileFacts> CopiesBrowser::CopyIn(const std::wstring& entry, const FileFacts& facts,
                                               const Item& item) {
    if (!item.nested.empty()) return system_.files.Look(JoinPath(entry, item.nested));
    if (facts.isFolder && HoldsAny(system_.files, entry, item.beside)) return std::nullopt;
    return facts;
}

CopiesBrowser::CopyRow CopiesBrowser::ReadCopy(const std::wstring& entry, const FileFacts& facts,
                                               const std::wstring& nested) {
    CopyRow copy;
    copy.label = CopyLabel(CFileBackNumber(CFileName(entry)));
    copy.path = nested.empty() ? entry : JoinPath(entry, nested);
    copy.isFolder = facts.isFolder;
    // What the listing told of a file needs no second question.
    copy.size =
        facts.isFolder ? PathSize(system_, copy.path, true) : static_cast<std::int64_t>(facts.size);
    copy.date = PathDate(system_, host_.Engine(), copy.path);
    return copy;
}

// A later copy of the same label takes the row of the earlier one.
void CopiesBrowser::AddCopy(const CopyRow& copy) {
    ListView& copies = Copies();
    int row = copies.Find(kNameColumn, copy.label);
    if (row < 0) row = copies.Add(copy.label, copy.isFolder ? RowIcon::Folder : RowIcon::File);
    copies.SetSubItem(row, L"Size",
                      copy.size < 0 ? L"" : CSize(static_cast<std::uint64_t>(copy.size)),
                      copy.size);
    copies.SetSubItem(row, L"Date", DateText(copy.date), copy.date);
    copies.SetSubItem(row, L"BackupName", copy.path);
}

}  // namespace vw
