#pragma once

#include <string_view>

/// The console that a program with windows was started from. Closing a console terminates every
/// attached process, so the process is attached only while it writes.
namespace vw::ParentConsole {

/// Whether there is one.
[[nodiscard]] bool Exists();

/// Writes a text. Nothing happens when the console is gone.
void Write(std::wstring_view text);

}  // namespace vw::ParentConsole
