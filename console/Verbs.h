#pragma once

#include "console/Arguments.h"

namespace vw {

class Console;

// The verbs of the program, each in a file of its own. Each gives the exit code for the case that
// no error was reported, and throws what ends it.

int Backup(Console& console, const BackupArguments& arguments);
int Preview(Console& console, const PreviewArguments& arguments);
int Check(Console& console, const CheckArguments& arguments);
int Copies(Console& console, const CopiesArguments& arguments);
int Restore(Console& console, const RestoreArguments& arguments);
int Diff(Console& console, const DiffArguments& arguments);
int Schedule(Console& console, const ScheduleArguments& arguments);

}  // namespace vw
