#pragma once

#include <string>
#include <string_view>

namespace vw {

/// What follows the program's own name on a command line, leading blanks dropped, the rest as it
/// was typed. The name may be in double quotes.
[[nodiscard]] std::wstring ArgumentText(std::wstring_view commandLine);

/// Whether a run with these arguments is silent: they begin with "/B", "/S", "/R" or "/D" in any
/// letter case (so "/Backup" and "/Startup" are silent too). No window may wait for the user then.
[[nodiscard]] bool StartsSilently(std::wstring_view arguments);

/// Whether the arguments are "/Startup" and nothing else but blanks behind it.
[[nodiscard]] bool IsStartupCommand(std::wstring_view arguments);

struct CommandLine {
    std::wstring switchWord;  ///< "/B", "-x"...; empty when the arguments begin with no switch
    std::wstring argument;    ///< list, item or copy name, without enclosing double quotes
};

/// Cuts the arguments at the first blank when they begin with "/", "\" or "-"; otherwise all of
/// them are the argument.
[[nodiscard]] CommandLine SplitCommandLine(std::wstring_view arguments);

/// What the start procedure has to do for a switch and its argument.
enum class StartAction {
    BackupList,         ///< back up the list that the argument names
    BackupItem,         ///< back up the one item that the argument names
    BackupDefaultList,  ///< back up the default list
    Restore,            ///< show the copies of the item or the copy that the argument names
    Author,             ///< show the author's name and end
    DeleteTemporary,    ///< clean the temporary folders
    OpenList,           ///< open the window on the list that the argument names
    OpenItem,           ///< open the window on the one item that the argument names
    OpenDefaultList,    ///< open the window on the default list
};

[[nodiscard]] StartAction ActionFor(const CommandLine& commandLine);

}  // namespace vw
