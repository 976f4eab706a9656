#include "list/editing/ListRows.h"

#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "list/editing/ListHost.h"
#include "platform/DateText.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/ProgramState.h"
#include "platform/TextCase.h"
#include "platform/Val.h"
#include "ui/Form.h"

namespace vw {
namespace {

using namespace MFileDosShell;

bool IsRule(std::wstring_view path) { return path.ends_with(L"\\*"); }

}  // namespace

ListRows::ListRows(System& system, const ProgramState& state, Form& main, ListHost& host)
    : system_(system), state_(state), main_(main), host_(host) {}

ListView& ListRows::List() { return main_.List(L"lsvBackupList"); }

int ListRows::Count() { return List().Count(); }

ListRows::Outcome ListRows::AddToList(std::wstring_view path) {
    Outcome outcome = Outcome::Vanished;
    Trapped(system_.errors, {L"AddToList", L"Form", L"frmMain"}, [&] { outcome = AddItem(path); });
    return outcome;
}

ListRows::Outcome ListRows::AddItem(std::wstring_view path) {
    List().ClearSortMark();
    if (keys_.contains(UpperCase(path))) return Outcome::AlreadyThere;
    if (!IsRule(path)) return AddFileOrFolder(path);
    AddRule(path);
    return Outcome::Added;
}

void ListRows::AddRule(std::wstring_view path) {
    ListView& list = List();
    const std::wstring folder = CFileLocation(path);
    const int row = list.Add(L"files in " + CFileName(folder), RowIcon::Rule);
    list.SetSubItem(row, L"Path", path);
    list.SetSubItem(row, L"Type", L"Rule");
    list.SetSubItem(row, L"SP", TwoDigits(0));
    list.SetSubItem(row, L"Location", folder);
    keys_.insert(UpperCase(path));
}

// A silent run shows its rows to nobody, so it walks through no folder for them.
std::optional<SizeAndDate> ListRows::Facts(std::wstring_view path) {
    if (!state_.silentRun) return PathSizeAndDate(system_, host_.StoredDates(), path);
    bool exists = true;
    Trapped(system_.errors, {L"AddToList", L"Form", L"frmMain"},
            [&] { exists = system_.files.Look(path).has_value(); });
    if (!exists) return std::nullopt;
    return SizeAndDate{.isKnown = false};
}

// What the disk tells comes first: the windows live meanwhile, and no half row may be seen.
ListRows::Outcome ListRows::AddFileOrFolder(std::wstring_view path) {
    const auto facts = Facts(path);
    if (!facts) return Outcome::Vanished;
    const int location = host_.LocationID(path);
    const bool namesFolder = path.ends_with(L'\\');
    ListView& list = List();
    const int row = list.Add(CFileFirstName(path), namesFolder ? RowIcon::Folder : RowIcon::File);
    list.SetSubItem(row, L"Path", path);
    if (facts->isKnown && (facts->isFolder || !namesFolder)) {
        list.SetSubItem(row, L"Type", facts->isFolder ? L"Folder" : CFileExt(path));
        list.SetSubItem(row, L"Size", CSize(facts->size),
                        static_cast<ListView::Value>(facts->size));
        list.SetSubItem(row, L"Date", DateText(facts->date), facts->date);
    }
    list.SetSubItem(row, L"SP", TwoDigits(location));
    list.SetSubItem(row, L"Location", CFileLocation(path));
    keys_.insert(UpperCase(path));
    return Outcome::Added;
}

void ListRows::Remove(int row) {
    keys_.erase(UpperCase(List().SubItem(row, L"Path")));
    List().Remove(row);
}

void ListRows::Clear() {
    List().Clear();
    keys_.clear();
}

std::vector<std::wstring> ListRows::Paths() {
    ListView& list = List();
    std::vector<std::wstring> paths;
    const int count = list.Count();
    paths.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) paths.push_back(list.SubItem(row, L"Path"));
    return paths;
}

}  // namespace vw
