// Shots.exe en|ar: works the program through its windows on a realistic sample and says when each
// of them is to be photographed: "name left top width height" on standard output, then it waits for
// a line on standard input. scripts/shots does the rest.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "platform/TextDirection.h"
#include "platform/Utf8.h"
#include "tests/windows/DrivenProgram.h"
#include "ui/resource.h"

// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw::test {
namespace {

class Studio {
  public:
    explicit Studio(bool arabic) : arabic_(arabic) {
        MakeSample();
        program_.SetSetting(L"Arabic", arabic ? L"-1" : L"0");
        program_.SetSetting(L"ArabicPrepared", L"-1");
    }

    void Work() {
        OpeningScreen();
        DrivenProgram window(program_.With(L""));
        GiveSize(window.Main());
        Photograph("main-first", window.Main());
        BackUpTwice(window);
        SelectCopies(window);
        Photograph("main", window.Main());
        Busy(window);
        About(window);
        Question(window);
        if (arabic_) Overwrite(window);
        Errors(window);
        Warnings(window);
        window.Close();
    }

  private:
    std::wstring Documents(std::wstring_view name) const {
        return L"C:\\Users\\Mona\\Documents\\" + std::wstring(name);
    }

    void MakeSample() {
        const TempTree& tree = program_.tree;
        tree.Remove(L"C:\\Users\\Mona");
        tree.Remove(L"C:\\العمل");
        tree.Remove(drive_.Backup());
        const struct {
            std::wstring path;
            std::size_t size;
            DateParts date;
        } files[]{
            {Documents(L"Budget.xlsx"), 48213, {2026, 10, 2, 18, 41, 7}},
            {Documents(L"Address book.csv"), 6120, {2026, 7, 1, 8, 0, 12}},
            {Documents(L"Diary 2026.docx"), 131500, {2026, 11, 19, 22, 5, 31}},
            {Documents(L"Passport scan.pdf"), 918020, {2025, 3, 14, 10, 20, 0}},
            {Documents(L"رسالة إلى العائلة.docx"), 31744, {2026, 10, 11, 21, 5, 44}},
            {Documents(L"Letters\\Landlord.docx"), 24010, {2026, 9, 28, 9, 12, 30}},
            {Documents(L"Letters\\School.docx"), 19880, {2026, 9, 2, 16, 45, 3}},
            {Documents(L"Recipes\\Bread.txt"), 2210, {2026, 5, 9, 11, 11, 0}},
            {Documents(L"Recipes\\كبسة.txt"), 3120, {2026, 6, 1, 19, 30, 0}},
            {Documents(L"Taxes\\2024.pdf"), 210400, {2025, 4, 3, 12, 0, 0}},
            {Documents(L"Taxes\\2025.pdf"), 232112, {2026, 4, 2, 12, 0, 0}},
            {L"C:\\Users\\Mona\\Pictures\\Coast\\IMG_0001.jpg", 1801220, {2026, 8, 19, 12, 30, 9}},
            {L"C:\\Users\\Mona\\Pictures\\Coast\\IMG_0002.jpg", 1730118, {2026, 8, 19, 12, 31, 40}},
            {L"C:\\Users\\Mona\\Pictures\\صور الرحلة\\غروب.jpg", 1420000, {2026, 8, 20, 19, 2, 0}},
            {L"C:\\Users\\Mona\\Music\\Lesson 4.mp3", 2200300, {2026, 2, 17, 17, 0, 0}},
            {L"C:\\العمل\\الحسابات\\حسابات ٢٠٢٦.xlsx", 212400, {2026, 11, 3, 16, 22, 50}},
            {L"C:\\العمل\\عقود\\عقد الإيجار.pdf", 145000, {2026, 1, 12, 9, 40, 0}},
            {L"C:\\العمل\\عقود\\ملحق.pdf", 45000, {2026, 1, 13, 9, 40, 0}},
            {L"C:\\Users\\Mona\\Projects\\Garden\\plan.md", 8800, {2026, 11, 14, 17, 58, 21}},
            {L"C:\\Users\\Mona\\Projects\\Garden\\plants.csv", 1420, {2026, 11, 12, 7, 3, 0}},
        };
        for (const auto& file : files) tree.File(file.path, std::string(file.size, 'v'), file.date);
        for (int i = 0; i < 1500; ++i) {
            tree.File(L"C:\\Users\\Mona\\Mail\\Inbox\\message " + std::to_wstring(i) + L".eml",
                      std::string(12000, 'm'), {2026, 11, 1 + i % 20, i % 24, i % 60, 0});
        }
        program_.List(
            L"Program\\FilesList.vwl",
            {L"BackupTo: " + drive_.Backup(), L"Backages: 5", Documents(L"Budget.xlsx"),
             Documents(L"Address book.csv"), Documents(L"Diary 2026.docx"),
             Documents(L"Passport scan.pdf"), Documents(L"رسالة إلى العائلة.docx"),
             Documents(L"Letters\\"), Documents(L"Recipes\\"), Documents(L"Taxes\\*"),
             L"C:\\Users\\Mona\\Pictures\\Coast\\", L"C:\\Users\\Mona\\Pictures\\صور الرحلة\\",
             L"C:\\Users\\Mona\\Music\\*", L"C:\\العمل\\الحسابات\\حسابات ٢٠٢٦.xlsx",
             L"C:\\العمل\\عقود\\عقد الإيجار.pdf", L"C:\\Users\\Mona\\Projects\\Garden\\",
             L"C:\\Users\\Mona\\Projects\\Garden\\plan.md", L"C:\\Users\\Mona\\Mail\\",
             L"C:\\العمل\\عقود\\"});
    }

