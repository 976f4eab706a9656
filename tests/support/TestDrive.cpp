#include "tests/support/TestDrive.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/support/WineBridge.h"

namespace vw::test {

TestDrive::TestDrive() {
    if (UnderWine()) {
        // A test that was killed may have left it pulled out.
        if (GetFileAttributesW(L"R:\\") == INVALID_FILE_ATTRIBUTES) PlugIn(L'R', FolderOf({}));
        tree_.Remove(Backup());
        return;
    }
    const DWORD taken = GetLogicalDrives();
    while ((taken >> (name_[0] - L'A') & 1U) != 0 && name_[0] < L'Z') ++name_[0];
    PlugIn(name_[0], tree_.Folder(FolderOf({})));
}

TestDrive::~TestDrive() {
    if (isExchanged_) Insert({});
    tree_.Remove(Backup());
    if (!UnderWine()) PlugOut(name_[0]);
}

void TestDrive::PullOut() {
    if (isInserted_) PlugOut(name_[0]);
    isInserted_ = false;
    isExchanged_ = true;
}

void TestDrive::Insert(std::wstring_view stick) {
    PullOut();
    PlugIn(name_[0], tree_.Folder(FolderOf(stick)));
    isInserted_ = true;
}

std::wstring TestDrive::BackupOn(std::wstring_view stick) const {
    return tree_.Folder(FolderOf(stick)) + L"\\Backup";
}

std::wstring TestDrive::FolderOf(std::wstring_view stick) const {
    if (stick.empty() && UnderWine()) return OutsideFolderOfDrive(L'R');
    return tree_.Path(L"stick-" + std::wstring(stick));
}

}  // namespace vw::test
