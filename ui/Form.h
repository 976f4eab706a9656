#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/AccessibleNames.h"
#include "ui/DropDown.h"
#include "ui/Fonts.h"
#include "ui/FormData.h"
#include "ui/FormEvents.h"
#include "ui/Icons.h"
#include "ui/ListView.h"
#include "ui/Menu.h"
#include "ui/ToolBar.h"
#include "ui/ToolTips.h"
#include "ui/Window.h"

namespace vw {

class MessagePump;

/// Tables of keys that run commands.
struct AcceleratorTraits {
    using Type = HACCEL;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { DestroyAcceleratorTable(handle); }
};
using AcceleratorHandle = UniqueHandle<AcceleratorTraits>;

/// How a form comes up.
enum class ShowHow {
    Activate,   ///< in its present state, with the keyboard
    KeepFocus,  ///< in its present state, the keyboard stays where it is
    Normal,     ///< neither minimised nor maximised
    Maximised,
    MinimisedKeepFocus,  ///< as a button of the task bar
};

enum class MousePointer { Default, Hourglass };

/// A window made of its data, in one language. Controls are reached by their names (and index, for
/// those of an array); a name that the data does not have, or a question that its kind of control
/// does not answer, throws 5.
///
/// The form is loaded (made, hidden) by Load or Show and can be unloaded and loaded again. Since a
/// user may close it while work goes on, everything done to it while it is not loaded does nothing,
/// and questions get an empty answer; only List, Tools and Menus, which hand out parts of it, throw
/// 5 then.
///
/// Nothing that the program does to a control throws an event, except another value of a scroll
/// bar.
class Form final : public Window {
  public:
    Form(const FormData& data, Language language, FormEvents& events);
    ~Form() override;

    /// The form that a window is, or nothing.
    [[nodiscard]] static Form* FromWindow(HWND window) noexcept;

    [[nodiscard]] const FormData& Data() const noexcept { return data_; }
    [[nodiscard]] Language InLanguage() const noexcept { return language_; }
    /// The name of the variant: frmMainEn, frmMainAr...
    [[nodiscard]] std::wstring_view Name() const noexcept { return data_.className.In(language_); }

    // --- The window

    [[nodiscard]] bool IsLoaded() const noexcept { return Handle() != nullptr; }
    /// Makes the window and its controls when they are not there, hidden.
    void Load(HWND owner = nullptr);
    /// Which button Enter presses; none for an empty name. That of the data when the form is
    /// loaded.
    void SetDefaultButton(std::wstring_view name);

    /// Asks the events whether it may go; true when the form is not loaded any more.
    bool Unload(UnloadReason reason = UnloadReason::Program);

    /// A minimised form is visible too.
    [[nodiscard]] bool IsVisible() const noexcept;
    [[nodiscard]] WindowState State() const noexcept;
    /// Shows the form, loading it first when it is not loaded.
    void Show(ShowHow how = ShowHow::Activate);
    void Hide();
    /// Maximises now, or when the form is first shown if it is still hidden.
    void Maximise();
    /// Shows the form before a disabled `owner` and returns when it is hidden or unloaded.
    void ShowModal(MessagePump& pump, HWND owner);

    [[nodiscard]] std::wstring Caption() const;
    void SetCaption(std::wstring_view text);
    /// Whether the form takes keyboard and mouse.
    [[nodiscard]] bool IsFormEnabled() const noexcept;
    void EnableForm(bool on);
    void SetMousePointer(MousePointer pointer);
    /// Paints at once what waits to be painted, without processing any other message.
    void Repaint() noexcept;
    /// Makes one of the form's images its icon, in the title bar, the task bar and for Icon().
    void SetIcon(std::wstring_view images, int index);
    /// The small icon that the form has now; the form's own.
    [[nodiscard]] HICON Icon() const noexcept { return smallIcon_.Get(); }
    [[nodiscard]] int Dpi() const noexcept { return dpi_; }

    // --- Controls of every kind

    /// The control's HWND, for operations that Form does not wrap.
    [[nodiscard]] HWND Control(std::wstring_view name) const;
    [[nodiscard]] std::wstring Text(std::wstring_view name) const;
    void SetText(std::wstring_view name, std::wstring_view text);
    /// Gives a label the text that it has in the data.
    void ResetText(std::wstring_view label);
    /// Whether a status line shows its text as a warning: with a sign, and in a colour of its own.
    void SetAlert(std::wstring_view statusLine, bool on);
    [[nodiscard]] bool IsEnabled(std::wstring_view name) const;
    void Enable(std::wstring_view name, bool on);
    /// Whether a control shows when its form does.
    [[nodiscard]] bool IsShown(std::wstring_view name) const;
    void ShowControl(std::wstring_view name, bool on);

    // --- Controls of one kind

    [[nodiscard]] bool IsChecked(std::wstring_view checkBox) const;
    void Check(std::wstring_view checkBox, bool on);

    [[nodiscard]] std::vector<std::wstring> Choices(std::wstring_view dropDown) const;
    void SetChoices(std::wstring_view dropDown, const std::vector<std::wstring>& choices);
    /// Chooses an entry by its text, in any letter case; one that is not offered is added.
    void Choose(std::wstring_view dropDown, std::wstring_view text);

    [[nodiscard]] int Value(std::wstring_view scrollBar) const;
    /// Another value throws the change event. A value outside the range widens it.
    void SetValue(std::wstring_view scrollBar, int value);