    // The screen is too quickly gone to be caught; a list that is missing keeps it open.
    void OpeningScreen() {
        ProgramRun run(program_.With(L"C:\\no such list.vwl"));
        const HWND about = run.WaitForVisibleWindow(L"frmAbout");
        const Box box = run.WaitForBox();
        run.Answer(box);
        Sleep(300);
        Photograph("opening", about);
    }

    void BackUpTwice(DrivenProgram& window) {
        for (int day = 20; day <= 21; ++day) {
            BackUp(window);
            program_.tree.File(Documents(L"Budget.xlsx"),
                               std::string(48000 + static_cast<std::size_t>(day), 'v'),
                               {2026, 11, day - 1, 18, 30, 0});
            program_.tree.SetDate(Documents(L"Letters\\School.docx"), {2026, 11, day, 8, 15, 0});
        }
        BackUp(window);
    }

    void BackUp(DrivenProgram& window) {
        window.Begin(ID_mnuBackup);
        window.WaitForBusyDialog();
        window.WaitUntilBusyDialogIsGone();
        window.WaitUntilReady();
    }

    // The list of copies follows the selection a little later: each item is awaited by its copies.
    void SelectCopies(DrivenProgram& window) {
        const DrivenList copies = window.List(ID_lsvRestore2);
        window.List(ID_lsvBackupList).Select(1);
        window.WaitUntil([&] { return copies.Count() == 1; }, "no copy of the address book");
        window.List(ID_lsvBackupList).Select(0);
        window.WaitUntil([&] { return copies.Count() == 3; }, "no copies of the budget");
        window.WaitUntilReady();
    }

    void Busy(DrivenProgram& window) {
        program_.tree.File(L"C:\\Users\\Mona\\Mail\\Inbox\\new.eml", "new");
        program_.tree.SetDate(L"C:\\العمل\\عقود\\ملحق.pdf", {2026, 11, 20, 9, 40, 0});
        // The report has a line in the language of the windows.
        EXPECT_TRUE(
            program_.tree.Link(L"C:\\العمل\\عقود\\عقود قديمة", L"C:\\Users\\Mona\\Pictures"));
        window.Begin(ID_mnuBackup);
        const HWND busy = window.WaitForBusyDialog();
        ShowAsWindowsDoes(busy);
        SendMessageW(FindControl(busy, ID_chkDontHide), BM_CLICK, 0, 0);
        Sleep(350);
        Photograph("busy", busy);
        const HWND report = FindControl(busy, ID_txtReport);
        window.WaitUntil([&] { return WindowText(report).ends_with(L"Done:  - \r\n"); }, "no end");
        Sleep(2500);
        // The edit control of Wine shows the last line, Arabic words around a Latin name and
        // numbers, in another order than Windows does.
        if (arabic_) SendMessageW(report, EM_LINESCROLL, 0, -5);
        Photograph("busy-report", busy);
        PostMessageW(busy, WM_CLOSE, 0, 0);
        window.WaitUntilReady();
    }

