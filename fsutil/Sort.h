#pragma once

#include <string>
#include <vector>

#include "platform/MessagePump.h"

namespace vw::MFileDosShell {

/// Sorts ascending without regard to case, in place; the order of texts that differ in case only is
/// not fixed. Messages are processed meanwhile, during which `texts` is unchanged.
void Sort(std::vector<std::wstring>& texts, MessagePump& pump);

}  // namespace vw::MFileDosShell
