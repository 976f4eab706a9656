#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "ui/MenuData.h"

namespace vw {

class Form;

/// What happened to a control.
enum class EventKind {
    Click,         ///< button, menu entry, label, row of a list, or the form itself (empty name)
    Change,        ///< the value of a scroll bar, also by program
    Selection,     ///< the user chose another row of a list or entry of a drop-down box
    ColumnClick,   ///< the header of a column
    KeyUp,         ///< a key was released in a list
    DropFiles,     ///< files were dropped onto a list
    ItemActivate,  ///< a row was double-clicked, or Enter was pressed on it
    Timer,
};

/// One event of one control. Its meaning is up to the logic behind the form.
struct ControlEvent {
    std::wstring_view control;  ///< its name; empty for the form itself
    int index = kNoIndex;       ///< its position in a control array
    EventKind kind = EventKind::Click;
    std::wstring_view key{};  ///< of the toolbar's button or of the list's column
    int value =
        0;  ///< row of a list from 0 (-1: none), column, virtual key or value of a scroll bar
    std::vector<std::wstring> files{};
    int id = 0;  ///< number of the control, or of the menu entry or button
};

/// Why a form is to be unloaded.
enum class UnloadReason {
    User,        ///< its close box, Alt+F4 or Esc
    Program,     ///< the program's own wish
    SessionEnd,  ///< Windows ends the session: nothing may be asked
};

enum class WindowState { Normal, Minimised, Maximised };

/// Receives the events of a form. The handlers trap their errors themselves.
class FormEvents {
  public:
    FormEvents() = default;
    FormEvents(const FormEvents&) = delete;
    FormEvents& operator=(const FormEvents&) = delete;
    virtual ~FormEvents() = default;

    virtual void OnControl(Form& form, const ControlEvent& event) = 0;

    /// All controls exist, nothing is visible yet.
    virtual void OnLoad(Form&) {}

    /// The form is about to be unloaded; false keeps it. The end of the session cannot be stopped.
    virtual bool OnQueryUnload(Form&, UnloadReason) { return true; }

    /// The form's window is gone.
    virtual void OnUnload(Form&) {}

    /// The form has another size or was minimised, maximised or given back its normal state.
    virtual void OnResize(Form&, WindowState) {}

    virtual void OnActivate(Form&, bool) {}

    /// The mouse moved over the form. An icon in the notification area reports its events this way,
    /// with the message that it means as `x`.
    virtual void OnMouseMove(Form&, int /*x*/, int /*y*/) {}

    /// The task bar was made anew: icons in the notification area have to be added again.
    virtual void OnTaskbarCreated(Form&) {}

    /// The task bar has a button for the form now, which can show how far the work is.
    virtual void OnTaskbarButtonCreated(Form&) {}

    /// An error left a handler and is kept from the system's code.
    virtual void OnEscaped(Form&, const std::exception_ptr&) noexcept {}
};

}  // namespace vw
