#pragma once

#include <functional>

#include "engine/EngineProvider.h"

namespace vw {

class ProgramControl;
class ProgressReporter;
class RestoreView;
class StatusLine;

/// What the commands on backup lists use of the program around them.
struct ListContext {
    ProgressReporter& progress;
    ProgramControl& program;
    RestoreView& copies;
    StatusLine& status;
    EngineProvider engine;
    /// Shows in the main window's caption which list is in use.
    std::function<void()> showCaption;
    /// Switches start at log-on, if the default list is in use.
    std::function<void(bool)> startAtLogon;
};

}  // namespace vw
