#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/AnsiCodec.h"
#include "platform/System.h"

namespace vw::MMyScripting {

/// Holds the "WScript.Shell" object that the whole program shares. Made once by the wiring; the
/// object inside comes on first use and stays until the end. Belongs to the thread of the windows.
class ScriptShell {
  public:
    ScriptShell();
    ScriptShell(const ScriptShell&) = delete;
    ScriptShell& operator=(const ScriptShell&) = delete;
    ~ScriptShell();

    /// Makes the object unless it is there; throws 75 when the system has none.
    void Create();

    [[nodiscard]] bool IsCreated() const noexcept;

    /// The object's special folder of that number; empty when the object does not have it or
    /// cannot be made.
    [[nodiscard]] std::wstring SpecialFolder(int number);

  private:
    struct Objects;
    std::unique_ptr<Objects> objects_;
};

/// Makes the shared object on first use; later calls do nothing.
void WshShellInt(System& system, ScriptShell& shell);

/// The path of a special folder, without a final "\"; empty when there is none of that code.
/// 50, 51 and 52 are the folder of Windows, the system folder and the temporary folder; `code`
/// becomes 0, 1 or 2 then. Any other code is a number of the shared object's collection; when
/// `isWinNT` (the answer of CCommonAPI::IsWinNT) is false, 0, 2, 1 and 3 become 4, 17, 11 and 14
/// first.
[[nodiscard]] std::wstring GetSpecialFolders(System& system, ScriptShell& shell, int& code,
                                             bool isWinNT);

/// The command that hands a path or address to the system's handler of links.
[[nodiscard]] std::wstring FileProtocolCommand(std::wstring_view pathOrAddress);

/// Whether that command line opens it: the handler takes its text in the ANSI code page, where a
/// name beyond it would come out as another, and opens nothing, without a word, for a longer one.
[[nodiscard]] bool FitsFileProtocol(const AnsiCodec& ansi, std::wstring_view pathOrAddress);

/// Opens a path or address with the program that belongs to it. Does not wait; failures are
/// ignored.
void ShellPath(System& system, std::wstring_view pathOrAddress);

}  // namespace vw::MMyScripting
