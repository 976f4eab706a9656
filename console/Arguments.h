#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Date.h"

namespace vw {

/// The exit code for arguments that are none.
inline constexpr int kWrongArguments = 2;

struct BackupArguments {
    std::wstring list;
    bool keepMissing = true;
    std::wstring logFolder;  ///< empty for no log
    int logsToKeep = 0;      ///< 0 keeps all
};

struct PreviewArguments {
    std::wstring list;
};

struct CheckArguments {
    std::wstring list;
    bool content = false;
};

struct CopiesArguments {
    std::wstring source;  ///< list or folder; empty for the default destination
    std::wstring item;    ///< name or path; empty for all
};

struct RestoreArguments {
    std::wstring source;  ///< a copy, or with `asOf` a list
    std::optional<Date> asOf;
    std::wstring folder;
    bool overwrite = false;
};

struct DiffArguments {
    std::wstring copy;
    std::wstring other;  ///< empty for what the copy was made from
};

enum class ScheduleAction { Add, List, Remove };
enum class ScheduleKind { Daily, Weekly, AtLogon };

struct ScheduleArguments {
    ScheduleAction action = ScheduleAction::List;
    std::wstring list{};  ///< of Add
    std::wstring name{};  ///< of the task; empty for that of the list
    ScheduleKind kind = ScheduleKind::Daily;
    int hour = 0;
    int minute = 0;
    int weekday = 0;  ///< 0 is Sunday
    std::wstring logFolder{};
};

/// What the user asked for.
struct Arguments {
    std::variant<std::monostate, BackupArguments, PreviewArguments, CheckArguments, CopiesArguments,
                 RestoreArguments, DiffArguments, ScheduleArguments>
        verb;
    bool json = false;
    bool quiet = false;

    /// Help or the version, to be written to standard output instead of running a verb; or, with
    /// `isWrong`, what is wrong with the arguments, for standard error.
    std::wstring text;
    bool isWrong = false;
};

/// Reads the arguments behind the program's name.
[[nodiscard]] Arguments ReadArguments(const std::vector<std::wstring>& words);

}  // namespace vw
