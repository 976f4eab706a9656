#pragma once

#include <exception>

#include "platform/ErrorTrap.h"

namespace vw {

/// Reports an error that reached a window procedure, past the traps of the handlers: it must not
/// enter the system's code, and no window drops it.
void ReportEscaped(const std::exception_ptr& error, const ErrorTrap& trap) noexcept;

}  // namespace vw
