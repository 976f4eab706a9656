#include <unordered_map>

#include "engine/CPackage.h"
#include "engine/CommentLine.h"
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
#include "platform/Val.h"
#include "restore/CopiesBrowser.h"
#include "restore/CopiesIndex.h"
#include "restore/NestedCopy.h"
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
    ItemsSeen seen;
    for (const Entry& copy : FindCopies(folder)) {
        if (seen.IsNew(CFileOrigin(copy.path), LocationOf(copy.path))) AddItem(copy);
        system_.pump.DoEventsIfDue();
    }
}

// In the order of their names, so that the first copy of each item is the lowest one.
std::vector<CopiesBrowser::Entry> CopiesBrowser::FindCopies(const std::wstring& folder) {
    std::vector<std::wstring> paths;
    std::unordered_map<std::wstring, bool> folders;
    std::unordered_set<std::wstring> comments;
    system_.files.List(folder, [&](const FolderEntry& entry) {
        std::wstring path = JoinPath(folder, entry.name);
        if (IsCopyName(entry.name)) {
            folders.emplace(path, entry.isFolder);
            paths.push_back(std::move(path));
        } else if (entry.name.ends_with(kCommentExtension)) {
            comments.insert(UpperCase(path));
        }
        system_.pump.DoEventsIfDue();
    });
    MFileDosShell::Sort(paths, system_.pump);
    std::vector<Entry> copies;
    copies.reserve(paths.size());
    for (std::wstring& path : paths) {
        const bool isFolder = folders.at(path);
        const bool hasComment = comments.contains(UpperCase(CPackage::PackageCommentFile(path)));
        copies.push_back({std::move(path), isFolder, hasComment});
    }
    return copies;
}

void CopiesBrowser::AddItem(const Entry& copy) {
    const std::wstring topOrigin = CFileOrigin(CFileName(copy.path));
    Item item{topOrigin, topOrigin, LocationOf(copy.path), {}};
    std::wstring stored = copy.path;
    bool isFolder = copy.isFolder;
    if (copy.isFolder && !copy.hasComment && !CFileExt(item.origin).empty()) {
        if (const auto nested = FindNestedCopy(system_.files, copy.path)) {
            item.origin = CFileName(nested->below);
            item.nested = nested->below;
            stored = JoinPath(copy.path, nested->below);
            isFolder = nested->isFolder;
        }
    }
    ListView& items = Items();
    const std::wstring text = CFileFirstName(item.origin);
    const int row = items.Add(text, isFolder ? RowIcon::Folder : RowIcon::File);
    if (items.SubItem(row, kNameColumn) != text) Raise(kRowReadsBackDifferently, copy.path);
    items.SetTag(row, items_.size());
    if (items.Style() == ViewStyle::Details) {
        items.SetSubItem(row, L"Type", isFolder ? L"Folder" : CFileExt(item.origin));
        items.SetSubItem(row, L"SP", std::to_wstring(item.location), item.location);
        // Looking for a comment that is known not to be there takes long in a large folder.
        const bool hasComment = copy.hasComment || !item.nested.empty();
        items.SetSubItem(row, L"Orginal Location",
                         hasComment ? host_.Engine().PackageOriginalLocation(stored)
                                    : std::wstring(kUnknownLocation));
    }
    items_.push_back(std::move(item));
}

void CopiesBrowser::ListCopyes(int row) {
    Trapped(system_.errors, Named(L"ListCopyes"), [&] {
        const RedrawPause pause(Copies());
        ClearCopies();
        listed_ = Items().Tag(row);
        if (!AddCopies(WithoutFinalSeparator(RestoreFrom()), row)) return;
        Sort(Copies(), copiesSort_);
        SelectFirstCopy();
    });
}

// A listing that is still under way ends here: its copies are those of another item.
void CopiesBrowser::ClearCopies() {
    ++copiesListing_;
    Copies().Clear();
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
        const CopyRow copy = ReadCopy(JoinPath(folder, entryName), facts, item.nested);
        if (listing != copiesListing_) return false;
        AddCopy(copy);
        system_.pump.DoEventsIfDue();
        if (listing != copiesListing_) return false;
    }
    return true;
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
