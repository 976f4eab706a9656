#include "tests/support/TestDrive.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/support/WineBridge.h"

namespace vw::test {

TestDrive::TestDrive() {
    if (UnderWine()) {
        tree_.Remove(Backup());
        return;
    }
    const DWORD taken = GetLogicalDrives();
    while ((taken >> (name_[0] - L'A') & 1U) != 0 && name_[0] < L'Z') ++name_[0];
    EXPECT_NE(DefineDosDeviceW(0, name_.c_str(), tree_.Path().c_str()), 0);
}

TestDrive::~TestDrive() {
    tree_.Remove(Backup());
    if (!UnderWine()) DefineDosDeviceW(DDD_REMOVE_DEFINITION, name_.c_str(), nullptr);
}

}  // namespace vw::test
