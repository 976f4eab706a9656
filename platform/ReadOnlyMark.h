#pragma once

#include <string>

namespace vw {

/// Takes the read-only mark off a file or folder that has to go. `systemPath` is in the form of
/// SystemPath. False when it has no such mark or keeps it.
bool ClearReadOnly(const std::wstring& systemPath);

}  // namespace vw
