#pragma once

#include "list/format/Settings.h"
#include "platform/Language.h"

namespace vw {

class CCommonAPI;
class MessageBoxes;
struct ProgramState;

/// The language of the windows: the user's stored choice, asked for at the first start.
class LanguageChoice {
  public:
    LanguageChoice(MRecentFiles::SettingsStore& settings, MessageBoxes& boxes, ProgramState& state);

    /// Returns the language of the windows and sets that of the program's state. Asks the user when
    /// no choice was made yet, but never in a silent run: that one is English and leaves the
    /// question to the next start. Throws 13 (or 6) for a stored text that is no yes or no.
    Language Read();

    /// Stores a choice and makes it the program's.
    void Write(Language language);

    /// Switches the keyboard to Arabic and warns about unsuitable digits, once after the choice
    /// became Arabic. Nothing happens in English and in silent runs.
    void PrepareArabicOnce(CCommonAPI& api);

  private:
    [[nodiscard]] bool Ask();

    MRecentFiles::SettingsStore& settings_;
    MessageBoxes& boxes_;
    ProgramState& state_;
};

}  // namespace vw
