#pragma once

#include <string>

namespace vw {

/// The folder that the process works in; empty when the system cannot give it.
[[nodiscard]] std::wstring CurrentFolder();

/// Makes a folder the one that the process works in. One that cannot be entered changes nothing.
void WorkIn(const std::wstring& folder);

/// Brings the process back to the folder that it works in now. Dialogs of the system move it to
/// where the user browsed, and a drive that a process works on cannot be taken out.
class CurrentFolderKeeper {
  public:
    CurrentFolderKeeper() : folder_(CurrentFolder()) {}
    ~CurrentFolderKeeper();
    CurrentFolderKeeper(const CurrentFolderKeeper&) = delete;
    CurrentFolderKeeper& operator=(const CurrentFolderKeeper&) = delete;

  private:
    std::wstring folder_;
};

}  // namespace vw
