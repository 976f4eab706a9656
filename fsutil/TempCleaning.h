#pragma once

#include <string_view>

#include "platform/System.h"

namespace vw {

struct ProgramState;

namespace MMyScripting {
class ScriptShell;
}

/// What the cleaning of temporary folders shows of itself.
class CleaningHost {
  public:
    CleaningHost() = default;
    CleaningHost(const CleaningHost&) = delete;
    CleaningHost& operator=(const CleaningHost&) = delete;
    virtual ~CleaningHost() = default;

    /// Shows what is being deleted, or why something stays.
    virtual void Msg(std::wstring_view title, std::wstring_view message) = 0;

    /// The cleaning is over.
    virtual void BusyHide(bool pause) = 0;
};

namespace MFileDosShell {

/// Empties the temporary folders of the user and of Windows. What is in use is told and stays, and
/// so does what cannot be listed. A cancel stops it at the next file.
void DellTemp(System& system, ProgramState& state, MMyScripting::ScriptShell& shell, bool isWinNT,
              CleaningHost& host);

/// Deletes what a folder holds; nothing at all unless `confirmation` is "yes". With `skip` files
/// directly in it that are named like "VB*.*" stay. Links go without what they show.
void DelInFolder(System& system, const ProgramState& state, std::wstring_view folder,
                 std::wstring_view confirmation, bool skip, CleaningHost& host);

}  // namespace MFileDosShell
}  // namespace vw
