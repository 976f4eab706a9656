#pragma once

#include <string_view>

/// The console that a program with windows was started from. The process belongs to it only while
/// it writes: who closes a console ends every process that belongs to it, and a backup has to go
/// on.
namespace vw::ParentConsole {

/// Whether there is one.
[[nodiscard]] bool Exists();

/// Writes a text. Nothing happens when the console is gone.
void Write(std::wstring_view text);

}  // namespace vw::ParentConsole
