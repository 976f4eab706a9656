#pragma once

#include <functional>

namespace vw {

class CPackage;

/// Returns the engine of the program, which is made on first use.
using EngineProvider = std::function<CPackage&()>;

}  // namespace vw
