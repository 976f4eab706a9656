#include "engine/DestinationLock.h"

#include "fsutil/PathText.h"
#include "fsutil/WorkingName.h"
#include "platform/FileSystem.h"
#include "platform/ProcessTag.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

// Somebody has the file open, or has just closed it and the system is about to delete it.
bool MeansHeld(const RuntimeError& error) {
    const std::uint32_t code = error.SystemCode();
    return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION ||
           code == ERROR_DELETE_PENDING;
}

}  // namespace

DestinationLock::DestinationLock(FileSystem& files, std::wstring_view folder,
                                 std::wstring_view purpose)
    : files_(files), path_(JoinPath(folder, kLockFileName)), mutex_(purpose, folder) {}

bool DestinationLock::TryTake() {
    if (!mutex_.TryTake()) return false;
    try {
        file_ = files_.Hold(path_);
    } catch (const RuntimeError& error) {
        if (MeansHeld(error)) return false;
        if (error.SystemCode() == ERROR_ACCESS_DENIED) {
            // A file that is being deleted denies access too.
            if (LockFileExists() || CanMakeProbe()) return false;
        } else if (error.SystemCode() != ERROR_WRITE_PROTECT) {
            throw;
        }
        cannotMakeFile_ = true;
    }
    return true;
}

// A file that cannot even be asked about is no proof of one; the probe decides then.
bool DestinationLock::LockFileExists() {
    try {
        return files_.Stat(path_).has_value();
    } catch (const RuntimeError&) {
        return false;
    }
}

// Whether the account may make files in the destination at all.
bool DestinationLock::CanMakeProbe() {
    const ProcessTag self = ThisProcess();
    const std::wstring probe =
        path_ + L"-" + std::to_wstring(self.processId) + L"-" + std::to_wstring(self.processStart);
    try {
        static_cast<void>(files_.Hold(probe));
        return true;
    } catch (const RuntimeError& error) {
        if (error.SystemCode() == ERROR_ACCESS_DENIED ||
            error.SystemCode() == ERROR_WRITE_PROTECT) {
            return false;
        }
        throw;
    }
}

}  // namespace vw
