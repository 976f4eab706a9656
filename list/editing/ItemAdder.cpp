#include "list/editing/ItemAdder.h"

#include <vector>

#include "fsutil/PathText.h"
#include "list/editing/ListRows.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"

namespace vw {
namespace {

using namespace MFileDosShell;
constexpr wchar_t kSeparator = L'\0';  // between the names of a multiple selection

}  // namespace

ItemAdder::ItemAdder(System& system, ProgramState& state, ListRows& rows,
                     ProgressReporter& progress)
    : system_(system),
      state_(state),
      rows_(rows),
      progress_(progress),
      countBefore_(rows.Count()) {}

void ItemAdder::Add(const std::wstring& path) {
    offered_ = path;
    rows_.AddToList(path);
}

// What was added last is what the user goes on with.
void ItemAdder::SelectNewest() {
    const int newest = rows_.Count() - 1;
    const int row = newest >= countBefore_ ? newest : rows_.RowOf(offered_);
    if (row < 0) return;
    rows_.List().Select(row);
    rows_.List().EnsureVisible(row);
}

void ItemAdder::AddChosen(const std::wstring& selection) {
    if (selection.find(kSeparator) != std::wstring::npos) {
        AddMultiselect(selection);
    } else if (selection.ends_with(L"\\*")) {
        AddMatching(selection);
    } else {
        const auto facts = system_.files.Stat(selection);
        if (facts && facts->isFolder) {
            AddAllFilesInFolder(selection);
        } else {
            Add(selection);
        }
    }
}

// Shows what is being added, adds it and processes messages, unless the user has cancelled.
void ItemAdder::AddShown(std::wstring_view caption, const std::wstring& path) {
    if (state_.cancel.IsRequested()) return;
    progress_.Msg(caption, path);
    Add(path);
    system_.pump.ProcessMessagesIfDue();
}

// The names come from the end of the selection.
void ItemAdder::AddMultiselect(std::wstring_view selection) {
    trap_(L"AddMultiselect", [&] {
        const std::wstring folder(selection.substr(0, selection.find(kSeparator)));
        const auto facts = system_.files.Stat(folder);
        if (folder.size() == selection.size() || !facts || !facts->isFolder) return;
        state_.cancel.Begin();
        while (selection.size() > folder.size()) {
            const std::size_t separator = selection.rfind(kSeparator);
            const std::wstring_view name = selection.substr(separator + 1);
            if (!name.empty()) AddShown(L"Adding file", JoinPath(folder, name));
            selection = selection.substr(0, separator);
        }
    });
}

void ItemAdder::AddMatching(std::wstring_view pattern) {
    const std::wstring folder(pattern.substr(0, pattern.size() - 1));
    std::vector<std::wstring> files;
    system_.files.List(folder, [&](const FolderEntry& entry) {
        if (!entry.isFolder) files.push_back(JoinPath(folder, entry.name));
    });
    state_.cancel.Begin();
    for (const std::wstring& path : files) {
        AddShown(L"Adding", path);
    }
}

// The folders to come are kept here and not on the stack: trees can be thousands of levels deep. An
// error ends the folder that it came in.
void ItemAdder::AddAllFilesInFolder(const std::wstring& folder) {
    std::vector<std::wstring> pending{folder};
    do {
        const std::wstring current = std::move(pending.back());
        pending.pop_back();
        trap_(L"AddAllFilesInFolder", [&] {
            std::vector<std::wstring> files;
            std::vector<std::wstring> subFolders;
            system_.files.List(current, [&](const FolderEntry& entry) {
                if (entry.isLink) return;
                (entry.isFolder ? subFolders : files).push_back(JoinPath(current, entry.name));
            });
            state_.cancel.Begin();
            for (const std::wstring& path : files) {
                AddShown(L"Adding file", path);
            }
            pending.insert(pending.end(), subFolders.rbegin(), subFolders.rend());
        });
        system_.pump.ProcessMessagesIfDue();
    } while (!pending.empty() && !state_.cancel.IsRequested());
}

}  // namespace vw
