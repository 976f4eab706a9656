#pragma once

#include <string_view>

namespace vw {

/// Waits until the content of a file of the real disk is on it; see FileSystem::FlushFile.
void FlushContent(std::wstring_view path);

}  // namespace vw
