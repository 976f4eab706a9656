#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/ErrorTrap.h"
#include "platform/RawRegistry.h"
#include "platform/WindowsHeader.h"

namespace vw {

class AnsiCodec;
class MsgBoxes;

/// What the program asks of Windows beside files: the registry, the shell, the keyboard language.
/// One file per concern: Registry*.cpp, Shell*.cpp and Language*.cpp of this folder.
///
/// No operation lets an error out. One that fails gives its neutral result (empty, 0, false); the
/// error's text goes to `faults`, in the program the debugger's output.
class CCommonAPI {
  public:
    CCommonAPI(RawRegistry& registry, const AnsiCodec& ansi, MsgBoxes& boxes, ErrorSink& faults);

    // Registry. A path may begin with "\". Every access makes the key when it is missing. Texts
    // cross in the ANSI code page.

    /// The data of a value as text, empty when it is missing, shorter than two bytes or cannot be
    /// read. Data of any type come as their characters without the final NUL: a double word gives
    /// its raw bytes.
    [[nodiscard]] std::wstring RegValue(HKEY RegRootKey, std::wstring_view sRegistryKey,
                                        std::wstring_view sValueName, DWORD RegDataType);

    // Shell.

    /// Whether a log-on start entry of that name exists.
    [[nodiscard]] bool ApplicationSartup(std::wstring_view name);

    /// Whether this is Windows of the NT line; false when the system does not tell.
    [[nodiscard]] bool IsWinNT();

  private:
    /// Runs `body` and gives its result; `neutral` when an error leaves it.
    template <class Result, class Body>
    Result Quietly(std::wstring_view procedure, Result neutral, Body&& body) {
        Result result = std::move(neutral);
        Trapped(faults_, {procedure, L"Class Module", L"CCommonAPI"}, [&] { result = body(); });
        return result;
    }

    LSTATUS OpenKey(HKEY root, std::wstring_view path, RegistryKey& key);

    RawRegistry& registry_;
    const AnsiCodec& ansi_;
    MsgBoxes& boxes_;
    ErrorSink& faults_;
};

}  // namespace vw
