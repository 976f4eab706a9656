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

  private:
    TempTree tree_;
    std::wstring name_ = L"R:";
};

}  // namespace vw::test
