#include "ui/Form.h"

#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "ui/ControlFactory.h"
#include "ui/PrivateMessages.h"
#include "ui/ScrollBar.h"

namespace vw {

namespace {

void RegisterCommonControls() {
    INITCOMMONCONTROLSEX wanted{};
    wanted.dwSize = sizeof wanted;
    wanted.dwICC =
        ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES;
    InitCommonControlsEx(&wanted);
}

DWORD StyleOf(FormKind kind) noexcept {
    switch (kind) {
        case FormKind::Main:
            return WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
        case FormKind::Dialog:
            return WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX |
                   WS_CLIPCHILDREN;
        case FormKind::Box:
            return WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
        default:
            return WS_OVERLAPPED;
    }
}

constexpr unsigned kModalMilliseconds = 500;

AcceleratorHandle MakeAccelerators(std::span<const AcceleratorData> rows) {
    std::vector<ACCEL> keys;
    for (const AcceleratorData& row : rows) {
        const BYTE modifiers = row.control ? FCONTROL : 0;
        keys.push_back(
            {static_cast<BYTE>(FVIRTKEY | modifiers), row.key, static_cast<WORD>(row.id)});
    }
    if (keys.empty()) return AcceleratorHandle();
    return AcceleratorHandle(CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
}

}  // namespace

Form::Form(const FormData& data, Language language, FormEvents& events)
    : data_(data), language_(language), events_(events) {}

Form::~Form() {
    ending_ = true;
    Destroy();
}

void Form::Load(HWND owner) {
    if (IsLoaded()) return;
    RegisterCommonControls();
    taskbarCreated_ = RegisterWindowMessageW(L"TaskbarCreated");
    taskbarButtonCreated_ = RegisterWindowMessageW(L"TaskbarButtonCreated");
    Create({.className = std::wstring(Name()),
            .title = std::wstring(data_.caption.In(language_)),
            .style = StyleOf(data_.kind),
            .extendedStyle = language_ == Language::Arabic ? DWORD{WS_EX_LAYOUTRTL} : 0,
            .owner = owner});
    // A program with more rights than the desktop does not receive it without asking for it.
    for (const UINT message : {taskbarCreated_, taskbarButtonCreated_}) {
        ChangeWindowMessageFilterEx(Handle(), message, MSGFLT_ALLOW, nullptr);
    }
    dpi_ = static_cast<int>(GetDpiForWindow(Handle()));
    TakeIcon(data_.icon);
    PlaceInitially();
    MakeParts();
    ApplyFonts();
    SetDefaultButton(data_.defaultButton);
    events_.OnLoad(*this);
    // Only now is it certain whether the form will be maximised when it is shown. Its controls get
    // their final places while they are hidden, which costs no painting.
    if (IsLoaded()) Arrange(maximiseLater_ ? MaximisedSize() : ClientSize());
}

void Form::MakeParts() {
    names_ = std::make_unique<AccessibleNames>();
    if (!data_.menu.empty()) {
        menu_ = std::make_unique<Menu>(data_.menu, language_, data_.menuBar);
        if (data_.menuBar) menu_->AttachTo(Handle());
    }
    accelerators_ = MakeAccelerators(data_.accelerators);
    parts_.reserve(data_.controls.size());
    for (const ControlData& data : data_.controls) {
        Part part;
        part.data = &data;
        if (NeedsFrame(data.kind, language_)) part.frame = MakeFrame(Handle(), data);
        const HWND parent = part.frame != nullptr ? part.frame : Handle();
        if (HasWindow(data.kind)) part.window = MakeControl(parent, data, language_);
        if (data.kind == ControlKind::ListView) {
            part.list = std::make_unique<ListView>(part.window, data, language_);
            part.list->Tips().Attach(names_.get());
        } else if (data.kind == ControlKind::ToolBar) {
            part.toolBar = std::make_unique<ToolBar>(part.window, data, language_);
        } else if (data.kind == ControlKind::DropDown) {
            part.dropDown = std::make_unique<DropDown>(part.window);
        }
        names_->Set(part.window, data.spokenName.In(language_));
        parts_.push_back(std::move(part));
    }
    for (const Part& part : parts_) {
        if (part.data->wheelLabel.empty()) continue;
        ScrollBar::RepaintWithFocus(part.window, Find(part.data->wheelLabel)->window);
    }
}

void Form::ForgetParts() noexcept {
    parts_.clear();
    menu_.reset();
    tips_.reset();
    names_.reset();
    fonts_.reset();
    accelerators_.Reset();
    rowPictures_.reset();
    smallIcon_.Reset();
    largeIcon_.Reset();
    focus_ = nullptr;
    defaultButton_ = {};
    wheelRest_ = 0;
    pointer_ = MousePointer::Default;
    maximiseLater_ = false;
    isInUse_ = false;
    arrangedFor_ = {};
}

bool Form::Unload(UnloadReason reason) {
    if (!IsLoaded()) return true;
    // Whoever is asked may unload the form himself; he is not asked twice.
    if (unloading_) return false;
    unloading_ = true;
    const bool goes = events_.OnQueryUnload(*this, reason) || reason == UnloadReason::SessionEnd;
    unloading_ = false;
    if (goes) {
        EndModal();
        Destroy();
    }
    return !IsLoaded();
}

void Form::OnGone() {
    ForgetParts();
    if (!ending_) events_.OnUnload(*this);
}

bool Form::IsVisible() const noexcept {
    return IsLoaded() && (GetWindowLongW(Handle(), GWL_STYLE) & WS_VISIBLE) != 0;
}

WindowState Form::State() const noexcept {
    if (IsIconic(Handle()) != 0) return WindowState::Minimised;
    return IsZoomed(Handle()) != 0 ? WindowState::Maximised : WindowState::Normal;
}

void Form::Show(ShowHow how) {
    Load();
    int command = SW_SHOW;
    switch (how) {
        case ShowHow::Activate:
            break;
        case ShowHow::KeepFocus:
            command = SW_SHOWNA;
            break;
        case ShowHow::Normal:
            command = SW_SHOWNORMAL;
            break;
        case ShowHow::Maximised:
            command = SW_SHOWMAXIMIZED;
            break;
        case ShowHow::MinimisedKeepFocus:
            command = SW_SHOWMINNOACTIVE;
            break;
    }
    if (maximiseLater_ && how == ShowHow::Activate) command = SW_SHOWMAXIMIZED;
    maximiseLater_ = false;
    // The controls may have been arranged for a maximised form that is now shown in another way.
    if (command != SW_SHOWMAXIMIZED && arrangedFor_ != ClientSize()) Arrange(ClientSize());
    ShowWindow(Handle(), command);
    // Names and tool tips wait until the form can be used: both take their time to load.
    if (!isInUse_) SetTimer(Handle(), kShownTimer, USER_TIMER_MINIMUM, nullptr);
}

void Form::Hide() {
    if (!IsLoaded()) return;
    EndModal();
    ShowWindow(Handle(), SW_HIDE);
}

void Form::Maximise() {
    if (!IsLoaded()) return;
    if (IsVisible()) {
        ShowWindow(Handle(), SW_SHOWMAXIMIZED);
    } else {
        maximiseLater_ = true;
    }
}

void Form::ShowModal(MessagePump& pump, HWND owner) {
    Load(owner);
    const bool disables = owner != nullptr && IsWindowEnabled(owner) != 0;
    if (disables) EnableWindow(owner, FALSE);
    modalOwner_ = disables ? owner : nullptr;
    Show();
    while (IsVisible()) pump.WaitForMessages(kModalMilliseconds);
    EndModal();
}

// Before the box goes: with all windows of the program disabled, another program would come
// forward.
void Form::EndModal() noexcept {
    if (modalOwner_ != nullptr) EnableWindow(modalOwner_, TRUE);
    modalOwner_ = nullptr;
}

Form* Form::FromWindow(HWND window) noexcept {
    return window == nullptr ? nullptr : dynamic_cast<Form*>(From(window));
}

bool Form::TranslateKeys(const MSG& message) {
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    Form* form = FromWindow(root);
    if (form == nullptr) return false;
    // A window that is disabled keeps the focus in its controls: keys would go on working them.
    if (!form->IsFormEnabled()) {
        return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    }
    MSG copy = message;
    return form->Translate(copy);
}

}  // namespace vw
