#pragma once

#include <string>

#include "tests/support/TempTree.h"
#include "tests/support/WineBridge.h"

namespace vw::test {

/// The folder that the restore view turns to when a drive is gone, empty at the start of a test and
/// gone after it. On a computer where somebody keeps copies there it may not be used.
class CopiesOnC {
  public:
    CopiesOnC() : mayBeUsed_(UnderWine() || !Exists(Folder())) {
        if (!mayBeUsed_) return;
        // A test that was killed may have left something.
        tree_.Remove(Folder());
        tree_.Folder(Folder());
    }
    ~CopiesOnC() {
        if (mayBeUsed_) tree_.Remove(Folder());
    }
    CopiesOnC(const CopiesOnC&) = delete;
    CopiesOnC& operator=(const CopiesOnC&) = delete;

    [[nodiscard]] bool MayBeUsed() const noexcept { return mayBeUsed_; }
    [[nodiscard]] static std::wstring Folder() { return L"C:\\Backup"; }

  private:
    TempTree tree_;
    bool mayBeUsed_;
};

}  // namespace vw::test
