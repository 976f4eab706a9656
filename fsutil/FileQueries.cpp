#include "fsutil/FileQueries.h"

#include <algorithm>
#include <functional>

#include "fsutil/PathText.h"
#include "fsutil/SizeText.h"
#include "fsutil/TreeOperations.h"
#include "fsutil/TreeWalk.h"
#include "fsutil/WorkingName.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/SystemPath.h"
#include "platform/UserLocale.h"
#include "platform/Wildcards.h"

namespace vw::MFileDosShell {

namespace {

ErrorTrap Trap(const System& system) { return {system.errors, L"Module", L"MFileDosShell"}; }
// Bytes of the files directly in a folder; a listing that breaks off gives what it showed.
std::int64_t DirectFilesSize(System& system, std::wstring_view folder) {
    std::int64_t size = 0;
    try {
        system.files.List(folder, [&](const FolderEntry& entry) {
            if (entry.isFolder || IsOwnEntry(entry.name)) return;
            size += static_cast<std::int64_t>(entry.size);
            system.pump.ProcessMessagesIfDue();
        });
    } catch (const RuntimeError&) {
        // The free-space check and the lists take what could be read; a box would help nobody.
    }
    return size;
}

std::int64_t WholeTreeSize(System& system, std::wstring_view folder) {
    std::int64_t size = 0;
    TreeVisitor visitor;
    visitor.file = [&](const FolderEntry& file) { size += static_cast<std::int64_t>(file.size); };
    visitor.yield = [&] { system.pump.ProcessMessagesIfDue(); };
    WalkTree(system.files, folder, visitor);
    return size;
}

bool NamesCopy(std::wstring_view path) { return MatchesWildcard(path, L"*«*»*"); }

}  // namespace

bool PathExist(System& system, std::wstring_view path) {
    return Trap(system).Or(false, L"PathExist",
                           [&] { return system.files.Stat(path).has_value(); });
}

void DeletePath(System& system, std::wstring_view path) {
    Trap(system)(L"DeletePath", [&] {
        DeleteTree(system.files, path, [&] { system.pump.ProcessMessagesIfDue(); });
    });
}

std::int64_t PathSize(System& system, std::wstring_view path, bool wholeTree) {
    constexpr std::int64_t kUnknown = -1;
    return Trap(system).Or(kUnknown, L"PathSize", [&] {
        const std::optional<FileInfo> facts = system.files.Stat(path);
        if (!facts) return kUnknown;
        if (!facts->isFolder) return static_cast<std::int64_t>(facts->size);
        return wholeTree ? WholeTreeSize(system, path) : DirectFilesSize(system, path);
    });
}

std::wstring CPathSize(System& system, std::wstring_view path) {
    return Trap(system).Or(std::wstring(), L"CPathSize", [&] {
        const std::optional<FileInfo> facts = system.files.Stat(path);
        if (!facts) return std::wstring();
        return CSize(facts->isFolder ? static_cast<std::uint64_t>(WholeTreeSize(system, path))
                                     : facts->size);
    });
}

std::wstring CSize(std::uint64_t bytes) {
    const std::wstring sign = UserDecimalSign();
    return SizeText(bytes, sign.empty() ? L'.' : sign.front());
}

bool FolderOnFixedDrive(System& system, std::wstring_view folder) {
    return Trap(system).Or(false, L"FolderOnFixedDrive",
                           [&] { return system.files.DriveTypeOf(folder) == DriveType::Fixed; });
}

std::wstring TempPath(System& system, std::wstring_view name, bool startEmpty) {
    std::wstring path;
    Trap(system)(L"TempPath", [&] {
        const std::wstring temp = system.files.TempFolder();
        if (name.empty()) {
            path = temp;
            return;
        }
        const std::wstring folder = JoinPath(temp, name);
        // A name such as ".." would have the temporary folder itself deleted, or all around it.
        if (PathContains(folder, temp)) Throw(error_number::kBadName, folder);
        path = folder;
        if (startEmpty) DeletePath(system, folder);
        const std::optional<FileInfo> facts = system.files.Stat(folder);
        if (!facts || !facts->isFolder) system.files.CreateFolder(folder);
    });
    return path;
}

double FolderFreeSpace(System& system, std::wstring_view folder, double bytesNeeded) {
    double free = 0;
    std::wstring drive;
    const bool known = Trap(system)(L"FolderFreeSpace", [&] {
        const std::wstring full = system.files.FullPath(folder);
        if (full.size() > 1 && full[1] == L':') drive = full.substr(0, 1);
        free = static_cast<double>(system.files.FreeSpace(folder));
    });
    // Raised behind the trap: the backup of the item has to stop, not only this question.
    if (known && free < bytesNeeded) {
        ThrowWith(error_number::kNotEnoughSpace, L"لا توجد مساحة كافية على القرص\r\n" + drive,
                  folder);
    }
    return free;
}

namespace {

// Called with every file that the search visits, and with copies as files of their size; `direct`
// is true for the files directly in the top folder.
using FileTaker = std::function<void(const FileInfo& file, bool direct)>;

// `dates`, which begins empty, holds what was found so far when an error ends the search.
void FindNewestDate(System& system, CopyDates& copyDates, std::wstring_view path,
                    const std::optional<FileInfo>& facts, NewestDates& dates,
                    const FileTaker& take = {}, bool raisesUnreadable = false) {
    if (!facts) return;
    if (NamesCopy(path)) {
        dates.newest = copyDates.PackageDate(path);
        return;
    }
    if (!facts->isFolder) {
        dates.Take(*facts);
        return;
    }
    dates.newest = kEmptyFolderDate;
    bool direct = true;
    TreeVisitor visitor;
    visitor.file = [&](const FolderEntry& file) {
        dates.Take(file);
        if (take) take(file, direct);
    };
    visitor.left = [&] { direct = false; };
    visitor.enters = [&](const std::wstring& subFolder) {
        if (!NamesCopy(subFolder)) return true;
        if (take) {
            take({.size = static_cast<std::uint64_t>(WholeTreeSize(system, subFolder))}, direct);
        }
        const Date stored = copyDates.PackageDate(subFolder);
        dates.Take({.lastWrite = stored, .lastWriteByPresentRules = stored});
        return false;
    };
    visitor.yield = [&] { system.pump.ProcessMessagesIfDue(); };
    visitor.raisesUnreadable = raisesUnreadable;
    WalkTree(system.files, path, visitor);
}

}  // namespace

Date PathDate(System& system, CopyDates& copyDates, std::wstring_view path) {
    NewestDates dates;
    Trap(system)(L"PathDate",
                 [&] { FindNewestDate(system, copyDates, path, system.files.Stat(path), dates); });
    return dates.newest;
}

std::optional<SizeAndDate> PathSizeAndDate(System& system, CopyDates& copyDates,
                                           std::wstring_view path) {
    std::optional<SizeAndDate> found;
    NewestDates dates;
    bool isSearched = false;
    const bool told = !Trap(system)(L"PathDate", [&] {
        const std::optional<FileInfo> facts = system.files.Stat(path);
        if (!facts) return;
        found = {.isFolder = facts->isFolder, .size = facts->size, .date = facts->lastWrite};
        if (NamesCopy(path)) {
            found->date = copyDates.PackageDate(path);
            if (facts->isFolder) {
                found->size = static_cast<std::uint64_t>(WholeTreeSize(system, path));
            }
        } else if (facts->isFolder) {
            isSearched = true;
            FindNewestDate(system, copyDates, path, facts, dates,
                           [&](const FileInfo& file, bool) { found->size += file.size; });
        }
    });
    if (isSearched) found->date = dates.newest;
    if (told && !found) found = SizeAndDate{.isKnown = false};
    return found;
}

NewestDates NewestDatesOf(System& system, CopyDates& copyDates, std::wstring_view path) {
    NewestDates dates;
    FindNewestDate(system, copyDates, path, system.files.Stat(path), dates, {}, true);
    return dates;
}

Date NewestDateOf(System& system, CopyDates& copyDates, std::wstring_view path) {
    return NewestDatesOf(system, copyDates, path).newest;
}

ItemStats GetItemStats(System& system, CopyDates& copyDates, std::wstring_view path,
                       const std::optional<FileInfo>& facts) {
    ItemStats stats;
    const auto note = [](const FileInfo& file, ItemStats::Cloud& cloud, bool& hasEncrypted) {
        hasEncrypted = hasEncrypted || file.isEncrypted;
        if (!file.isOnlyInCloud) return;
        ++cloud.files;
        cloud.bytes += file.size;
    };
    const auto add = [&](const FileInfo& file, bool direct) {
        ++stats.treeFiles;
        stats.treeBytes += file.size;
        note(file, stats.treeCloud, stats.treeHasEncrypted);
        if (!direct) return;
        ++stats.files;
        stats.bytes += static_cast<std::int64_t>(file.size);
        note(file, stats.cloud, stats.hasEncrypted);
    };
    FindNewestDate(system, copyDates, path, facts, stats, add);
    if (!facts) {
        stats.bytes = -1;
    } else if (!facts->isFolder) {
        stats.bytes = static_cast<std::int64_t>(facts->size);
        stats.files = stats.treeFiles = 1;
        stats.treeBytes = facts->size;
        note(*facts, stats.cloud, stats.hasEncrypted);
        note(*facts, stats.treeCloud, stats.treeHasEncrypted);
    } else if (NamesCopy(path)) {
        stats.bytes = PathSize(system, path);
    }
    return stats;
}

}  // namespace vw::MFileDosShell
