#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "engine/CPackage.h"
#include "engine/CommentLine.h"
#include "engine/CopyComment.h"
#include "engine/CopyLabel.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "fsutil/Sort.h"
#include "platform/DateText.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/Scoped.h"
#include "platform/TextCase.h"
#include "platform/TextDirection.h"
#include "platform/Wildcards.h"
#include "restore/CopiesBrowser.h"
#include "restore/NestedItems.h"
#include "restore/RestoreTexts.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"
#include "ui/StatusLine.h"

// How the two lists of the restore view are filled from the copy folder.

namespace vw {
namespace {

using namespace MFileDosShell;
constexpr int kRowReadsBackDifferently = 10000;

}  // namespace

void CopiesBrowser::ListRestoreFiles() {
    if (!sourceChosen_ || listing_) return;
    const ScopedFlag guard(listing_);
    trap_(L"ListRestoreFiles", [this] {
        const RedrawPause pause(Items());
        Items().Clear();
        items_.clear();
        listed_.reset();
        ClearCopies();
        List();
        Sort(Items(), itemsSort_);
        if (Items().Count() > 0) {
            Items().Select(0);
            lsvRestore1ItemClick(0);
        }
    });
}

void CopiesBrowser::List() {
    shown_.Clear();
    const std::wstring folder = RestoreFrom();
    // A drive without a copy folder has no copies; that needs no message.
    if (!system_.files.Stat(folder)) return;
    // Identify the folder before listing it: a drive that is exchanged later has another one.
    shown_.Take(system_.files, folder);
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
std::vector<CopyGroup> CopiesBrowser::FindCopies(const std::wstring& folder) {
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
void CopiesBrowser::AddItems(const CopyGroup& series) {
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

void CopiesBrowser::AddItem(ItemRow item, bool isFolder) {
    ListView& items = Items();
    ShownItem& shown = item.shown;
    shown.text = CFileFirstName(shown.name);
    const int row = items.Add(shown.text, isFolder ? RowIcon::Folder : RowIcon::File);
    if (items.SubItem(row, kNameColumn) != shown.text) {
        Throw(kRowReadsBackDifferently, shown.name);
    }
    items.SetTag(row, items_.size());
    if (items.Style() == ViewStyle::Details) {
        shown.type = isFolder ? L"Folder" : CFileExt(shown.name);
        shown.originalLocation = ReadPlace(shown);
        items.SetSubItem(row, L"Type", shown.type);
        items.SetSubItem(row, L"SP", std::to_wstring(shown.location), shown.location);
        items.SetSubItem(row, L"Orginal Location", shown.originalLocation);
    }
    items_.push_back(std::move(item));
}

bool CopiesBrowser::IsFolderType(std::wstring_view type) { return type == L"Folder"; }

const CopiesBrowser::ItemRow& CopiesBrowser::ItemAt(int row) {
    static const ItemRow kNone;
    const std::size_t tag = Items().Tag(row);
    return tag < items_.size() ? items_[tag] : kNone;
}

// What the row shows as the original location: the folder of the comment, while it exists.
std::wstring CopiesBrowser::ReadPlace(ShownItem& item) {
    std::wstring shown(kUnknownLocation);
    if (item.commentOf.empty()) return shown;
    ErrorTrap(system_.errors, L"Class Module", L"CPackage")(L"PackageOriginalLocation", [&] {
        const auto comment = ReadCopyComment(system_, item.commentOf);
        if (!comment || comment->place.empty()) return;
        item.place = comment->place;
        const auto facts = system_.files.Stat(item.place);
        if (facts && facts->isFolder) shown = item.place;
    });
    return shown;
}

void CopiesBrowser::ListCopyes(int row) {
    trap_(L"ListCopyes", [&] {
        const RedrawPause pause(Copies());
        // Whatever goes wrong now, no copies of another item are left below.
        ClearCopies();
        listed_ = Items().Tag(row);
        if (!IsFolderStillThere()) {
            status_.ShowNotice(restore_text::kListedAnew.In(main_.InLanguage()));
            isNoticeShown_ = true;
            return;
        }
        if (std::exchange(isNoticeShown_, false)) status_.ShowNotice({});
        const ItemRow item = ItemAt(row);
        NameCopies(item.shown);
        if (!AddCopies(shown_.Path(), item)) return;
        MarkIncompleteCopies();
        Sort(Copies(), copiesSort_);
        SelectFirstCopy();
    });
}

// A listing that is still under way ends here: its copies are those of another item.
void CopiesBrowser::ClearCopies() {
    ++copiesListing_;
    Copies().Clear();
    copies_.clear();
    main_.ResetText(control::lblCopiesHeading);
}

// The heading says whose copies they are, wherever the eye has lost the selected row.
void CopiesBrowser::NameCopies(const ShownItem& item) {
    if (item.name.empty()) return;
    const bool arabic = main_.InLanguage() == Language::Arabic;
    std::wstring text(arabic ? L"نسخ " : L"Copies of ");
    text += arabic ? MarkName(item.name) : item.name;
    const std::wstring& location = item.originalLocation;
    if (!location.empty() && location != kUnknownLocation) {
        // Between two Latin names the comma alone would not show in which direction they follow.
        text.append(arabic ? L"\u200F، " + MarkPath(location) : L", " + MarkReport(location));
    }
    main_.SetText(control::lblCopiesHeading, text);
}

// The name that the row shows finds the copies of most items. Those of a folder with a point in its
// name, and of items below such a folder, are found by what the listing remembers: its name without
// the part behind the point may be that of another folder. False when another listing began
// meanwhile.
bool CopiesBrowser::AddCopies(const std::wstring& folder, const ItemRow& item) {
    const ShownItem& shown = item.shown;
    const bool isFolder = IsFolderType(shown.type);
    const std::wstring name = shown.text + (isFolder ? L"" : shown.type);
    // Outside the details view a row has its name alone.
    const CopiesOfItem wanted(name, shown.type.empty() ? 0 : shown.location);
    const bool byOrigin = isFolder || !item.nested.empty();
    const int listing = copiesListing_;

    std::vector<FoundCopy> found;
    std::vector<FoundCopy> foundByOrigin;
    std::unordered_set<std::wstring> comments;
    system_.files.List(folder, [&](const FolderEntry& entry) {
        if (IsCommentName(entry.name)) {
            comments.insert(
                UpperCase(entry.name.substr(0, entry.name.size() - kCommentExtension.size())));
        }
        if (MatchesWildcard(entry.name, L"*.vwc")) return;
        if (item.nested.empty() && wanted.Contains(entry.name)) {
            found.push_back({std::wstring(entry.name), static_cast<const FileInfo&>(entry)});
        } else if (byOrigin && entry.isFolder && IsCopyName(entry.name)) {
            const CopyNameParts parts = ParseCopyName(entry.name);
            if (parts.location == shown.location && EqualNoCase(parts.origin, item.topOrigin)) {
                foundByOrigin.push_back(
                    {std::wstring(entry.name), static_cast<const FileInfo&>(entry)});
            }
        }
    });
    const bool isOther = isFolder && !EqualNoCase(name, item.topOrigin) && !foundByOrigin.empty();
    for (const FoundCopy& candidate : found.empty() || isOther ? foundByOrigin : found) {
        const std::wstring entry = JoinPath(folder, candidate.name);
        const auto stored = CopyIn(entry, candidate.facts, item);
        if (!stored) continue;
        const bool mayHaveComment =
            !item.nested.empty() || comments.contains(UpperCase(candidate.name));
        ListedCopy copy = ReadCopy(entry, *stored, item.nested, mayHaveComment);
        if (listing != copiesListing_) return false;
        AddCopy(std::move(copy));
        system_.pump.ProcessMessagesIfDue();
        if (listing != copiesListing_) return false;
    }
    return true;
}

// Facts of the item's copy in an entry of the copy folder; nothing when it has none there.
std::optional<FileInfo> CopiesBrowser::CopyIn(const std::wstring& entry, const FileInfo& facts,
                                              const ItemRow& item) {
    if (!item.nested.empty()) return system_.files.Stat(JoinPath(entry, item.nested));
    if (facts.isFolder && HoldsAny(system_.files, entry, item.beside)) return std::nullopt;
    return facts;
}

ListedCopy CopiesBrowser::ReadCopy(const std::wstring& entry, const FileInfo& facts,
                                   const std::wstring& nested, bool mayHaveComment) {
    ListedCopy copy;
    copy.label = CopyLabel(ParseCopyName(CFileName(entry)).number);
    copy.path = nested.empty() ? entry : JoinPath(entry, nested);
    copy.isFolder = facts.isFolder;
    // What the listing says of a file needs no second query.
    copy.size =
        facts.isFolder ? PathSize(system_, copy.path, true) : static_cast<std::int64_t>(facts.size);
    if (!mayHaveComment || !ReadComment(copy)) {
        copy.date = PathDate(system_, engine_(), copy.path);
    }
    return copy;
}

// False when the copy has no comment, or one without a date.
bool CopiesBrowser::ReadComment(ListedCopy& copy) {
    bool hasDate = false;
    ErrorTrap(system_.errors, L"Class Module", L"CPackage")(L"PackageDate", [&] {
        const auto comment = ReadCopyComment(system_, copy.path);
        if (!comment) return;
        copy.place = comment->place;
        copy.isIncomplete = comment->isIncomplete;
        hasDate = comment->date.has_value();
        copy.date = comment->date.value_or(0);
    });
    return hasDate;
}

// A later copy of the same label takes the row of the earlier one.
void CopiesBrowser::AddCopy(ListedCopy copy) {
    ListView& copies = Copies();
    int row = copies.Find(kNameColumn, copy.label);
    if (row < 0) row = copies.Add(copy.label, copy.isFolder ? RowIcon::Folder : RowIcon::File);
    copies.SetTag(row, copies_.size());
    copies.SetSubItem(row, L"Size",
                      copy.size < 0 ? L"" : CSize(static_cast<std::uint64_t>(copy.size)),
                      copy.size);
    copies.SetSubItem(row, L"Date", DateText(copy.date), copy.date);
    copies.SetSubItem(row, L"BackupName", copy.path);
    copies_.push_back(std::move(copy));
}

// The texts of a row stay as they are; the sign, its tool tip and its description say it.
void CopiesBrowser::MarkIncompleteCopies() {
    std::vector<std::wstring> warnings;
    for (const ListedCopy& copy : ListedCopies()) {
        warnings.emplace_back(copy.isIncomplete ? restore_text::kIncomplete.In(main_.InLanguage())
                                                : L"");
    }
    Copies().ShowWarnings(warnings);
}

}  // namespace vw
