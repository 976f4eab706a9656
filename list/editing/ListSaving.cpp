#include "list/editing/ListSaving.h"

#include "fsutil/Patience.h"
#include "platform/FileSystem.h"
#include "platform/NamedLock.h"
#include "platform/RuntimeError.h"

namespace vw {
namespace {

using Flush = FileSystem::Flush;

// Much longer than any save. A holder that exceeds it is assumed to hang, and the list is saved
// without the lock.
constexpr unsigned kPatience = 5000;

void EraseIfThere(FileSystem& files, const std::wstring& path) {
    if (files.Stat(path)) files.RemoveFile(path);
}

void KeepOldList(FileSystem& files, std::wstring_view listPath) {
    if (!files.Stat(listPath)) return;
    const std::wstring old = std::wstring(listPath) + L".old";
    EraseIfThere(files, old);
    files.Copy(listPath, old, {});
}

// A folder that takes no new file, or a file that may be written but not replaced, leaves only
// writing into the list itself. A disk without room does not: the old list has to stay.
bool MayWriteInPlace(const RuntimeError& error) {
    return error.Number() == error_number::kPermissionDenied ||
           error.Number() == error_number::kAccessError;
}

// The new list beside the old one goes, unless it is all that is left.
void WriteInPlace(FileSystem& files, std::wstring_view listPath, const std::wstring& next,
                  std::string_view bytes) {
    try {
        files.Write(listPath, bytes, Flush::Yes);
    } catch (const RuntimeError&) {
        if (files.Stat(listPath)) EraseIfThere(files, next);
        throw;
    }
    EraseIfThere(files, next);
}

}  // namespace

void ReplaceList(FileSystem& files, std::wstring_view temporaryPath, std::wstring_view listPath,
                 std::string_view bytes, bool keepOld, const std::optional<std::string>& known) {
    // All windows share the temporary file, and those with the same list the names beside it: they
    // take turns, with both locks in the same order.
    NamedLock temporaryTurn(L"list", temporaryPath);
    NamedLock turn(L"list", listPath);
    static_cast<void>(temporaryTurn.TakeWithin(kPatience) && turn.TakeWithin(kPatience));
    // The user has protected it; what replaced it would not be protected.
    const auto facts = files.Stat(listPath);
    if (facts && facts->isReadOnly) {
        if (files.Read(listPath) == bytes) return;
        Throw(error_number::kAccessError, listPath);
    }
    files.Write(temporaryPath, bytes, Flush::Yes);
    // Another window with the same list may have saved it since.
    const bool changedByOthers = known && facts && files.Read(listPath) != *known;
    if (keepOld || changedByOthers) KeepOldList(files, listPath);
    const std::wstring next = std::wstring(listPath) + L".new";
    try {
        files.Write(next, bytes, Flush::Yes);
        // A virus scanner or a run may just be reading the list.
        RetryBriefly([&] { files.Replace(next, listPath); });
    } catch (const RuntimeError& error) {
        if (!MayWriteInPlace(error)) throw;
        WriteInPlace(files, listPath, next, bytes);
    }
    files.RemoveFile(temporaryPath);
}

}  // namespace vw
