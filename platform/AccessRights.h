#pragma once

#include <string>
#include <string_view>

namespace vw {

/// Passes the explicit access rights of a file of the real disk on to another one; see
/// FileSystem::CopyAccessRights.
void PassAccessRightsOn(std::wstring_view from, std::wstring_view to, std::string& usual);

}  // namespace vw
