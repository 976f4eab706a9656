#pragma once

#include <string_view>

#include "platform/WindowsHeader.h"

namespace vw::MFileDosShell {

/// Selects the first entry of a combo box whose text is exactly `text`, letter case included. When
/// there is none, the selection stays; with `mustMatch` 5 is thrown then, unless the box's edit
/// text already is `text`.
/// Part of the given interface; not called by the program.
void ComboSelectText(HWND comboBox, std::wstring_view text, bool mustMatch);

}  // namespace vw::MFileDosShell
