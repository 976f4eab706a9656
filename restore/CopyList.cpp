#include "restore/CopyList.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "engine/CPackage.h"
#include "engine/CommentLine.h"
#include "engine/CopyComment.h"
#include "engine/CopyLabel.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "platform/DateText.h"
#include "platform/ErrorTrap.h"
#include "platform/MessagePump.h"
#include "platform/TextCase.h"
#include "platform/TextDirection.h"
#include "platform/Wildcards.h"
#include "restore/RestoreTexts.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"

namespace vw {
namespace {

using namespace MFileDosShell;
constexpr std::wstring_view kNewestLabel = L"N01";

/// An entry of the copy folder that may be a copy of the item.
struct FoundCopy {
    std::wstring name;
    FileInfo facts;
};

}  // namespace

CopyList::CopyList(System& system, Form& main, EngineProvider engine)
    : system_(system), main_(main), engine_(std::move(engine)) {}

ListView& CopyList::View() { return main_.List(control::lsvRestore2); }

void CopyList::Fill(const std::wstring& folder, const ItemRow& item) {
    ShowHeading(item.shown);
    if (!AddCopies(folder, item)) return;
    MarkIncomplete();
    order_.Apply(View());
    SelectFirst();
}

// A listing that is still under way ends here: its copies are those of another item.
void CopyList::Clear() {
    ++listing_;
    View().Clear();
    copies_.clear();
    main_.ResetText(control::lblCopiesHeading);
}

// The heading says whose copies they are, wherever the eye has lost the selected row.
void CopyList::ShowHeading(const ShownItem& item) {
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
bool CopyList::AddCopies(const std::wstring& folder, const ItemRow& item) {
    const ShownItem& shown = item.shown;
    const bool isFolder = IsFolderType(shown.type);
    const std::wstring name = shown.text + (isFolder ? L"" : shown.type);
    // Outside the details view a row has its name alone. A file without an extension has an empty
    // type in every view.
    const CopiesOfItem wanted(name, shown.originalLocation.empty() ? 0 : shown.location);
    const bool byOrigin = !item.nested.empty() || (isFolder && !EqualNoCase(name, item.topOrigin));
    const auto isCopy = [&](std::wstring_view entry) {
        if (!byOrigin) return wanted.Contains(entry);
        const CopyNameParts parts = ParseCopyName(entry);
        return IsCopyName(entry) && parts.location == shown.location &&
               EqualNoCase(parts.origin, item.topOrigin);
    };
    const int listing = listing_;

    std::vector<FoundCopy> found;
    std::unordered_set<std::wstring> comments;
    system_.files.List(folder, [&](const FolderEntry& entry) {
        if (IsCommentName(entry.name)) {
            comments.insert(
                UpperCase(entry.name.substr(0, entry.name.size() - kCommentExtension.size())));
        }
        if (isCopy(entry.name)) {
            found.push_back({std::wstring(entry.name), static_cast<const FileInfo&>(entry)});
        }
    });
    for (const FoundCopy& candidate : found) {
        const std::wstring entry = JoinPath(folder, candidate.name);
        const auto stored = CopyIn(entry, candidate.facts, item);
        if (!stored) continue;
        const bool mayHaveComment =
            !item.nested.empty() || comments.contains(UpperCase(candidate.name));
        ListedCopy copy = ReadCopy(entry, *stored, item.nested, mayHaveComment);
        if (listing != listing_) return false;
        AddCopy(std::move(copy));
        system_.pump.ProcessMessagesIfDue();
        if (listing != listing_) return false;
    }
    return true;
}

// Facts of the item's copy in an entry of the copy folder; nothing when it has none there.
std::optional<FileInfo> CopyList::CopyIn(const std::wstring& entry, const FileInfo& facts,
                                         const ItemRow& item) {
    if (!item.nested.empty()) return system_.files.Stat(JoinPath(entry, item.nested));
    if (facts.isFolder && HoldsAny(system_.files, entry, item.beside)) return std::nullopt;
    return facts;
}

ListedCopy CopyList::ReadCopy(const std::wstring& entry, const FileInfo& facts,
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
bool CopyList::ReadComment(ListedCopy& copy) {
    bool hasDate = false;
    ErrorTrap(system_.errors, L"Class Module", L"CPackage")(L"PackageDate", [&] {
        const auto comment = ReadCopyComment(system_, copy.path);
        if (!comment) return;
        copy.place = comment->place;
        copy.isIncomplete = comment->isIncomplete;
        hasDate = comment->date.has_value();
        copy.date = comment->date.value_or(kNoDate);
    });
    return hasDate;
}

// A later copy of the same label takes the row of the earlier one.
void CopyList::AddCopy(ListedCopy copy) {
    ListView& copies = View();
    int row = copies.Rows().Find(kNameColumn, copy.label);
    if (row < 0) {
        const RowIcon icon = copy.isFolder ? RowIcon::Folder : RowIcon::File;
        row = copies.Add(copy.label, icon, copies_.size());
        copies_.emplace_back();
    }
    copies.SetSubItem(row, L"Size",
                      copy.size < 0 ? L"" : CSize(static_cast<std::uint64_t>(copy.size)),
                      copy.size);
    copies.SetSubItem(row, L"Date", DateText(copy.date), copy.date.time_since_epoch().count());
    copies.SetSubItem(row, L"BackupName", copy.path);
    copies_.at(copies.Rows().At(row).tag) = std::move(copy);
}

// The texts of a row stay as they are; the sign, its tool tip and its description say it.
void CopyList::MarkIncomplete() {
    std::vector<std::wstring> warnings;
    for (const ListedCopy& copy : All()) {
        warnings.emplace_back(copy.isIncomplete ? restore_text::kIncomplete.In(main_.InLanguage())
                                                : L"");
    }
    View().ShowWarnings(warnings);
}

std::optional<ListedCopy> CopyList::Selected() {
    const int row = View().Selected();
    if (row < 0) return std::nullopt;
    return copies_.at(View().Rows().At(row).tag);
}

std::vector<ListedCopy> CopyList::All() {
    std::vector<ListedCopy> listed;
    listed.reserve(copies_.size());
    for (int row = 0; row < View().Rows().Count(); ++row) {
        listed.push_back(copies_.at(View().Rows().At(row).tag));
    }
    return listed;
}

// A single copy that is not the newest is not selected by itself.
void CopyList::SelectFirst() {
    ListView& copies = View();
    int row = copies.Rows().Find(kNameColumn, kNewestLabel);
    if (copies.Rows().Count() > 1) row = std::max(row, 0);
    copies.Select(row);
}

}  // namespace vw
