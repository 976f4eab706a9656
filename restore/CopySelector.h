#pragma once

#include <optional>
#include <string>

#include "engine/EngineProvider.h"
#include "platform/Language.h"
#include "platform/System.h"
#include "restore/ListedCopy.h"

namespace vw {

class CopiesBrowser;
class Form;

/// Reads what is selected in the restore view, and compares it with the disk before a command
/// changes something.
class CopySelector {
  public:
    CopySelector(System& system, Form& main, CopiesBrowser& browser, EngineProvider engine);

    /// What is selected; `needsCopy` requires a copy besides the item. Nothing when it is not
    /// there, which a message box or the lists have shown. Throws kFileNotFound when the folder of
    /// the copies is no longer the one shown.
    [[nodiscard]] std::optional<CopySelection> Read(bool needsCopy);

    /// Throws kFileNotFound when a copy is no longer the one that the user saw, and lists what is
    /// there now.
    void RequireUnchanged(const CopySelection& selection, const ListedCopy& copy);

    /// Shows a sentence, in the language of the window.
    void ShowMessage(const Texts& text);

    /// A sentence in the language of the window.
    [[nodiscard]] std::wstring In(const Texts& text) const;

  private:
    [[nodiscard]] bool IsUnchanged(const CopySelection& selection, const ListedCopy& copy);

    System& system_;
    Form& main_;
    CopiesBrowser& browser_;
    EngineProvider engine_;
};

}  // namespace vw
