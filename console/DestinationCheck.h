#pragma once

#include <set>
#include <string>

namespace vw {

class Console;
class DestinationView;
class Findings;

/// Looks at what lies directly in a destination: comments without copies and the reverse, comments
/// that do not fit their copies, working entries of runs, and contents that are not the program's.
/// `checkedCopies` are paths in upper case of copies whose comments were looked at before.
void CheckDestination(Console& console, const DestinationView& view,
                      const std::set<std::wstring>& checkedCopies, Findings& findings);

}  // namespace vw
