#pragma once

#include <string_view>

#include "platform/System.h"

namespace vw {

class ProgressReporter;
struct ProgramState;

namespace MMyScripting {
class ScriptShell;
}

namespace MFileDosShell {

/// Empties the temporary folders of the user and of Windows. What is in use is reported and stays,
/// and so does what cannot be listed. A cancel stops it at the next file.
void DellTemp(System& system, ProgramState& state, MMyScripting::ScriptShell& shell, bool isWinNT,
              ProgressReporter& progress);

/// Deletes what a folder holds; nothing at all unless `confirmation` is "yes". With `skip` files
/// directly in it that are named like "VB*.*" stay. Links go without what they show.
void DelInFolder(System& system, const ProgramState& state, std::wstring_view folder,
                 std::wstring_view confirmation, bool skip, ProgressReporter& progress);

}  // namespace MFileDosShell
}  // namespace vw
