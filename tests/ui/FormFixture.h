#pragma once

#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/WindowMessagePump.h"
#include "ui/Form.h"
#include "ui/Forms.h"
#include "ui/ListView.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw::test {

/// Records the events of a form.
class RecordedEvents final : public FormEvents {
  public:
    std::vector<ControlEvent> events;
    std::vector<UnloadReason> unloadReasons;
    std::vector<WindowState> sizes;
    std::vector<std::pair<int, int>> mouse;
    int loads = 0;
    int unloads = 0;
    int taskbars = 0;
    bool letsGo = true;
    std::exception_ptr escaped;
    /// What a handler does; nothing at first.
    std::function<void(Form&, const ControlEvent&)> onControl;

    void OnControl(Form& form, const ControlEvent& event) override {
        events.push_back(event);
        if (onControl) onControl(form, event);
    }
    void OnLoad(Form&) override { ++loads; }
    bool OnQueryUnload(Form&, UnloadReason reason) override {
        unloadReasons.push_back(reason);
        return letsGo;
    }
    void OnUnload(Form&) override { ++unloads; }
    void OnResize(Form&, WindowState state) override { sizes.push_back(state); }
    void OnMouseMove(Form&, int x, int y) override { mouse.emplace_back(x, y); }
    void OnTaskbarCreated(Form&) override { ++taskbars; }
    void OnEscaped(Form&, const std::exception_ptr& error) noexcept override { escaped = error; }

    /// The last event; an empty one when there is none.
    [[nodiscard]] ControlEvent Last() const {
        return events.empty() ? ControlEvent{} : events.back();
    }
};

/// A loaded form with its events.
class LoadedForm {
  public:
    LoadedForm(const FormData& data, Language language) : form(data, language, events) {
        form.Load();
    }

    RecordedEvents events;
    Form form;

    [[nodiscard]] HWND Handle() const noexcept { return form.Handle(); }
    [[nodiscard]] HWND Control(std::wstring_view name) const { return form.Control(name); }
};

/// Keys as the system's queue brings them.
class PostedKeys {
  protected:
    PostedKeys() { pump.SetFilter(Form::TranslateKeys); }

    void Press(HWND window, WPARAM key) {
        PostMessageW(window, WM_KEYDOWN, key, 0);
        PostMessageW(window, WM_KEYUP, key, 0);
        pump.ProcessMessages();
    }

    WindowMessagePump pump;
};

/// What a form draws for one of its labels.
class DrawnLabel {
  public:
    DrawnLabel(const LoadedForm& form, std::wstring_view name) : label_(form.Control(name)) {
        GetClientRect(label_, &area_);
        screen_ = GetDC(label_);
        canvas_ = CreateCompatibleDC(screen_);
        picture_ = CreateCompatibleBitmap(screen_, Width(), Height());
        before_ = SelectObject(canvas_, picture_);
        DRAWITEMSTRUCT draw{};
        draw.CtlType = ODT_STATIC;
        draw.hwndItem = label_;
        draw.hDC = canvas_;
        draw.rcItem = area_;
        SendMessageW(form.Handle(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw));
    }
    ~DrawnLabel() {
        SelectObject(canvas_, before_);
        DeleteObject(picture_);
        DeleteDC(canvas_);
        ReleaseDC(label_, screen_);
    }
    DrawnLabel(const DrawnLabel&) = delete;
    DrawnLabel& operator=(const DrawnLabel&) = delete;

    [[nodiscard]] int Width() const noexcept { return area_.right; }
    [[nodiscard]] int Height() const noexcept { return area_.bottom; }
    [[nodiscard]] COLORREF ColourAt(int x, int y) const { return GetPixel(canvas_, x, y); }

  private:
    HWND label_;
    RECT area_{};
    HDC screen_ = nullptr;
    HDC canvas_ = nullptr;
    HBITMAP picture_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

/// The two variants of every form, for loops over all eight.
inline constexpr Language kLanguages[]{Language::English, Language::Arabic};

/// The name of a variant, for INSTANTIATE_TEST_SUITE_P.
inline std::string NameOfLanguage(const testing::TestParamInfo<Language>& variant) {
    return variant.param == Language::Arabic ? "Arabic" : "English";
}

inline std::vector<const FormData*> AllForms() {
    return {&MainForm(), &BusyForm(), &TrayForm(), &AboutForm()};
}

/// Text for messages of failed tests.
inline std::string Narrow(std::wstring_view text) {
    std::string narrow;
    for (const wchar_t unit : text) narrow += unit < 128 ? static_cast<char>(unit) : '?';
    return narrow;
}

/// Makes a column as wide as a user does who drags the end of its header.
inline void DragColumn(const ListView& list, int column, int width) {
    HDITEMW item{};
    item.mask = HDI_WIDTH;
    item.cxy = width;
    NMHEADERW dragged{};
    dragged.hdr = {reinterpret_cast<HWND>(SendMessageW(list.Handle(), LVM_GETHEADER, 0, 0)), 0,
                   static_cast<UINT>(HDN_BEGINTRACKW)};
    dragged.iItem = column;
    dragged.pitem = &item;
    SendMessageW(list.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&dragged));
    SendMessageW(list.Handle(), LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), width);
    dragged.hdr.code = static_cast<UINT>(HDN_ENDTRACKW);
    SendMessageW(list.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&dragged));
}

/// Gives a form an inner size, in pixels.
inline void GiveInnerSize(const Form& form, int width, int height) {
    RECT inner{};
    RECT outer{};
    GetClientRect(form.Handle(), &inner);
    GetWindowRect(form.Handle(), &outer);
    SetWindowPos(form.Handle(), nullptr, 0, 0, outer.right - outer.left - inner.right + width,
                 outer.bottom - outer.top - inner.bottom + height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOSENDCHANGING);
}

/// Moves a form to a screen of another resolution, as the system reports it.
inline void GiveDpi(const Form& form, int dpi) {
    RECT outer{};
    GetWindowRect(form.Handle(), &outer);
    const int before = form.Dpi();
    outer.right = outer.left + MulDiv(outer.right - outer.left, dpi, before);
    outer.bottom = outer.top + MulDiv(outer.bottom - outer.top, dpi, before);
    SendMessageW(form.Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                 reinterpret_cast<LPARAM>(&outer));
}

/// A control's rectangle inside its form, counted from the left edge of the screen's side.
inline RECT PlaceOf(const Form& form, HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    RECT client{};
    GetClientRect(form.Handle(), &client);
    MapWindowPoints(form.Handle(), nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&place, -client.left, -client.top);
    return place;
}

}  // namespace vw::test
