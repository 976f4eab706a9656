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
        List();
        Sort(Items(), itemsSort_);
        if (Items().Count() > 0) {
            Items().Select(0);
            lsvRestore1ItemClick(0);
        } else {
            Copies().Clear();
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
        ListView& copies = Copies();
        const RedrawPause pause(copies);
        copies.Clear();
        AddCopies(WithoutFinalSeparator(RestoreFrom()), row);
        Sort(copies, copiesSort_);
        SelectFirstCopy();
    });
}

// The name that the row shows finds the copies of most items. Those of a folder with a point in its
// name, and of items below such a folder, are found by what the listing remembers.
void CopiesBrowser::AddCopies(const std::wstring& folder, int row) {
    ListView& items = Items();
    const int location = Val(L"0" + items.SubItem(row, L"SP"));
    const std::wstring type = items.SubItem(row, L"Type");
    const bool isFolder = EqualNoCase(type, L"Folder") || EqualNoCase(type, L"Rule");
    const std::wstring name = items.SubItem(row, kNameColumn) + (isFolder ? L"" : type);
    const CopiesOfItem wanted(name, location);
    const std::size_t tag = items.Tag(row);
    const Item item = tag < items_.size() ? items_[tag] : Item{};
    const bool byOrigin = isFolder || !item.nested.empty();

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
    for (const auto& [entryName, facts] : found.empty() ? foundByOrigin : found) {
        AddCopy(JoinPath(folder, entryName), facts, item.nested);
        system_.pump.DoEventsIfDue();
    }
}

// A later copy of the same label takes the row of the earlier one.
void CopiesBrowser::AddCopy(const std::wstring& entry, const FileFacts& facts,
                            const std::wstring& nested) {
    const std::wstring path = nested.empty() ? entry : JoinPath(entry, nested);
    const std::wstring label = CopyLabel(CFileBackNumber(CFileName(entry)));
    ListView& copies = Copies();
    int row = copies.Find(kNameColumn, label);
    if (row < 0) row = copies.Add(label, facts.isFolder ? RowIcon::Folder : RowIcon::File);
    // What the listing told of a file needs no second question.
    const std::int64_t size =
        facts.isFolder ? PathSize(system_, path, true) : static_cast<std::int64_t>(facts.size);
    const Date date = PathDate(system_, host_.Engine(), path);
    copies.SetSubItem(row, L"Size", size < 0 ? L"" : CSize(static_cast<std::uint64_t>(size)), size);
    copies.SetSubItem(row, L"Date", DateText(date), date);
    copies.SetSubItem(row, L"BackupName", path);
}

}  // namespace vw
