#pragma once

#include <string_view>

#include "platform/ErrorTrap.h"

namespace vw {

/// A procedure of the backup engine, as error messages name it.
[[nodiscard]] constexpr Procedure EngineProcedure(std::wstring_view name) {
    return {name, L"Class Module", L"CPackage"};
}

}  // namespace vw
