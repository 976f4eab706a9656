#include "fsutil/TempCleaning.h"

#include <algorithm>
#include <string>
#include <vector>

#include "fsutil/PathText.h"
#include "fsutil/Scripting.h"
#include "fsutil/TreeOperations.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"
#include "platform/TextCase.h"
#include "platform/Wildcards.h"

namespace vw::MFileDosShell {

namespace {

ErrorTrap Trap(const System& system) { return {system.errors, L"Module", L"MFileDosShell"}; }
constexpr std::wstring_view kDeleting = L"Deleting";
constexpr std::wstring_view kStays = L"   ";
constexpr std::wstring_view kYes = L"yes";

constexpr int kWindowsFolder = 50;
constexpr int kTemporaryFolder = 52;
constexpr int kDocuments = 16;

struct Contents {
    std::vector<std::wstring> files;
    std::vector<std::wstring> folders;
};

Contents ContentsOf(System& system, std::wstring_view folder) {
    Contents contents;
    system.files.List(folder, [&](const FolderEntry& entry) {
        (entry.isFolder ? contents.folders : contents.files).emplace_back(entry.name);
    });
    return contents;
}

// Lists a folder that may be closed to us or gone: the first is shown, the second is an error.
Contents ContentsOrReason(System& system, std::wstring_view folder, ProgressReporter& progress) {
    try {
        return ContentsOf(system, folder);
    } catch (const RuntimeError& error) {
        if (error.Number() == error_number::kPathNotFound) throw;
        progress.Msg(kStays, SystemText(error));
        return {};
    }
}

void DeleteFile(System& system, const std::wstring& folder, const std::wstring& name,
                ProgressReporter& progress) {
    progress.Msg(kDeleting, name);
    try {
        system.files.RemoveFile(JoinPath(folder, name));
    } catch (const RuntimeError& error) {
        progress.Msg(kStays, SystemText(error));
    }
}

bool DeleteWholeFolder(System& system, const std::wstring& path) {
    try {
        DeleteTree(system.files, path, [&] { system.pump.ProcessMessagesIfDue(); });
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

// Files that others are known to leave directly in the folder of Windows.
void CleanWindowsFolder(System& system, const ProgramState& state, const std::wstring& windows) {
    const Contents contents = ContentsOf(system, windows);
    for (const std::wstring& name : contents.files) {
        if (state.cancel.IsRequested()) return;
        if (!MatchesWildcard(name, L"*.TMP")) continue;
        try {
            system.files.RemoveFile(JoinPath(windows, name));
        } catch (const RuntimeError&) {
            // In use.
        }
        system.pump.ProcessMessages();
    }
}

// The environment may name anything as the temporary folder, and without a word of it the system
// takes the user's own folder.
void RequireWasteOnly(System& system, const std::wstring& folder,
                      const std::vector<std::wstring>& kept) {
    const auto holds = [&](const std::wstring& path) {
        return !path.empty() && PathContains(folder, path);
    };
    if (IsRoot(system.files, folder) || std::any_of(kept.begin(), kept.end(), holds)) {
        Throw(error_number::kPermissionDenied, folder);
    }
}

}  // namespace

// The folders that are open are kept here and not on the stack: trees can be thousands of levels
// deep. An error ends the folder that it came in.
void DelInFolder(System& system, const ProgramState& state, std::wstring_view folder,
                 std::wstring_view confirmation, bool skip, ProgressReporter& progress) {
    if (!EqualNoCase(confirmation, kYes)) return;
    const ErrorTrap trap = Trap(system);
    struct OpenFolder {
        std::wstring path;
        std::vector<std::wstring> folders;
        std::size_t next = 0;
    };
    std::vector<OpenFolder> open;
    const auto enter = [&](const std::wstring& path) {
        trap(L"DelInFolder", [&] {
            Contents contents = ContentsOrReason(system, path, progress);
            for (const std::wstring& name : contents.files) {
                if (state.cancel.IsRequested()) return;
                if (!skip || !MatchesWildcard(name, L"VB*.*"))
                    DeleteFile(system, path, name, progress);
                system.pump.ProcessMessages();
            }
            open.push_back({path, std::move(contents.folders)});
        });
    };
    enter(std::wstring(folder));
    while (!open.empty() && !state.cancel.IsRequested()) {
        OpenFolder& level = open.back();
        if (level.next == level.folders.size()) {
            open.pop_back();
            continue;
        }
        const std::wstring path = JoinPath(level.path, level.folders[level.next++]);
        bool isLeft = false;
        const bool known = trap(L"DelInFolder", [&] {
            if (DeleteWholeFolder(system, path)) return;
            const auto facts = system.files.Stat(path);
            isLeft = facts && !facts->isLink;
        });
        if (!known) open.pop_back();
        if (isLeft) enter(path);
        system.pump.ProcessMessages();
    }
}

void DellTemp(System& system, ProgramState& state, MMyScripting::ScriptShell& shell, bool isWinNT,
              ProgressReporter& progress) {
    const auto special = [&](int code) {
        return MMyScripting::GetSpecialFolders(system, shell, code, isWinNT);
    };
    Trap(system)(L"DellTemp", [&] {
        state.cancel.Begin();
        const std::wstring windows = special(kWindowsFolder);
        const std::vector<std::wstring> kept{windows, special(kDocuments), state.applicationFolder,
                                             state.currentListPath};
        for (const std::wstring& folder :
             {special(kTemporaryFolder), windows + L"\\Temp", windows + L"\\prefetch"}) {
            if (state.cancel.IsRequested()) break;
            Trap(system)(L"DellTemp", [&] {
                if (!system.files.Stat(folder)) Throw(error_number::kPathNotFound, folder);
                RequireWasteOnly(system, folder, kept);
                DelInFolder(system, state, folder, kYes, true, progress);
            });
        }
        Trap(system)(L"DellTemp", [&] { CleanWindowsFolder(system, state, windows); });
    });
    progress.BusyHide(true);
}

}  // namespace vw::MFileDosShell
