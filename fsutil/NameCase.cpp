#include "fsutil/NameCase.h"

#include <utility>
#include <vector>

#include "fsutil/PathText.h"
#include "fsutil/Patience.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {

std::wstring LowerCase(std::wstring_view text) {
    std::wstring lower(text);
    const int length = static_cast<int>(lower.size());
    if (length != 0) {
        LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, text.data(), length, lower.data(),
                      length, nullptr, nullptr, 0);
    }
    return lower;
}

}  // namespace vw

namespace vw::MFileDosShell {

namespace {

bool IsLowerCase(std::wstring_view text) { return LowerCase(text) == text; }

// Renames by way of `temporary`, since a name that differs in case only counts as taken. When the
// second rename fails the first one is undone. Whether the file or folder has its new name.
bool RenameByWayOf(FileSystem& files, std::wstring_view from, std::wstring_view temporary,
                   std::wstring_view to) {
    try {
        RetryBriefly([&] { files.Rename(from, temporary); });
    } catch (const RuntimeError&) {
        return false;
    }
    try {
        RetryBriefly([&] { files.Rename(temporary, to); });
        return true;
    } catch (const RuntimeError&) {
        try {
            RetryBriefly([&] { files.Rename(temporary, from); });
        } catch (const RuntimeError&) {
            // Nothing more can be done; the name with "@" shows what happened.
        }
        return false;
    }
}

// The path with only its last component in lower case: the folders above cannot be renamed by
// renaming this one.
std::wstring WithLowerName(std::wstring_view path) {
    const std::wstring name = CFileName(path);
    return std::wstring(path.substr(0, path.size() - name.size())) + LowerCase(name);
}

// The path that the folder has afterwards.
std::wstring RenameFolder(FileSystem& files, std::wstring_view folder) {
    std::wstring path(folder);
    if (path.size() > 1 && path.ends_with(L'\\')) path.pop_back();
    const std::wstring target = WithLowerName(path);
    // The root of a drive has no name, and a name in lower case needs no renaming.
    if (target == path || path.ends_with(L':')) return std::wstring(folder);
    return RenameByWayOf(files, path, path + L'@', target) ? target : path;
}

struct FolderNames {
    std::vector<std::wstring> files;
    std::vector<std::wstring> links;
    std::vector<std::wstring> subFolders;
};

// Listed as a whole before the first name changes; what cannot be read keeps its names.
FolderNames NamesIn(FileSystem& files, std::wstring_view folder) {
    FolderNames names;
    try {
        files.List(folder, [&](const FolderEntry& entry) {
            auto& kind = !entry.isFolder ? names.files
                         : entry.isLink  ? names.links
                                         : names.subFolders;
            kind.emplace_back(entry.name);
        });
    } catch (const RuntimeError&) {
        // Told by nobody: the tool that this serves says "Done" in any case.
    }
    return names;
}

void RenameFile(FileSystem& files, std::wstring_view path) {
    const std::wstring target = WithLowerName(path);
    if (target != path) RenameByWayOf(files, path, target + L'@', target);
}

}  // namespace

void FolderNameLower(System& system, std::wstring_view folder) {
    if (!IsLowerCase(folder)) RenameFolder(system.files, folder);
}

void FileNameLower(System& system, std::wstring& path) {
    std::wstring lower = LowerCase(path);
    if (lower != path) RenameFile(system.files, path);
    path = std::move(lower);
}

void TreeNamesLower(System& system, std::wstring_view folder) {
    std::vector<std::wstring> pending;  // each has its final name already
    try {
        // Absolute, since "C:" is the current folder of the drive and not the drive.
        pending.push_back(RenameFolder(system.files, system.files.FullPath(folder)));
    } catch (const RuntimeError&) {
        return;
    }
    while (!pending.empty()) {
        const std::wstring current = std::move(pending.back());
        pending.pop_back();
        const FolderNames names = NamesIn(system.files, current);
        for (const std::wstring& name : names.files) {
            std::wstring path = JoinPath(current, name);
            FileNameLower(system, path);
            system.pump.ProcessMessagesIfDue();
        }
        for (const std::wstring& name : names.links) {
            RenameFolder(system.files, JoinPath(current, name));
            system.pump.ProcessMessagesIfDue();
        }
        for (const std::wstring& name : names.subFolders) {
            pending.push_back(RenameFolder(system.files, JoinPath(current, name)));
            system.pump.ProcessMessagesIfDue();
        }
    }
}

}  // namespace vw::MFileDosShell