    void About(DrivenProgram& window) {
        window.Begin(ID_mnuHelpAbout);
        const HWND about = window.Run().WaitForVisibleWindow(L"frmAbout");
        Sleep(300);
        Photograph("about", about);
        PostMessageW(about, WM_CLOSE, 0, 0);
        window.WaitUntilReady();
    }

    void Question(DrivenProgram& window) {
        SelectCopies(window);
        window.List(ID_lsvRestore2).Select(1);
        window.Begin(ID_mnuDelCopy);
        const Box box = window.Run().WaitForBox();
        if (!arabic_) Widen(box.handle);
        ShowAsWindowsDoes(box.handle);
        Sleep(300);
        Photograph("question", box.handle);
        window.Run().Answer(box, IDNO);
        window.WaitUntilReady();
    }

    // A question with a path below it, whose folders are Arabic.
    void Overwrite(DrivenProgram& window) {
        const DrivenList items = window.List(ID_lsvRestore1);
        const std::vector<std::wstring> names = items.Column(0);
        const auto found = std::find(names.begin(), names.end(), L"عقد الإيجار");
        items.Select(static_cast<int>(found - names.begin()));
        window.WaitUntil([&] { return window.List(ID_lsvRestore2).Count() == 1; }, "no copy");
        window.WaitUntilReady();
        window.Begin(ID_mnuRestore);
        const Box box = window.Run().WaitForBox();
        Widen(box.handle);
        ShowAsWindowsDoes(box.handle);
        Sleep(300);
        Photograph("overwrite", box.handle);
        window.Run().Answer(box, IDNO);
    }

    // Wine measures Arabic letters one by one and breaks the line of a box that could hold it.
    static void Widen(HWND box) {
        const int more = MulDiv(70, static_cast<int>(GetDpiForSystem()), 96);
        const auto resize = [](HWND window, HWND parent, int left, int width) {
            RECT place{};
            GetWindowRect(window, &place);
            MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
            SetWindowPos(window, nullptr, place.left + left, place.top,
                         place.right - place.left + width, place.bottom - place.top, SWP_NOZORDER);
        };
        resize(box, nullptr, -more, 2 * more);
        for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            wchar_t name[16] = L"";
            GetClassNameW(child, name, 16);
            if (std::wstring_view(name) == L"Static") {
                resize(child, box, 0, 2 * more);
            } else {
                resize(child, box, more, 0);
            }
        }
    }

    // Wine draws titles, and the texts of message boxes, from left to right in every window.
    // Windows draws them in the direction of the window, and the tick of a check box the same way
    // round everywhere: for the picture they are made to look like that.
    void ShowAsWindowsDoes(HWND window) const {
        const auto direct = [](HWND text) {
            const std::wstring marked = MarkSentence(WindowText(text));
            SendMessageW(text, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(marked.c_str()));
        };
        if (arabic_) direct(window);
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            wchar_t name[16] = L"";
            GetClassNameW(child, name, 16);
            const LONG kind = GetWindowLongW(child, GWL_STYLE) & BS_TYPEMASK;
            if (arabic_ && std::wstring_view(name) == L"Button" && kind == BS_AUTOCHECKBOX) {
                SetWindowLongW(child, GWL_EXSTYLE,
                               GetWindowLongW(child, GWL_EXSTYLE) & ~WS_EX_LAYOUTRTL);
                SetWindowLongW(child, GWL_STYLE,
                               GetWindowLongW(child, GWL_STYLE) | BS_RIGHTBUTTON | BS_RIGHT);
            }
            if (std::wstring_view(name) == L"Static") direct(child);
        }
        RedrawWindow(window, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }

