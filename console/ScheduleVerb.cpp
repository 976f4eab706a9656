#include <vector>

#include "console/Console.h"
#include "console/ConsoleList.h"
#include "console/JsonLine.h"
#include "console/TaskNames.h"
#include "console/TaskScheduler.h"
#include "console/TaskXml.h"
#include "console/Verbs.h"
#include "fsutil/PathText.h"
#include "platform/Handle.h"
#include "platform/LocalTime.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"

// Behind the headers above, which it builds on.
#include <sddl.h>

namespace vw {
namespace {

// What the scheduler takes in no name of a task.
constexpr std::wstring_view kForbidden = L"\\/:*?\"<>|";

std::wstring OwnPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::wstring OwnUser() {
    HANDLE opened = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) RaiseLast({});
    const KernelHandle token(opened);
    DWORD size = 0;
    GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size);
    std::vector<std::byte> bytes(size);
    if (GetTokenInformation(token.Get(), TokenUser, bytes.data(), size, &size) == 0) RaiseLast({});
    LPWSTR text = nullptr;
    const auto* const user = reinterpret_cast<const TOKEN_USER*>(bytes.data());
    if (ConvertSidToStringSidW(user->User.Sid, &text) == 0) RaiseLast({});
    std::wstring sid = text;
    LocalFree(text);
    return sid;
}

// Nothing that the scheduler starts has a terminal, so only errors are written.
std::wstring CommandArguments(const std::wstring& list, const std::wstring& logFolder) {
    std::wstring arguments = L"backup \"" + list + L"\" --quiet";
    if (!logFolder.empty()) arguments += L" --log \"" + logFolder + L"\" --keep 30";
    return arguments;
}

void Show(Console& console, const std::wstring& name, const std::wstring& definition) {
    const std::wstring description = ElementText(definition, L"Description");
    console.output.Line(name + L": " + description);
    console.output.Json(JsonLine("task").Text("name", name).Text("description", description));
}

int Add(Console& console, const ScheduleArguments& arguments) {
    const ConsoleList list = ReadConsoleList(console, arguments.list);
    ScheduleArguments task = arguments;
    task.list = list.path;
    std::wstring name = task.name.empty() ? MFileDosShell::CFileFirstName(list.path) : task.name;
    if (name.find_first_of(kForbidden) != name.npos) {
        ThrowWith(error_number::kBadName, L"This is no name for a task", name);
    }
    const std::wstring log = task.logFolder.empty() ? L"" : console.FullPath(task.logFolder);
    TaskScheduler scheduler;
    const std::wstring kept = scheduler.Register(
        name, TaskXml(task, {OwnPath(), CommandArguments(list.path, log), OwnUser()}, LocalNow()));
    TaskNames::Add(name);
    Show(console, name, kept);
    console.output.Line(
        L"It starts on battery too, makes up a missed start, never runs twice at once and ends "
        L"after 12 hours.");
    return 0;
}

}  // namespace

int Schedule(Console& console, const ScheduleArguments& arguments) {
    if (arguments.action == ScheduleAction::Add) return Add(console, arguments);
    TaskScheduler scheduler;
    if (arguments.action == ScheduleAction::Remove) {
        scheduler.Remove(arguments.name);
        TaskNames::Remove(arguments.name);
        console.output.Line(L"removed: " + arguments.name);
        console.output.Json(JsonLine("removed").Text("name", arguments.name));
        return 0;
    }
    // Who removed a task with the system's own tool has removed it.
    for (const std::wstring& name : TaskNames::All()) {
        if (const auto definition = scheduler.Definition(name)) Show(console, name, *definition);
    }
    return 0;
}

}  // namespace vw
