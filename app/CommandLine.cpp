#include "app/CommandLine.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "fsutil/PathText.h"
#include "platform/TextCase.h"
#include "platform/Wildcards.h"

namespace vw {
namespace {

constexpr std::wstring_view kBlanks = L" \t";
constexpr std::wstring_view kListPattern = L"*.vwl";

std::wstring_view TrimLeft(std::wstring_view text) noexcept {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text;
}

std::wstring_view TrimRight(std::wstring_view text) noexcept {
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::wstring_view Trim(std::wstring_view text) noexcept { return TrimRight(TrimLeft(text)); }

StartAction ActionForArgument(std::wstring_view argument, StartAction list, StartAction item,
                              StartAction defaultList) {
    if (MatchesWildcard(argument, kListPattern)) {
        return list;
    }
    return argument.empty() ? defaultList : item;
}

}  // namespace

std::wstring ArgumentText(std::wstring_view commandLine) {
    bool isQuoted = false;
    std::size_t end = 0;
    while (end < commandLine.size() &&
           (isQuoted || kBlanks.find(commandLine[end]) == std::wstring_view::npos)) {
        if (commandLine[end] == L'"') {
            isQuoted = !isQuoted;
        }
        ++end;
    }
    return std::wstring(TrimLeft(commandLine.substr(end)));
}

bool StartsSilently(std::wstring_view arguments) {
    constexpr std::array<std::wstring_view, 4> kSilent{L"/B", L"/S", L"/R", L"/D"};
    const std::wstring_view beginning = arguments.substr(0, 2);
    return std::any_of(kSilent.begin(), kSilent.end(), [beginning](std::wstring_view silent) {
        return EqualNoCase(beginning, silent);
    });
}

bool IsStartupCommand(std::wstring_view arguments) {
    return EqualNoCase(TrimRight(arguments), L"/Startup");
}

CommandLine SplitCommandLine(std::wstring_view arguments) {
    constexpr std::wstring_view kSwitchMarks = L"/\\-";
    CommandLine result;
    const bool hasSwitch =
        !arguments.empty() && kSwitchMarks.find(arguments.front()) != std::wstring_view::npos;
    if (hasSwitch) {
        const std::size_t blank = std::min(arguments.find_first_of(kBlanks), arguments.size());
        result.switchWord = arguments.substr(0, blank);
        result.argument = Trim(arguments.substr(blank));
    } else {
        result.argument = Trim(arguments);
    }
    MFileDosShell::QuoteRmove(result.argument);
    return result;
}

StartAction ActionFor(const CommandLine& commandLine) {
    const auto isSwitch = [&commandLine](std::wstring_view word) {
        return EqualNoCase(commandLine.switchWord, word);
    };
    if (isSwitch(L"/Backup") || isSwitch(L"/B")) {
        return ActionForArgument(commandLine.argument, StartAction::BackupList,
                                 StartAction::BackupItem, StartAction::BackupDefaultList);
    }
    if (isSwitch(L"/Restore") || isSwitch(L"/R")) {
        return StartAction::Restore;
    }
    if (isSwitch(L"/Author")) {
        return StartAction::Author;
    }
    if (isSwitch(L"/D")) {
        return StartAction::DeleteTemporary;
    }
    return ActionForArgument(commandLine.argument, StartAction::OpenList, StartAction::OpenItem,
                             StartAction::OpenDefaultList);
}

}  // namespace vw