    // The first line with this text comes into view, with what it belongs to above it.
    static void ScrollTo(HWND report, std::wstring_view text) {
        constexpr LRESULT kLinesAbove = 3;
        const std::size_t place = WindowText(report).find(text);
        if (place == std::wstring::npos) {
            std::cerr << "the report has no line of the error" << std::endl;
            return;
        }
        const LRESULT line = SendMessageW(report, EM_LINEFROMCHAR, place, 0);
        const LRESULT first = SendMessageW(report, EM_GETFIRSTVISIBLELINE, 0, 0);
        SendMessageW(report, EM_LINESCROLL, 0, std::max<LRESULT>(0, line - kLinesAbove) - first);
    }

    // A file that another program has open: the box, and the window after the run.
    void Errors(DrivenProgram& window) {
        program_.tree.SetDate(Documents(L"Diary 2026.docx"), {2026, 11, 21, 9, 0, 0});
        const FileHandle lock(CreateFileW(Documents(L"Diary 2026.docx").c_str(), GENERIC_READ, 0,
                                          nullptr, OPEN_EXISTING, 0, nullptr));
        window.Begin(ID_mnuBackup);
        const HWND busy = window.WaitForBusyDialog();
        SendMessageW(FindControl(busy, ID_chkDontHide), BM_CLICK, 0, 0);
        const Box box = window.Run().WaitForBox();
        Sleep(300);
        Photograph("error", box.handle);
        window.Run().Answer(box);
        const HWND report = FindControl(busy, ID_txtReport);
        window.WaitUntil([&] { return WindowText(report).ends_with(L"Done:  - \r\n"); }, "no end");
        Sleep(2500);
        ScrollTo(report, L"Permission denied");
        ShowAsWindowsDoes(busy);
        Photograph("busy-errors", busy);
        PostMessageW(busy, WM_CLOSE, 0, 0);
        window.WaitUntilReady();
        Photograph("main-failed", window.Main());
    }

    // Items that a run would not take the way their owner thinks.
    void Warnings(DrivenProgram& window) {
        program_.tree.File(L"C:\\Users\\Mona\\Old\\Letters\\Aunt.docx", std::string(900, 'v'),
                           {2025, 11, 2, 10, 0, 0});
        const std::wstring bills =
            program_.tree.File(Documents(L"Rent, water and power.xlsx"), std::string(4100, 'v'),
                               {2026, 11, 2, 10, 0, 0});
        window.List(ID_lsvBackupList).Drop({L"C:\\Users\\Mona\\Old\\Letters", bills});
        window.WaitUntilReady();
        Photograph("warnings", window.Main());
    }

    // As large as the desktop allows, up to what a small screen has.
    static void GiveSize(HWND window) {
        RECT desktop{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &desktop, 0);
        const int dpi = static_cast<int>(GetDpiForSystem());
        ShowWindow(window, SW_SHOWNORMAL);
        SetWindowPos(window, nullptr, desktop.left, desktop.top,
                     std::min<int>(desktop.right - desktop.left, MulDiv(1100, dpi, 96)),
                     std::min<int>(desktop.bottom - desktop.top, MulDiv(700, dpi, 96)),
                     SWP_NOZORDER);
        Sleep(300);
    }

    void Photograph(const std::string& name, HWND window) const {
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        Sleep(300);
        RECT place{};
        GetWindowRect(window, &place);
        std::cout << name << (arabic_ ? "-ar" : "-en") << ' ' << std::max(0L, place.left) << ' '
                  << std::max(0L, place.top) << ' ' << place.right - std::max(0L, place.left) << ' '
                  << place.bottom - std::max(0L, place.top) << std::endl;
        std::string answer;
        std::getline(std::cin, answer);
    }

    bool arabic_;
    TestDrive drive_;
    ProgramCopy program_;
};

}  // namespace
}  // namespace vw::test

int wmain(int count, wchar_t** values) {
    int argumentCount = 0;
    testing::InitGoogleTest(&argumentCount, static_cast<char**>(nullptr));
    vw::test::Studio(count > 1 && std::wstring(values[1]) == L"ar").Work();
    return 0;
}
