#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "tests/ui/FormFixture.h"
#include "ui/ControlFactory.h"
#include "ui/Painting.h"

// Nothing is cut off and nothing lies on anything else, in both languages, at the sizes and on the
// screens that people use. Texts are measured in the fonts that the controls really have.

namespace vw {
namespace {

using test::GiveDpi;
using test::GiveInnerSize;
using test::LoadedForm;
using test::Narrow;
using test::PlaceOf;

struct Screen {
    const char* name;
    int dpi;
    int width;  ///< of the screen, in pixels; 0: the form's own size
    int height;
};

// The task bar and the title take some 60 pixels of the height.
const Screen kScreens[]{
    {"own size", 96, 0, 0},
    {"own size at 125 %", 120, 0, 0},
    {"own size at 150 %", 144, 0, 0},
    {"own size at 200 %", 192, 0, 0},
    {"1024 x 720", 96, 1024, 660},
    {"1280 x 960", 96, 1280, 900},
    {"1280 x 960 at 150 %", 144, 1270, 860},
};

class FormFit : public testing::TestWithParam<Language> {
  protected:
    // Puts the form on a screen; false when it does not fit there by design.
    static void Put(LoadedForm& loaded, const Screen& screen) {
        GiveDpi(loaded.form, screen.dpi);
        const FormData& data = loaded.form.Data();
        Size inner = Scaled(data.design, screen.dpi);
        for (const ControlData& control : data.controls) {
            if (control.opens != 0 && loaded.form.IsShown(control.name)) {
                inner.height += Scaled(control.opens, screen.dpi);
            }
        }
        if (screen.width != 0 && data.kind == FormKind::Main) {
            inner = {std::max(inner.width, screen.width), std::max(inner.height, screen.height)};
        }
        GiveInnerSize(loaded.form, inner.width, inner.height);
    }

    static std::vector<const ControlData*> Shown(const LoadedForm& loaded) {
        std::vector<const ControlData*> shown;
        for (const ControlData& data : loaded.form.Data().controls) {
            if (HasWindow(data.kind) && loaded.form.IsShown(data.name)) shown.push_back(&data);
        }
        return shown;
    }

    void ExpectApart(const LoadedForm& loaded, const Screen& screen) {
        RECT client{};
        GetClientRect(loaded.Handle(), &client);
        const auto shown = Shown(loaded);
        for (std::size_t i = 0; i < shown.size(); ++i) {
            const RECT place = PlaceOf(loaded.form, loaded.Control(shown[i]->name));
            EXPECT_GT(place.right, place.left) << Narrow(shown[i]->name) << ", " << screen.name;
            EXPECT_GT(place.bottom, place.top) << Narrow(shown[i]->name) << ", " << screen.name;
            RECT inside{};
            IntersectRect(&inside, &place, &client);
            EXPECT_TRUE(EqualRect(&inside, &place))
                << Narrow(shown[i]->name) << " leaves the form, " << screen.name;
            for (std::size_t j = i + 1; j < shown.size(); ++j) {
                const RECT other = PlaceOf(loaded.form, loaded.Control(shown[j]->name));
                RECT common{};
                EXPECT_FALSE(IntersectRect(&common, &place, &other))
                    << Narrow(shown[i]->name) << " lies on " << Narrow(shown[j]->name) << ", "
                    << screen.name;
            }
        }
    }

