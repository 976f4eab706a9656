#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "tests/ui/FormFixture.h"

// A program that runs for weeks opens its forms many times.

namespace vw {
namespace {

using test::RecordedEvents;

struct Counts {
    DWORD gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    DWORD kernel = 0;

    Counts() { GetProcessHandleCount(GetCurrentProcess(), &kernel); }
};

// Counts by making: the numbers of new objects come from one table, so a table that fills up shows
// in the number of a fresh one. GetGuiResources alone counts nothing on some systems.
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
        if (data.name == L"frmBusyDialog") form.ShowControl(L"txtReport", true);
        form.Unload();
    }
    EXPECT_EQ(events.loads, times);
    EXPECT_EQ(events.unloads, times);
}

// How many objects can still be made: what is lost is missing here. Tables of keys represent all
// that belongs to windows, since nothing is made faster; brushes for all that is drawn with.
int FreeKeyTables() {
    std::vector<HACCEL> made;
    ACCEL key{FVIRTKEY, VK_F1, 1};
    for (;;) {
        const HACCEL keys = CreateAcceleratorTableW(&key, 1);
        if (keys == nullptr || made.size() == 70000) break;
        made.push_back(keys);
    }
    for (const HACCEL keys : made) DestroyAcceleratorTable(keys);
    return static_cast<int>(made.size());
}

int FreeBrushes() {
    std::vector<HBRUSH> made;
    for (;;) {
        const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
        if (brush == nullptr || made.size() == 70000) break;
        made.push_back(brush);
    }
    for (const HBRUSH brush : made) DeleteObject(brush);
    return static_cast<int>(made.size());
}

class FormHandles : public testing::TestWithParam<std::tuple<const FormData*, Language>> {};

TEST_P(FormHandles, OpenedTwentyTimes_LeaksNothing) {
    const auto& [form, language] = GetParam();
    // What is made once and kept: classes, themes, fonts of the system.
    OpenAndClose(*form, language, 3);
    const Counts before;
    const int brushesBefore = FreeBrushes();
    const int keyTablesBefore = FreeKeyTables();
    OpenAndClose(*form, language, 20);
    const Counts after;
    EXPECT_EQ(after.gdi, before.gdi);
    EXPECT_EQ(after.user, before.user);
    EXPECT_EQ(after.kernel, before.kernel);
    EXPECT_EQ(FreeBrushes(), brushesBefore);
    EXPECT_EQ(FreeKeyTables(), keyTablesBefore);
}

std::string NameOf(const testing::TestParamInfo<FormHandles::ParamType>& variant) {
    const auto& [form, language] = variant.param;
    return test::Narrow(language == Language::Arabic ? form->className.arabic
                                                     : form->className.english);
}

INSTANTIATE_TEST_SUITE_P(, FormHandles,
                         testing::Combine(testing::ValuesIn(test::AllForms()),
                                          testing::ValuesIn(test::kLanguages)),
                         NameOf);

}  // namespace
}  // namespace vw
