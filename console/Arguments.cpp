#include "console/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "console/MomentText.h"
#include "platform/Utf8.h"

namespace vw {
namespace {

constexpr const char* kAbout =
    "Vaultwright at a prompt: backs up lists, and looks into what they have stored.";

constexpr const char* kExitCodes =
    "Exit codes: 0 all is well, 1 check or diff found something, 2 wrong arguments, 53 or 76 an\n"
    "item is missing, 61 disk full, 70 a file is in use, 75 refused, 170 the destination is in "
    "use,\n"
    "1004 not enough space, 1223 cancelled, 4008 no such list. The manual is docs/console.md.";

/// The texts that the options are read into, before they become arguments.
struct Words {
    std::string list;
    std::string source;
    std::string item;
    std::string copy;
    std::string other;
    std::string folder;
    std::string log;
    std::string asOf;
    std::string name;
    std::string daily;
    std::vector<std::string> weekly;
    int keep = 0;
    bool asWindow = false;
    bool keepMissing = false;
    bool content = false;
    bool overwrite = false;
    bool atLogon = false;
};

const CLI::Validator kMoment(
    [](std::string& text) {
        return ReadMoment(text) ? std::string() : "'" + text + "' is no date such as 2024-05-31";
    },
    "DATE");

const CLI::Validator kClockTime(
    [](std::string& text) {
        return ReadClockTime(text) ? std::string() : "'" + text + "' is no time such as 19:00";
    },
    "HH:MM");

const CLI::Validator kNotEmpty(
    [](std::string& text) {
        return text.empty() ? std::string("an empty text names nothing") : std::string();
    },
    "");

CLI::Option* Positional(CLI::App& verb, const char* name, std::string& text, const char* about) {
    return verb.add_option(name, text, about)->check(kNotEmpty)->type_name("");
}

void AddVerbs(CLI::App& app, Words& words, Arguments& arguments) {
    const auto addVerb = [&](const char* name, const char* about) {
        CLI::App* const verb = app.add_subcommand(name, about);
        verb->add_flag("--json", arguments.json, "Write one JSON object per line");
        return verb;
    };
    CLI::App* verb = addVerb("backup", "Back up a list, as the window does");
    Positional(*verb, "LIST", words.list, "The backup list (.vwl)")->required();
    auto* const keepMissing = verb->add_flag("--keep-missing", words.keepMissing,
                                             "Leave the copies of missing items alone (default)");
    verb->add_flag("--as-window", words.asWindow,
                   "Move the copies of missing items up, as the window does")
        ->excludes(keepMissing);
    auto* const log =
        verb->add_option("--log", words.log, "Write a log file into this folder")->check(kNotEmpty);
    verb->add_option("--keep", words.keep, "Keep this many log files")
        ->check(CLI::Range(1, 100000))
        ->needs(log);
    verb->add_flag("--quiet", arguments.quiet, "Write errors only");

    verb = addVerb("preview", "Show what a backup would do, and change nothing");
    Positional(*verb, "LIST", words.list, "The backup list (.vwl)")->required();

    verb = addVerb("check", "Compare the items of a list with their copies");
    Positional(*verb, "LIST", words.list, "The backup list (.vwl)")->required();
    verb->add_flag("--content", words.content, "Read and compare the bytes of the files too");

    verb = addVerb("copies", "List the stored copies");
    Positional(*verb, "SOURCE", words.source,
               "A backup list or a folder with copies; the default destination without it");
    Positional(*verb, "ITEM", words.item, "Only the copies of this item, by name or path");

    verb = addVerb("restore", "Put copies into a folder");
    Positional(*verb, "SOURCE", words.source, "The copy, or with --as-of the backup list")
        ->required();
    verb->add_option("--to", words.folder, "The folder that receives what is restored")
        ->check(kNotEmpty)
        ->required();
    verb->add_option("--as-of", words.asOf, "Of each item the newest copy up to this date")
        ->check(kMoment);
    verb->add_flag("--overwrite", words.overwrite,
                   "Replace what is there, after making safety copies of it");

    verb = addVerb("diff", "Compare a copy with another one, or with its original");
    Positional(*verb, "COPY", words.copy, "The copy")->required();
    Positional(*verb, "OTHER", words.other, "Another copy, or a file or folder");
}

void AddScheduleVerb(CLI::App& app, Words& words, Arguments& arguments) {
    CLI::App* const schedule =
        app.add_subcommand("schedule", "Let the system's scheduler run backups");
    schedule->require_subcommand(1);
    const auto addAction = [&](const char* name, const char* about) {
        CLI::App* const action = schedule->add_subcommand(name, about);
        action->add_flag("--json", arguments.json, "Write one JSON object per line");
        return action;
    };
    CLI::App* action = addAction("add", "Make a task that backs up a list, or replace it");
    Positional(*action, "LIST", words.list, "The backup list (.vwl)")->required();
    CLI::Option_group* const when = action->add_option_group("when", "One of");
    when->add_option("--daily", words.daily, "Every day at this time")->check(kClockTime);
    when->add_option("--weekly", words.weekly, "Every week on this day (MON to SUN) at this time")
        ->expected(2)
        ->type_name("DAY HH:MM");
    when->add_flag("--at-logon", words.atLogon, "Whenever you log on");
    when->require_option(1);
    action->add_option("--name", words.name, "The task's name; that of the list without it")
        ->check(kNotEmpty);
    action->add_option("--log", words.log, "Write a log file of each run into this folder")
        ->check(kNotEmpty);
    addAction("list", "Show the tasks that were made here");
    action = addAction("remove", "Remove a task");
    Positional(*action, "NAME", words.name, "The task's name")->required();
}

ScheduleArguments TakeSchedule(const CLI::App& schedule, const Words& words) {
    ScheduleArguments result;
    result.name = FromUtf8(words.name);
    if (schedule.got_subcommand("remove")) result.action = ScheduleAction::Remove;
    if (!schedule.got_subcommand("add")) return result;
    result.action = ScheduleAction::Add;
    result.list = FromUtf8(words.list);
    result.logFolder = FromUtf8(words.log);
    if (words.atLogon) {
        result.kind = ScheduleKind::AtLogon;
        return result;
    }
    std::string time = words.daily;
    if (!words.weekly.empty()) {
        result.kind = ScheduleKind::Weekly;
        time = words.weekly[1];
        const auto day = ReadWeekday(words.weekly[0]);
        if (!day) throw CLI::ValidationError("--weekly", "'" + words.weekly[0] + "' is no day");
        result.weekday = *day;
    }
    const auto at = ReadClockTime(time);
    if (!at) throw CLI::ValidationError("--weekly", "'" + time + "' is no time such as 19:00");
    result.hour = at->hour;
    result.minute = at->minute;
    return result;
}

void Take(const CLI::App& app, const Words& words, Arguments& arguments) {
    const std::wstring list = FromUtf8(words.list);
    if (app.got_subcommand("backup")) {
        arguments.verb = BackupArguments{list, !words.asWindow, FromUtf8(words.log), words.keep};
    } else if (app.got_subcommand("preview")) {
        arguments.verb = PreviewArguments{list};
    } else if (app.got_subcommand("check")) {
        arguments.verb = CheckArguments{list, words.content};
    } else if (app.got_subcommand("copies")) {
        arguments.verb = CopiesArguments{FromUtf8(words.source), FromUtf8(words.item)};
    } else if (app.got_subcommand("restore")) {
        RestoreArguments restore{
            FromUtf8(words.source), {}, FromUtf8(words.folder), words.overwrite};
        if (!words.asOf.empty()) restore.asOf = ReadMoment(words.asOf);
        arguments.verb = restore;
    } else if (app.got_subcommand("diff")) {
        arguments.verb = DiffArguments{FromUtf8(words.copy), FromUtf8(words.other)};
    } else {
        arguments.verb = TakeSchedule(*app.get_subcommand("schedule"), words);
    }
}

}  // namespace

Arguments ReadArguments(const std::vector<std::wstring>& words) {
    Arguments arguments;
    Words texts;
    CLI::App app(kAbout, "vw");
    app.set_version_flag("--version", "vw " VW_VERSION);
    app.set_help_flag("-h,--help", "Show this help");
    app.set_help_all_flag("--help-all", "Show the help of every verb");
    app.footer(kExitCodes);
    app.require_subcommand(1);
    app.get_formatter()->column_width(34);
    AddVerbs(app, texts, arguments);
    AddScheduleVerb(app, texts, arguments);
    try {
        std::vector<std::string> utf8;
        utf8.reserve(words.size());
        for (const std::wstring& word : words) utf8.push_back(ToUtf8(word));
        std::ranges::reverse(utf8);
        app.parse(utf8);
        Take(app, texts, arguments);
    } catch (const CLI::ParseError& error) {
        std::ostringstream out;
        std::ostringstream wrong;
        arguments.isWrong = app.exit(error, out, wrong) != 0;
        arguments.text = FromUtf8(arguments.isWrong ? wrong.str() : out.str());
        while (arguments.text.ends_with(L'\n')) arguments.text.pop_back();
    }
    return arguments;
}

}  // namespace vw
