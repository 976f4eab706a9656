#include "console/TaskXml.h"

#include <array>
#include <cstdio>
#include <iterator>

#include "platform/DateText.h"

namespace vw {
namespace {

constexpr std::array<std::wstring_view, 7> kDays{L"Sunday",   L"Monday", L"Tuesday", L"Wednesday",
                                                 L"Thursday", L"Friday", L"Saturday"};

struct Special {
    wchar_t character;
    std::wstring_view reference;
};
constexpr std::array kSpecials{Special{L'&', L"&amp;"}, Special{L'<', L"&lt;"},
                               Special{L'>', L"&gt;"}, Special{L'"', L"&quot;"},
                               Special{L'\'', L"&apos;"}};

std::wstring Escaped(std::wstring_view text) {
    std::wstring escaped;
    for (const wchar_t unit : text) {
        std::wstring_view written(&unit, 1);
        for (const Special& special : kSpecials) {
            if (special.character == unit) written = special.reference;
        }
        escaped.append(written);
    }
    return escaped;
}

std::wstring Unescaped(std::wstring_view text) {
    std::wstring plain;
    for (std::size_t at = 0; at < text.size();) {
        const Special* found = nullptr;
        for (const Special& special : kSpecials) {
            if (text.substr(at).starts_with(special.reference)) found = &special;
        }
        plain += found != nullptr ? found->character : text[at];
        at += found != nullptr ? found->reference.size() : 1;
    }
    return plain;
}

std::wstring TimeText(int hour, int minute) {
    std::array<wchar_t, 16> text{};
    std::swprintf(text.data(), text.size(), L"%02d:%02d", hour, minute);
    return text.data();
}

std::wstring Trigger(const ScheduleArguments& when, const TaskCommand& command, Date today) {
    if (when.kind == ScheduleKind::AtLogon) {
        return L"    <LogonTrigger>\r\n      <Enabled>true</Enabled>\r\n      <UserId>" +
               Escaped(command.user) + L"</UserId>\r\n    </LogonTrigger>\r\n";
    }
    const std::wstring day = PlainDateText(today).substr(0, std::size(L"2024-05-31") - 1);
    std::wstring rhythm =
        L"      <ScheduleByDay>\r\n        <DaysInterval>1</DaysInterval>\r\n"
        L"      </ScheduleByDay>\r\n";
    if (when.kind == ScheduleKind::Weekly) {
        rhythm = L"      <ScheduleByWeek>\r\n        <DaysOfWeek>\r\n          <" +
                 std::wstring(kDays.at(static_cast<std::size_t>(when.weekday))) +
                 L" />\r\n        </DaysOfWeek>\r\n        <WeeksInterval>1</WeeksInterval>\r\n"
                 L"      </ScheduleByWeek>\r\n";
    }
    return L"    <CalendarTrigger>\r\n      <StartBoundary>" + day + L"T" +
           TimeText(when.hour, when.minute) +
           L":00</StartBoundary>\r\n      <Enabled>true</Enabled>\r\n" + rhythm +
           L"    </CalendarTrigger>\r\n";
}

}  // namespace

std::wstring TaskXml(const ScheduleArguments& when, const TaskCommand& command, Date today) {
    return L"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n"
           L"<Task version=\"1.2\" "
           L"xmlns=\"http://schemas.microsoft.com/windows/2004/02/mit/task\">\r\n"
           L"  <RegistrationInfo>\r\n    <Author>Vaultwright</Author>\r\n    <Description>" +
           Escaped(ScheduleWords(when) + L", \"" + command.program + L"\" " + command.arguments) +
           L"</Description>\r\n  </RegistrationInfo>\r\n  <Triggers>\r\n" +
           Trigger(when, command, today) +
           L"  </Triggers>\r\n  <Principals>\r\n    <Principal id=\"Author\">\r\n      <UserId>" +
           Escaped(command.user) +
           L"</UserId>\r\n      <LogonType>InteractiveToken</LogonType>\r\n"
           L"      <RunLevel>LeastPrivilege</RunLevel>\r\n    </Principal>\r\n  </Principals>\r\n"
           L"  <Settings>\r\n"
           L"    <MultipleInstancesPolicy>IgnoreNew</MultipleInstancesPolicy>\r\n"
           L"    <DisallowStartIfOnBatteries>false</DisallowStartIfOnBatteries>\r\n"
           L"    <StopIfGoingOnBatteries>false</StopIfGoingOnBatteries>\r\n"
           L"    <StartWhenAvailable>true</StartWhenAvailable>\r\n"
           L"    <Enabled>true</Enabled>\r\n"
           L"    <ExecutionTimeLimit>PT12H</ExecutionTimeLimit>\r\n"
           L"  </Settings>\r\n  <Actions Context=\"Author\">\r\n    <Exec>\r\n      <Command>" +
           Escaped(command.program) + L"</Command>\r\n      <Arguments>" +
           Escaped(command.arguments) +
           L"</Arguments>\r\n    </Exec>\r\n  </Actions>\r\n</Task>\r\n";
}

std::wstring ScheduleWords(const ScheduleArguments& when) {
    if (when.kind == ScheduleKind::AtLogon) return L"at log-on";
    const std::wstring time = L" at " + TimeText(when.hour, when.minute);
    if (when.kind == ScheduleKind::Daily) return L"daily" + time;
    return L"every " + std::wstring(kDays.at(static_cast<std::size_t>(when.weekday))) + time;
}

std::wstring ElementText(std::wstring_view xml, std::wstring_view name) {
    const std::wstring begin = L"<" + std::wstring(name) + L">";
    const std::size_t start = xml.find(begin);
    if (start == xml.npos) return {};
    const std::wstring_view rest = xml.substr(start + begin.size());
    return Unescaped(rest.substr(0, rest.find(L'<')));
}

}  // namespace vw
