#include <gtest/gtest.h>

#include <vector>

#include "tests/ui/FormFixture.h"

// A program that runs for weeks opens its forms many times.

namespace vw {
namespace {

using test::RecordedEvents;

void OpenAndClose(const FormData& data, Language language, int times) {
    RecordedEvents events;
    Form form(data, language, events);
    for (int i = 0; i < times; ++i) {
        form.Load();
        if (data.kind != FormKind::Hidden) {
            form.Show(ShowHow::KeepFocus);
            UpdateWindow(form.Handle());
        }
        if (data.name == L"frmMain") {
            form.List(L"lsvBackupList").Add(L"Budget", RowIcon::File);
            form.Menus().Show(L"mnuRecentFile", true, 1);
        }
        if (data.name == L"frmBusyDialog") {
            form.SetText(L"lblMsg", L"C:\\a.txt");
            form.Append(L"txtReport", L"C:\\a.txt\r\n");
            form.ShowControl(L"txtReport", true);
        }
        if (data.name == L"frmTrayIcon") {
            for (int frame = 0; frame < 4; ++frame) form.SetIcon(L"Image1", frame);
        }
        form.Unload();
    }
    EXPECT_EQ(events.loads, times);
    EXPECT_EQ(events.unloads, times);
}

// How many objects can still be made.
template <class Make, class Destroy>
std::size_t CountFree(Make make, Destroy destroy) {
    std::vector<decltype(make())> made;
    for (auto object = make(); object != nullptr && made.size() < 70000; object = make()) {
        made.push_back(object);
    }
    for (const auto object : made) destroy(object);
    return made.size();
}

// Counts by making: what is lost is missing in the table that the numbers of new objects come from.
// Brushes represent all that is drawn with; tables of keys all that belongs to windows, since
// nothing is made faster. GetGuiResources alone counts nothing on some systems.
struct Counts {
    DWORD gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    DWORD kernel = 0;
    std::size_t brushes = CountFree([] { return CreateSolidBrush(RGB(1, 2, 3)); }, DeleteObject);
    std::size_t keyTables = CountFree(
        [] {
            ACCEL key{FVIRTKEY, VK_F1, 1};
            return CreateAcceleratorTableW(&key, 1);
        },
        DestroyAcceleratorTable);

    Counts() { GetProcessHandleCount(GetCurrentProcess(), &kernel); }
};

// All forms share one count, because it fills whole tables of the system.
TEST(FormHandles, EachOpenedTwentyTimes_LeaksNothing) {
    const auto openAll = [](int times) {
        for (const FormData* form : test::AllForms()) {
            for (const Language language : test::kLanguages) OpenAndClose(*form, language, times);
        }
    };
    // What is made once and kept: classes, themes, fonts of the system.
    openAll(3);
    const Counts before;
    openAll(20);
    const Counts after;
    EXPECT_EQ(after.gdi, before.gdi);
    EXPECT_EQ(after.user, before.user);
    EXPECT_EQ(after.kernel, before.kernel);
    EXPECT_EQ(after.brushes, before.brushes);
    EXPECT_EQ(after.keyTables, before.keyTables);
}

}  // namespace
}  // namespace vw
