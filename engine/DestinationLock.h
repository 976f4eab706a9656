#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/HeldFile.h"
#include "platform/NamedLock.h"

namespace vw {

class FileSystem;

/// Keeps every other run out of a destination: a mutex for the runs of this computer, which older
/// versions of the program respect too, and then a file in the destination, which is the same one
/// under every name of the folder and for every computer. The open file is the lock, not its
/// existence. Held from a successful TryTake until it is destroyed.
class DestinationLock {
  public:
    /// `purpose` names the kind of the mutex; runs use kRuns.
    DestinationLock(FileSystem& files, std::wstring_view folder, std::wstring_view purpose = kRuns);

    /// Takes what is free; false while another run holds the mutex or the file. Throws what goes
    /// wrong with the file otherwise: a missing folder (76), a full disk (61). To be called until
    /// it succeeds, and not again.
    [[nodiscard]] bool TryTake();

    /// Whether only the mutex could be taken, since no file can be made in the destination: the
    /// disk is write-protected or the account may not write there.
    [[nodiscard]] bool IsForThisComputerOnly() const noexcept { return cannotMakeFile_; }

    static constexpr std::wstring_view kRuns = L"destination";

  private:
    [[nodiscard]] bool LockFileExists();
    [[nodiscard]] bool CanMakeProbe();

    FileSystem& files_;
    std::wstring path_;
    NamedLock mutex_;
    // Declared after the mutex, so that it is given back first: the order of taking, reversed.
    std::unique_ptr<HeldFile> file_;
    bool cannotMakeFile_ = false;
};

}  // namespace vw
