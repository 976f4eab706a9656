#pragma once

#include <string>
#include <string_view>

#include "platform/ErrorTrap.h"
#include "platform/System.h"

namespace vw {

class ListRows;
class ProgressReporter;
struct ProgramState;

/// Adds the items of one command to the list and selects what was added.
class ItemAdder {
  public:
    ItemAdder(System& system, ProgramState& state, ListRows& rows, ProgressReporter& progress);

    /// Adds one item.
    void Add(const std::wstring& path);

    /// Adds what the file dialog returned: one file, several, those that match a pattern, or those
    /// of a folder. A cancel ends it; what was added before stays.
    void AddChosen(const std::wstring& selection);

    /// Selects the row that was added last. When nothing was added because everything was in the
    /// list, selects the row of the last item offered.
    void SelectNewest();

  private:
    void AddMultiselect(std::wstring_view selection);
    void AddMatching(std::wstring_view pattern);
    void AddAllFilesInFolder(const std::wstring& folder);
    void AddShown(std::wstring_view caption, const std::wstring& path);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    ProgramState& state_;
    ListRows& rows_;
    ProgressReporter& progress_;
    int countBefore_;
    std::wstring offered_;  ///< the path passed to Add last
};

}  // namespace vw