    /// From 0 to kProgressMaximum.
    [[nodiscard]] int Progress(std::wstring_view bar) const;
    void SetProgress(std::wstring_view bar, int value);

    /// Puts text behind what a report holds and scrolls to it.
    void Append(std::wstring_view report, std::wstring_view text);

    void EnableTimer(std::wstring_view timer, bool on);
    [[nodiscard]] bool IsTimerEnabled(std::wstring_view timer) const;

    [[nodiscard]] ListView& List(std::wstring_view listView);
    [[nodiscard]] Menu& Menus();

    [[nodiscard]] ToolBar& Tools(std::wstring_view toolBar);

    /// Opens a menu at the mouse; what is chosen comes as a click.
    void PopUpMenu(std::wstring_view name, std::wstring_view defaultName = {});

    /// Tab, Enter, Esc and accelerators of whichever form a message belongs to; true when that was
    /// all there was to do. For the filter of the event pump.
    static bool TranslateKeys(const MSG& message);

  private:
    /// One control that exists.
    struct Part {
        const ControlData* data = nullptr;
        HWND window = nullptr;
        HWND frame = nullptr;  ///< around the control, where it needs one
        std::unique_ptr<ListView> list;
        std::unique_ptr<ToolBar> toolBar;
        std::unique_ptr<DropDown> dropDown;
        IconHandle picture;
        bool ticking = false;
        bool alert = false;
    };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnEscaped(const std::exception_ptr& error) noexcept override;
    void OnGone() override;

    // Making and unmaking (Form.cpp)
    void MakeParts();
    void ForgetParts() noexcept;
    void EndModal() noexcept;

    // Finding controls (FormControls.cpp): nothing while the form is not loaded
    [[nodiscard]] const Part* Find(std::wstring_view name) const;
    [[nodiscard]] const Part* Find(std::wstring_view name, ControlKind kind) const;
    [[nodiscard]] Part* FindByWindow(HWND window) noexcept;

    // Looks (FormLayout.cpp)
    void PlaceInitially();
    void UseDpi(int dpi);
    void ApplyFonts();
    void ApplyFont(Part& part, Fonts& fonts);
    void Arrange(const Size& client);
    void OnSize();
    [[nodiscard]] Size ClientSize() const noexcept;
    [[nodiscard]] Size MaximisedSize() const noexcept;
    void ArrangeDropDown(HWND dropDown, const Rect& place) const;
    [[nodiscard]] Size DesignNow() const noexcept;
    [[nodiscard]] Size OuterSize(const Size& inner) const noexcept;
    [[nodiscard]] Size LeastSize() const noexcept;
    void GrowBy(int height);
    void TakeIcon(int id);

    // Painting (FormPainting.cpp)
    std::optional<LRESULT> OnColour(HDC dc, HWND control);
    void OnDrawItem(const DRAWITEMSTRUCT& draw);
    void DrawLabel(const Part& part, HDC dc, const RECT& area) const;
    void DrawStatusLine(const Part& part, HDC dc, const RECT& area) const;
    void DrawChoice(const DRAWITEMSTRUCT& draw) const;

    // Messages (FormMessages.cpp)
    std::optional<LRESULT> OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void Notify(const ControlData& data, EventKind kind, int value = 0, std::wstring_view key = {});
    void OnCommand(int id, int code, HWND control);
    void OnMenuOrButton(int id);
    void OnDialogKey(int id);
    void OnScroll(HWND bar, WPARAM request);
    void OnWheel(int delta, POINT pointer);
    void OnDrop(HWND list, WPARAM drop);
    LRESULT OnNotify(NMHDR& header);
    LRESULT OnListNotify(Part& part, NMHDR& header);
    void OnTimer(int id);
    bool Translate(MSG& message);
    void GiveFocus();

    // Tool tips (FormTips.cpp)
    [[nodiscard]] ToolTips& Tips();  ///< those of all controls, made when they are first needed
    void OnMouseCame();
    void OnTipAsked(NMTTDISPINFOW& info);
    void OnMenuSelect(WPARAM selected, HMENU menu);

    const FormData& data_;
    Language language_;
    FormEvents& events_;
    std::vector<Part> parts_;
    std::unique_ptr<Menu> menu_;
    std::unique_ptr<Fonts> fonts_;
    std::unique_ptr<ToolTips> tips_;
    std::unique_ptr<AccessibleNames> names_;
    AcceleratorHandle accelerators_;
    std::unique_ptr<RowPictures> rowPictures_;
    IconHandle smallIcon_;
    IconHandle largeIcon_;
    int iconId_ = 0;
    int dpi_ = kDesignDpi;
    HWND focus_ = nullptr;
    std::wstring_view defaultButton_;
    HWND modalOwner_ = nullptr;
    std::wstring tipText_;
    MousePointer pointer_ = MousePointer::Default;
    int wheelRest_ = 0;  ///< of the wheel over a scroll bar, less than a notch
    bool maximiseLater_ = false;
    Size arrangedFor_{};    ///< the client area that the controls have their places for
    bool isInUse_ = false;  ///< it was shown, and the program has waited for its user since
    bool unloading_ = false;
    bool ending_ = false;
    UINT taskbarCreated_ = 0;
    UINT taskbarButtonCreated_ = 0;
};

}  // namespace vw
