#include <optional>

#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "engine/EngineProcedure.h"
#include "engine/SourceFolder.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWalk.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"

// Copying a stored copy back. A file is written beside its place first and takes it in one step, so
// that whatever goes wrong leaves the old file or the restored one, whole.

namespace vw {

namespace {

// A free name in the folder; nobody's file may be in the way of a restore.
std::wstring FreeName(FileSystem& files, const std::wstring& folder) {
    for (int number = 0;; ++number) {
        std::wstring path = JoinPath(folder, L"~vwr" + std::to_wstring(number) + L".tmp");
        if (!files.Look(path)) return path;
    }
}

}  // namespace

void CPackage::Extract(std::wstring_view copyPath, std::wstring_view destinationFolder,
                       bool showMessage) {
    Trapped(system_.errors, EngineProcedure(L"Extract"), [&] {
        if (showMessage) host_.Msg(L"Restoring: ", copyPath, {}, false, false, false);
        const std::wstring target =
            JoinPath(destinationFolder, MFileDosShell::CFileName(CFileOrigin(copyPath)));
        const auto facts = system_.files.Look(copyPath);
        if (!facts) Raise(error_number::kFileNotFound, copyPath);
        std::optional<RuntimeError> failure;
        if (facts->isFolder) {
            ExtractFolder(std::wstring(copyPath), target, true, failure);
        } else {
            ExtractFile(std::wstring(copyPath), target, facts->size);
        }
        if (failure) throw RuntimeError(*failure);
    });
}

// A file that cannot be restored costs the others nothing: it is told, and the first one is what
// the user is told of at the end. A link that is the item itself is followed, as its backups do.
// One below it was left out of the safety copy, so nothing may be written through it.
void CPackage::ExtractFolder(const std::wstring& copy, const std::wstring& target, bool isItem,
                             std::optional<RuntimeError>& failure) {
    const auto attempt = [&](const auto& step) {
        try {
            step();
        } catch (const RuntimeError& error) {
            host_.Report(ErrorDetails(error), false);
            if (!failure) failure = error;
        }
    };
    attempt([&] {
        const SourceFolder source = ReadSourceFolder(system_.files, copy + L"\\");
        const auto there = system_.files.Look(target);
        if (there && (!there->isFolder || (there->isLink && !isItem))) {
            Raise(error_number::kAlreadyExists, target);
        }
        if (!there) system_.files.MakeFolder(target);
        for (const SourceFile& file : source.files) {
            attempt([&] {
                ExtractFile(JoinPath(copy, file.name), JoinPath(target, file.name), file.size);
            });
            system_.pump.DoEventsIfDue();
        }
        for (const std::wstring& name : source.folders) {
            ExtractFolder(JoinPath(copy, name), JoinPath(target, name), false, failure);
        }
        // Last, since every file that is restored changes the date. What the user has hidden or
        // protected since stays so; copies of earlier versions do not know the marks.
        KeepFolderInfo(copy, target, there ? FileSystem::Marks::Keep : FileSystem::Marks::Replace);
    });
}

void CPackage::ExtractFile(const std::wstring& copy, const std::wstring& target,
                           std::uint64_t size) {
    const auto there = system_.files.Look(target);
    if (there && there->isFolder) Raise(error_number::kAlreadyExists, target);
    if (there && there->isReadOnly) Raise(error_number::kPermissionDenied, target);
    const std::wstring aside = FreeName(system_.files, MFileDosShell::CFileLocation(target));
    system_.files.Copy(copy, aside, duringCopy_);
    try {
        // The copy call may report success for a file that it cut short.
        const auto written = system_.files.Look(aside);
        if (!written || written->size != size) Raise(error_number::kDeviceError, copy);
        if (there) system_.files.CopyAccessRights(target, aside);
        patience_.Perform([&] { system_.files.Replace(aside, target); }, target);
        if (system_.files.Look(aside)) Raise(error_number::kDeviceError, target);
    } catch (const RuntimeError&) {
        Remove(aside);
        throw;
    }
}

}  // namespace vw
