#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fsutil/WorkingName.h"

/// Working names as the version before the states of incomplete copies wrote and read them. It took
/// everything that it could read for an entry of its own.
namespace vw::test::earlier {

/// The entry's name. `made` and `completeness` are not used.
[[nodiscard]] std::wstring FormatWorkingName(const WorkingName& name, std::wstring_view firstName);

/// Takes an entry's name apart; nothing for a name that this version left alone.
[[nodiscard]] std::optional<WorkingName> ParseWorkingName(std::wstring_view name);

}  // namespace vw::test::earlier
