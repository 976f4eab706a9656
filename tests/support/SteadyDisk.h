#pragma once

#include "tests/support/ForwardingFileSystem.h"
#include "tests/support/WineBridge.h"

namespace vw::test {

/// A disk whose folders keep their identity. Under Wine the serial number of a drive that a test
/// has plugged in changes by itself some time later, as if the drive had been exchanged once more.
class SteadyDisk final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    FolderIdentity Identify(std::wstring_view folder) override {
        FolderIdentity identity = Inner().Identify(folder);
        if (UnderWine()) identity.volume = 0;
        return identity;
    }
};

}  // namespace vw::test
