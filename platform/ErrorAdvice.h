#pragma once

#include <string>

#include "platform/ErrorTrap.h"
#include "platform/Language.h"

namespace vw {

/// One sentence for the user about an error: its cause, what became of the copies or of the list,
/// and what to do. In the language of the windows.
[[nodiscard]] std::wstring ErrorAdvice(const Procedure& where, const RuntimeError& error,
                                       Language language);

/// The whole text of an error's box: that of ErrorText, an empty line and the advice.
[[nodiscard]] std::wstring ErrorBoxText(const Procedure& where, const RuntimeError& error,
                                        Language language);

}  // namespace vw
