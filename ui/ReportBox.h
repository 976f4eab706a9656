#pragma once

#include <string_view>

#include "platform/Language.h"
#include "platform/WindowsHeader.h"

namespace vw {

/// The text box of a report: sentences in the language of the windows, and many paths.
class ReportBox {
  public:
    /// Lets a new box hold any length, and copy paths without the marks that show them.
    static void Prepare(HWND box);

    /// Adds lines at the end and scrolls to them.
    static void Append(HWND box, std::wstring_view lines, Language language);
};

}  // namespace vw
