#include "list/editing/RecentFiles.h"

#include "fsutil/PathText.h"
#include "platform/ErrorTrap.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

namespace vw::MRecentFiles {
namespace {
std::wstring EntryKey(int index) {
    return std::wstring(setting::kRecentFile).append(std::to_wstring(index));
}

}  // namespace

RecentFiles::RecentFiles(ErrorSink& errors, SettingsStore& settings, ProgramState& state,
                         RecentFileActions actions)
    : trap_(errors, L"Module", L"MRecentFiles"),
      settings_(settings),
      state_(state),
      actions_(std::move(actions)) {}

std::wstring RecentFiles::RecentFile(int index) const {
    return trap_.Or(std::wstring(), L"RecentFile",
                    [&] { return settings_.GetSetting(EntryKey(index), L""); });
}

void RecentFiles::RecentFile(int index, std::wstring_view path) {
    if (index != 1) ThrowWith(error_number::kRecentIndexNotOne, L"Index <> 1");
    trap_(L"RecentFile", [&] {
        // The menu's first element is the default list. What counts is the list in use at
        // this moment, not the path.
        if (EqualNoCase(state_.currentListPath, state_.DefaultListPath())) return;

        const RecentPaths before = Paths();
        const int position = RecentPosition(before, path);
        const RecentPaths after = WithRecentPath(before, path);
        // From the bottom up: a program that ends in between has an entry twice, none lost.
        for (int i = position == 0 ? static_cast<int>(after.size()) : position; i > 0; --i) {
            settings_.SaveSetting(EntryKey(i), after[static_cast<std::size_t>(i) - 1]);
        }
        UpdateRecentFiles();
    });
}

int RecentFiles::IsRecentFile(std::wstring_view path) const {
    return RecentPosition(Paths(), path);
}

void RecentFiles::UpdateRecentFiles() {
    trap_(L"UpdateRecentFiles", [&] {
        RecentFileMenu menu;
        for (std::size_t i = 0; i < menu.size(); ++i) {
            menu[i].caption = MFileDosShell::CFileFirstName(RecentFile(static_cast<int>(i) + 1));
            menu[i].visible = !menu[i].caption.empty();
        }
        actions_.showMenu(menu);
    });
}

// An error leaves the window as Ready(false) made it: nothing half opened can be worked with.
void RecentFiles::mnuRecentFileClick(int index) {
    trap_(L"mnuRecentFileClick", [&] {
        if (index != 0) {
            actions_.ready(false);
            actions_.open(RecentFile(index));
            actions_.ready(true);
            return;
        }
        actions_.openDefault();
        actions_.showCaption();
    });
}

RecentPaths RecentFiles::Paths() const {
    RecentPaths paths;
    for (std::size_t i = 0; i < paths.size(); ++i) paths[i] = RecentFile(static_cast<int>(i) + 1);
    return paths;
}

}  // namespace vw::MRecentFiles
