#pragma once

#include <string>

#include "platform/WindowsHeader.h"

namespace vw::test {

/// Makes a folder the current one of the process and its drive until it goes out of scope.
class CurrentFolder {
  public:
    explicit CurrentFolder(const std::wstring& folder) {
        GetCurrentDirectoryW(MAX_PATH, before_);
        SetCurrentDirectoryW(folder.c_str());
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder() { SetCurrentDirectoryW(before_); }

  private:
    wchar_t before_[MAX_PATH + 1] = {};
};

}  // namespace vw::test
