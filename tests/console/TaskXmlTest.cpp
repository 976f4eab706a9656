// The definition of a task, as text: not every scheduler keeps all of it.

#include "console/TaskXml.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"

// Behind the header above, which they build on.
#include <oleauto.h>

#include <initguid.h>
#include <msxml2.h>

namespace vw::test {
namespace {

const TaskCommand kCommand{L"C:\\Tools & more\\vw.exe", L"backup \"C:\\a <b>.vwl\" --quiet",
                           L"S-1-5-21-1"};

std::wstring XmlOf(const ScheduleArguments& when) {
    return TaskXml(when, kCommand, MakeDate({2024, 5, 31, 10, 0, 0}));
}

bool Has(const std::wstring& xml, std::wstring_view text) {
    return xml.find(text) != std::wstring::npos;
}

/// What the system's own XML reader says is wrong with a text; empty when it is well-formed.
std::wstring Faults(const std::wstring& xml) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    IXMLDOMDocument* document = nullptr;
    CLSID reader{};
    CLSIDFromProgID(L"Msxml2.DOMDocument.3.0", &reader);
    if (FAILED(CoCreateInstance(reader, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                                reinterpret_cast<void**>(&document)))) {
        return L"no reader";
    }
    VARIANT_BOOL isGood = VARIANT_FALSE;
    const BSTR text = SysAllocString(xml.c_str());
    document->loadXML(text, &isGood);
    SysFreeString(text);
    document->Release();
    return isGood == VARIANT_TRUE ? L"" : L"it is not well-formed";
}

TEST(TaskXml, DailyTask_StartsEveryDayAtItsTime) {
    const std::wstring xml = XmlOf({.kind = ScheduleKind::Daily, .hour = 7, .minute = 5});
    EXPECT_EQ(Faults(xml), L"");
    EXPECT_TRUE(Has(xml, L"<StartBoundary>2024-05-31T07:05:00</StartBoundary>"));
    EXPECT_TRUE(Has(xml, L"<DaysInterval>1</DaysInterval>"));
    EXPECT_FALSE(Has(xml, L"LogonTrigger"));
}

TEST(TaskXml, WeeklyTask_StartsOnItsDay) {
    const std::wstring xml = XmlOf({.kind = ScheduleKind::Weekly, .hour = 19, .weekday = 1});
    EXPECT_EQ(Faults(xml), L"");
    EXPECT_TRUE(Has(xml, L"<Monday />"));
    EXPECT_TRUE(Has(xml, L"<WeeksInterval>1</WeeksInterval>"));
}

TEST(TaskXml, LogonTask_StartsForItsUserAlone) {
    const std::wstring xml = XmlOf({.kind = ScheduleKind::AtLogon});
    EXPECT_EQ(Faults(xml), L"");
    EXPECT_TRUE(Has(xml, L"<LogonTrigger>"));
    EXPECT_TRUE(Has(xml, L"<UserId>S-1-5-21-1</UserId>\r\n    </LogonTrigger>"));
    EXPECT_FALSE(Has(xml, L"CalendarTrigger"));
}

TEST(TaskXml, CommandAndArguments_AreReadBack) {
    const std::wstring xml = XmlOf({});
    EXPECT_EQ(ElementText(xml, L"Command"), kCommand.program);
    EXPECT_EQ(ElementText(xml, L"Arguments"), kCommand.arguments);
    EXPECT_EQ(ElementText(xml, L"Nothing"), L"");
    EXPECT_TRUE(Has(xml, L"<LogonType>InteractiveToken</LogonType>"));
    EXPECT_TRUE(Has(xml, L"<RunLevel>LeastPrivilege</RunLevel>"));
}

TEST(TaskXml, FaultyText_IsNotWellFormed) { EXPECT_NE(Faults(L"<Task><a></Task>"), L""); }

}  // namespace
}  // namespace vw::test
