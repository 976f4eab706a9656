#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/SourceLocation.h"

namespace vw {

class RuntimeError;

/// Throws the error for a failure code of the system, with the system's number as its meaning.
[[noreturn]] void RaiseCode(std::uint32_t systemCode, std::wstring_view path,
                            const SourceLocation& where = SourceLocation::current());

/// The same for GetLastError().
[[noreturn]] void RaiseLast(std::wstring_view path,
                            const SourceLocation& where = SourceLocation::current());

/// What went wrong in the words of the system, in its language; the error's own description when
/// the system has no words for it.
[[nodiscard]] std::wstring SystemText(const RuntimeError& error);

}  // namespace vw