    void ExpectTextsFit(const LoadedForm& loaded, const Screen& screen) {
        for (const ControlData* data : Shown(loaded)) {
            const std::wstring text = loaded.form.Text(data->name);
            const bool button =
                data->kind == ControlKind::Button || data->kind == ControlKind::CheckBox;
            if (text.empty() || !(button || IsLabel(data->kind))) continue;
            const HWND control = loaded.Control(data->name);
            RECT area{};
            GetClientRect(control, &area);
            // The box of a check box, the frame of a button.
            const int beside = data->kind == ControlKind::CheckBox ? Scaled(20, loaded.form.Dpi())
                               : button                            ? Scaled(12, loaded.form.Dpi())
                                                                   : 0;
            const HDC dc = GetDC(control);
            const HGDIOBJ before = SelectObject(
                dc, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
            const Measure widthOf = MeasureIn(dc);
            const int room = static_cast<int>(area.right) - beside;
            std::vector<std::wstring> lines{text};
            if (!button && !data->oneLine && !data->path) lines = Wrapped(text, room, widthOf);
            for (const std::wstring& line : lines) {
                // A path is shortened to the width.
                EXPECT_LE(data->path ? 0 : widthOf(line), room)
                    << Narrow(data->name) << " is too narrow, " << screen.name;
            }
            LOGFONTW font{};
            GetObjectW(GetCurrentObject(dc, OBJ_FONT), sizeof font, &font);
            // The Traditional Arabic of Windows, which Wine lacks, has far taller lines than the
            // face that represents it here.
            constexpr double kTallLine = 1.6;  // at least, in the height of its letters
            const bool isTall = data->font.In(GetParam()).face == L"Traditional Arabic";
            const int least = static_cast<int>(std::ceil(-font.lfHeight * kTallLine));
            const int height = std::max(LineHeight(dc), isTall ? least : 0);
            const int needed = height + static_cast<int>(lines.size() - 1) * LineStep(height);
            EXPECT_LE(needed, static_cast<int>(area.bottom))
                << Narrow(data->name) << " is too low, " << screen.name;
            SelectObject(dc, before);
            ReleaseDC(control, dc);
        }
    }

    void ExpectGood(LoadedForm& loaded) {
        for (const Screen& screen : kScreens) {
            Put(loaded, screen);
            ExpectApart(loaded, screen);
            ExpectTextsFit(loaded, screen);
        }
    }
};

TEST_P(FormFit, MainWindow_TextsFit) {
    LoadedForm main(MainForm(), GetParam());
    main.form.SetText(L"lblBackages", L"20");
    ExpectGood(main);
}

TEST_P(FormFit, Toolbar_HasRoomForAllItsButtons) {
    LoadedForm main(MainForm(), GetParam());
    for (const Screen& screen : kScreens) {
        Put(main, screen);
        const HWND bar = main.Control(L"Toolbar1");
        RECT area{};
        GetClientRect(bar, &area);
        const auto count = static_cast<int>(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0));
        RECT last{};
        SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(count - 1),
                     reinterpret_cast<LPARAM>(&last));
        EXPECT_LE(last.right, area.right) << screen.name;
        EXPECT_LE(last.bottom, area.bottom) << screen.name;
    }
}

// Also on a small screen whose owner needs large letters.
TEST_P(FormFit, MinimumSize_IsAtMostTheScreen) {
    LoadedForm main(MainForm(), GetParam());
    GiveDpi(main.form, 384);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(main.form.Handle(), MONITOR_DEFAULTTOPRIMARY), &monitor);
    MINMAXINFO limits{};
    SendMessageW(main.form.Handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_EQ(limits.ptMinTrackSize.x, monitor.rcWork.right - monitor.rcWork.left);
    EXPECT_EQ(limits.ptMinTrackSize.y, monitor.rcWork.bottom - monitor.rcWork.top);
}

TEST_P(FormFit, LowerScreen_ListsShrinkAndStayInside) {
    LoadedForm main(MainForm(), GetParam());
    const Size design = MainForm().design;
    GiveInnerSize(main.form, design.width, design.height - 120);
    RECT inner{};
    GetClientRect(main.form.Handle(), &inner);
    for (const auto* list : {L"lsvBackupList", L"lsvRestore1", L"lsvRestore2"}) {
        const RECT place = PlaceOf(main.form, main.Control(list));
        EXPECT_LE(place.bottom, inner.bottom) << Narrow(list);
        EXPECT_GE(place.bottom - place.top, 80) << Narrow(list);
    }
}

TEST_P(FormFit, DriveBox_HasRoomForItsLetters) {
    LoadedForm main(MainForm(), GetParam());
    main.form.SetChoices(L"cmbDestination", {L"C:"});
    for (const int dpi : {96, 192}) {
        GiveDpi(main.form, dpi);
        const HWND drives = main.Control(L"cmbDestination");
        const HDC screen = GetDC(drives);
        SelectObject(screen, reinterpret_cast<HFONT>(SendMessageW(drives, WM_GETFONT, 0, 0)));
        TEXTMETRICW letters{};
        GetTextMetricsW(screen, &letters);
        ReleaseDC(drives, screen);
        EXPECT_GE(SendMessageW(drives, CB_GETITEMHEIGHT, 0, 0), letters.tmHeight) << dpi;
    }
}

TEST_P(FormFit, BusyDialog_WithAndWithoutItsReport_TextsFit) {
    LoadedForm busy(BusyForm(), GetParam());
    for (const auto* label : {L"lblTitle", L"lblMsg", L"lblSubMsg"}) busy.form.SetText(label, L"x");
    ExpectGood(busy);
    busy.form.ShowControl(L"txtReport", true);
    ExpectGood(busy);
}

TEST_P(FormFit, AboutBox_WithAndWithoutItsButton_TextsFit) {
    LoadedForm about(AboutForm(), GetParam());
    about.form.SetText(L"lblVer", L"1.2");
    about.form.SetText(L"lblRevision", L"133");
    ExpectGood(about);
    about.form.ShowControl(L"cmdClose", true);
    ExpectGood(about);
}

TEST_P(FormFit, Lists_HaveHalfOfTheWidthEach) {
    LoadedForm main(MainForm(), GetParam());
    for (const Screen& screen : kScreens) {
        Put(main, screen);
        const RECT items = PlaceOf(main.form, main.Control(L"lsvBackupList"));
        const RECT vault = PlaceOf(main.form, main.Control(L"lsvRestore1"));
        const RECT copies = PlaceOf(main.form, main.Control(L"lsvRestore2"));
        EXPECT_NEAR(items.right - items.left, vault.right - vault.left, 1) << screen.name;
        EXPECT_EQ(vault.left, copies.left) << screen.name;
        EXPECT_EQ(vault.right, copies.right) << screen.name;
        EXPECT_EQ(items.bottom, copies.bottom) << screen.name;
        const bool listFirst = items.left < vault.left;
        EXPECT_EQ(listFirst, GetParam() == Language::English) << screen.name;
    }
}

INSTANTIATE_TEST_SUITE_P(, FormFit, testing::ValuesIn(test::kLanguages), test::NameOfLanguage);

TEST(FormDesign, FitsOnSmallAndEnlargedScreens) {
    const Size design = MainForm().design;
    EXPECT_LE(design.width, 1024 - 16);
    EXPECT_LE(design.height, 720 - 90);
    EXPECT_LE(Scaled(design.width, 144), 1280);
    EXPECT_LE(Scaled(design.height, 144), 960 - 110);
    EXPECT_LE(AboutForm().design.width, 480);
}

TEST(FormMirror, ArabicControls_AreMirrorImagesOfTheEnglishOnes) {
    for (const FormData* data : test::AllForms()) {
        if (data->kind == FormKind::Hidden) continue;
        LoadedForm english(*data, Language::English);
        LoadedForm arabic(*data, Language::Arabic);
        for (const int dpi : {96, 144}) {
            for (LoadedForm* loaded : {&english, &arabic}) {
                GiveDpi(loaded->form, dpi);
                const Size inner = Scaled(data->design, dpi);
                GiveInnerSize(loaded->form, inner.width + 101, inner.height + 51);
            }
            RECT client{};
            GetClientRect(english.Handle(), &client);
            for (const ControlData& control : data->controls) {
                if (!HasWindow(control.kind)) continue;
                const RECT left = PlaceOf(english.form, english.Control(control.name));
                const RECT right = PlaceOf(arabic.form, arabic.Control(control.name));
                EXPECT_EQ(right.left, client.right - left.right) << Narrow(control.name);
                EXPECT_EQ(right.right, client.right - left.left) << Narrow(control.name);
                EXPECT_EQ(right.top, left.top) << Narrow(control.name);
                EXPECT_EQ(right.bottom, left.bottom) << Narrow(control.name);
            }
        }
    }
}

TEST(FormMirror, ArabicForm_IsMirroredExceptForTheReport) {
    for (const FormData* data : test::AllForms()) {
        LoadedForm arabic(*data, Language::Arabic);
        EXPECT_NE(GetWindowLongW(arabic.Handle(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL, 0);
        for (const ControlData& control : data->controls) {
            const HWND window = arabic.Control(control.name);
            if (window == nullptr) continue;
            const bool mirrored = (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
            EXPECT_EQ(mirrored, control.kind != ControlKind::Report) << Narrow(control.name);
        }
    }
}

}  // namespace
}  // namespace vw
