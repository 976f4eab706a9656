#pragma once

#include <string>

#include "tests/support/TempTree.h"

namespace vw::test {

/// A drive for the copies of one test: windows offer drives, not folders. Under Wine it is R:,
/// which the test prefix has; elsewhere the first free letter, which shows a temporary folder.
class TestDrive {
  public:
    TestDrive();
    TestDrive(const TestDrive&) = delete;
    TestDrive& operator=(const TestDrive&) = delete;
    ~TestDrive();

    /// "R:"
    [[nodiscard]] const std::wstring& Name() const noexcept { return name_; }
    /// The folder of the copies on it, empty at the start of the test and gone after it.
    [[nodiscard]] std::wstring Backup() const { return name_ + L"\\Backup"; }

    /// Takes the drive away, as pulling out a stick does.
    void PullOut();
    /// Puts a stick under the letter. Each name is a stick with a memory of its own; the empty one
    /// is that which was there at first. One that is there is pulled out.
    void Insert(std::wstring_view stick = {});
    /// The folder of the copies on a stick that need not be inserted, by a path that stays.
    [[nodiscard]] std::wstring BackupOn(std::wstring_view stick) const;

  private:
    [[nodiscard]] std::wstring FolderOf(std::wstring_view stick) const;

    TempTree tree_;
    bool isInserted_ = true;
    bool isExchanged_ = false;
    std::wstring name_ = L"R:";
};

}  // namespace vw::test
