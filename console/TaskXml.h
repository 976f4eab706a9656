#pragma once

#include <string>
#include <string_view>

#include "console/Arguments.h"
#include "platform/Date.h"

namespace vw {

/// What a task of the system's scheduler runs, and for whom.
struct TaskCommand {
    std::wstring program;
    std::wstring arguments;
    std::wstring user;  ///< the user's SID as text
};

/// The definition of a task in the scheduler's own XML. It starts on battery too, makes up a missed
/// start, never runs twice at once and ends after 12 hours. `today` is the day from which a daily
/// or weekly task counts. Its description says when it starts and what it runs.
[[nodiscard]] std::wstring TaskXml(const ScheduleArguments& when, const TaskCommand& command,
                                   Date today);

/// When a task starts, in words: "daily at 19:00".
[[nodiscard]] std::wstring ScheduleWords(const ScheduleArguments& when);

/// The text of the first element of this name; empty when there is none. Character references of
/// the five special characters are resolved.
[[nodiscard]] std::wstring ElementText(std::wstring_view xml, std::wstring_view name);

}  // namespace vw
