#include "list/editing/ListRows.h"

#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "list/editing/ListContext.h"
#include "list/editing/RowWarnings.h"
#include "platform/DateText.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/LeadingInt.h"
#include "platform/LocalTime.h"
#include "platform/ProgramState.h"
#include "platform/TextCase.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"

namespace vw {
namespace {

using namespace MFileDosShell;

bool IsRule(std::wstring_view path) { return path.ends_with(L"\\*"); }

}  // namespace

ListRows::ListRows(System& system, const ProgramState& state, Form& main,
                   const ListContext& context)
    : system_(system), state_(state), main_(main), context_(context), probe_(system) {}

ListView& ListRows::List() { return main_.List(control::lsvBackupList); }

int ListRows::Count() { return List().Rows().Count(); }

ListRows::Outcome ListRows::AddToList(std::wstring_view path) {
    return trap_.Or(Outcome::Vanished, L"AddToList", [&] {
        List().Columns().ClearSortMark();
        if (keys_.contains(UpperCase(path))) return Outcome::AlreadyThere;
        if (!IsRule(path)) return AddFileOrFolder(path);
        AddRule(path);
        return Outcome::Added;
    });
}

void ListRows::AddRule(std::wstring_view path) {
    ListView& list = List();
    const std::wstring folder = CFileLocation(path);
    const int row =
        AddRow(L"files in " + CFileName(folder), RowIcon::Rule, {.path = std::wstring(path)});
    list.SetSubItem(row, L"Type", L"Rule");
    list.SetSubItem(row, L"SP", TwoDigits(0));
    list.SetSubItem(row, L"Location", folder);
}

int ListRows::AddRow(std::wstring_view text, RowIcon icon, ItemRow item) {
    ListView& list = List();
    const int row = list.Add(text, icon, items_.size());
    list.SetSubItem(row, L"Path", item.path);
    keys_.insert(UpperCase(item.path));
    items_.push_back(std::move(item));
    return row;
}

ListRows::ItemRow& ListRows::RowAt(int row) { return items_.at(List().Rows().At(row).tag); }

const std::wstring& ListRows::PathOf(int row) { return RowAt(row).path; }

std::wstring ListRows::SelectedPath() {
    const int row = List().Selected();
    return row < 0 ? std::wstring() : PathOf(row);
}

void ListRows::ShowStats(int row, std::uint64_t bytes, Date newest) {
    ItemRow& item = RowAt(row);
    if (item.bytes == bytes && item.newest == newest) return;
    item.bytes = bytes;
    item.newest = newest;
    List().SetSubItem(row, L"Size", CSize(bytes), static_cast<ListViewRows::Value>(bytes));
    List().SetSubItem(row, L"Date", DateText(newest), newest.time_since_epoch().count());
}

// A silent run shows no rows, so it does not walk folders for them.
std::optional<SizeAndDate> ListRows::Facts(std::wstring_view path) {
    if (!probe_.MayAnswer(path)) {
        trap_(L"AddToList", [&] { probe_.Require(path); });
        return SizeAndDate{.isKnown = false};
    }
    if (!state_.silentRun) return PathSizeAndDate(system_, context_.engine(), path);
    const bool exists =
        trap_.Or(true, L"AddToList", [&] { return system_.files.Stat(path).has_value(); });
    if (!exists) return std::nullopt;
    return SizeAndDate{.isKnown = false};
}

// Empty while the disk cannot answer, and in a silent run, whose rows nobody sees: a destination
// that is away may take long to say so.
std::wstring ListRows::LocationText(std::wstring_view path, bool isKnown) {
    if (state_.silentRun || !isKnown || !probe_.MayAnswer(state_.BackupTo)) return {};
    const int location = context_.engine().LocationID(path);
    return location < 0 ? std::wstring() : TwoDigits(location);
}

// Query the disk first: messages are processed meanwhile, and a half-filled row must not be seen.
ListRows::Outcome ListRows::AddFileOrFolder(std::wstring_view path) {
    const auto facts = Facts(path);
    if (!facts) return Outcome::Vanished;
    const std::wstring location = LocationText(path, facts->isKnown);
    const bool namesFolder = path.ends_with(L'\\');
    ListView& list = List();
    const int row = AddRow(CFileFirstName(path), namesFolder ? RowIcon::Folder : RowIcon::File,
                           {.path = std::wstring(path)});
    if (facts->isKnown && (facts->isFolder || !namesFolder)) {
        list.SetSubItem(row, L"Type", facts->isFolder ? L"Folder" : CFileExt(path));
        ShowStats(row, facts->size, facts->date);
    }
    list.SetSubItem(row, L"SP", location);
    list.SetSubItem(row, L"Location", CFileLocation(path));
    return Outcome::Added;
}

// A run takes the items in the order of the file, which is mostly that of the rows.
void ListRows::Refresh(std::wstring_view path, std::uint64_t bytes, Date newest) {
    if (!keys_.contains(UpperCase(path))) return;
    const int count = Count();
    for (int i = 1; i <= count; ++i) {
        const int row = (refreshed_ + i) % count;
        if (!EqualNoCase(PathOf(row), path)) continue;
        refreshed_ = row;
        ShowStats(row, bytes, newest);
        return;
    }
}

// Nobody sees the rows of a silent run.
void ListRows::UpdateWarnings() {
    if (state_.silentRun) return;
    ListView& list = List();
    std::vector<RowFacts> rows;
    const int count = list.Rows().Count();
    rows.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) {
        rows.push_back({PathOf(row), RowAt(row).newest});
    }
    std::vector<std::wstring> texts;
    texts.reserve(rows.size());
    for (const RowWarning warning : WarningsOf(rows, state_.BackupTo, LocalNow())) {
        texts.emplace_back(WarningText(warning, state_.language));
    }
    list.ShowWarnings(texts);
}

std::vector<std::wstring> ListRows::Warnings() {
    ListView& list = List();
    std::vector<std::wstring> lines;
    for (int row = 0; row < list.Rows().Count(); ++row) {
        const std::wstring warning = list.Rows().At(row).warning;
        if (warning.empty()) continue;
        lines.push_back(warning);
        lines.push_back(PathOf(row));
    }
    return lines;
}

int ListRows::RowOf(std::wstring_view path) {
    const int count = Count();
    for (int row = 0; row < count; ++row) {
        if (EqualNoCase(PathOf(row), path)) return row;
    }
    return -1;
}

void ListRows::Remove(int row) {
    keys_.erase(UpperCase(PathOf(row)));
    List().Remove(row);
}

void ListRows::Clear() {
    List().Clear();
    items_.clear();
    keys_.clear();
}

std::vector<std::wstring> ListRows::Paths() {
    std::vector<std::wstring> paths;
    const int count = Count();
    paths.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) paths.push_back(PathOf(row));
    return paths;
}

}  // namespace vw
