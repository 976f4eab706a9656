#include <algorithm>

#include "ui/ControlFactory.h"
#include "ui/Form.h"
#include "ui/resource.h"

// Places, fonts, icons and colours of a form.

namespace vw {

namespace {

constexpr int kDropDownRows = 12;
constexpr int kDropDownRow = 20;

RECT WorkAreaOf(HWND window) noexcept {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

// What is off the screen cannot be reached.
Size Within(const RECT& work, const Size& outer) noexcept {
    return {std::min(outer.width, static_cast<int>(work.right - work.left)),
            std::min(outer.height, static_cast<int>(work.bottom - work.top))};
}

}  // namespace

Size Form::OuterSize(const Size& inner) const noexcept {
    RECT rect{0, 0, inner.width, inner.height};
    const auto style = static_cast<DWORD>(GetWindowLongW(Handle(), GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongW(Handle(), GWL_EXSTYLE));
    AdjustWindowRectExForDpi(&rect, style, data_.menuBar ? TRUE : FALSE, extended,
                             static_cast<UINT>(dpi_));
    return {static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)};
}

// In the middle of the screen, and never larger than it.
void Form::PlaceInitially() {
    if (data_.kind == FormKind::Hidden) return;
    const RECT work = WorkAreaOf(Handle());
    const Size outer = Within(work, OuterSize(Scaled(data_.initial, dpi_)));
    SetWindowPos(Handle(), nullptr, (work.left + work.right - outer.width) / 2,
                 (work.top + work.bottom - outer.height) / 2, outer.width, outer.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

Size Form::LeastSize() const noexcept {
    return Within(WorkAreaOf(Handle()), OuterSize(Scaled(DesignNow(), dpi_)));
}

// The design as it is now: a form is taller while it shows what opens it.
Size Form::DesignNow() const noexcept {
    Size design = data_.design;
    for (const Part& part : parts_) {
        const bool shown =
            part.window != nullptr && (GetWindowLongW(part.window, GWL_STYLE) & WS_VISIBLE) != 0;
        if (shown) design.height += part.data->opens;
    }
    return design;
}

void Form::UseDpi(int dpi) {
    dpi_ = dpi;
    ApplyFonts();
    if (tips_) tips_->UseDpi(dpi);
    TakeIcon(iconId_);
    Arrange(ClientSize());
}

void Form::ApplyFonts() {
    auto fonts = std::make_unique<Fonts>(dpi_);
    // Assign the new resources to the controls before destroying the old ones.
    const std::unique_ptr<RowPictures> formerPictures = std::move(rowPictures_);
    for (Part& part : parts_) ApplyFont(part, *fonts);
    fonts_ = std::move(fonts);
}

void Form::ApplyFont(Part& part, Fonts& fonts) {
    if (part.window == nullptr) return;
    FontData face = part.data->font.In(language_);
    face.bold = face.bold || part.data->kind == ControlKind::Heading;
    const HFONT font = fonts.Get(face);
    switch (part.data->kind) {
        case ControlKind::ListView:
            if (!rowPictures_) rowPictures_ = std::make_unique<RowPictures>(dpi_);
            part.list->SetPictures(*rowPictures_, font, dpi_);
            break;
        case ControlKind::ToolBar:
            face.bold = true;
            part.toolBar->SetPictures(dpi_, font, fonts.Get(face));
            break;
        case ControlKind::Picture: {
            IconHandle picture = LoadPicture(part.data->icon, Scaled(part.data->place.width, dpi_));
            SendMessageW(part.window, STM_SETICON, reinterpret_cast<WPARAM>(picture.Get()), 0);
            part.picture = std::move(picture);
            break;
        }
        default:
            if (part.data->statusLine) {
                part.picture = LoadPicture(IDI_Warning, Scaled(kStatusSign, dpi_));
            }
            SendMessageW(part.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
            break;
    }
}

Size Form::ClientSize() const noexcept {
    RECT area{};
    GetClientRect(Handle(), &area);
    return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

// The frame of a maximised window lies outside the work area.
Size Form::MaximisedSize() const noexcept {
    const RECT work = WorkAreaOf(Handle());
    const Size frame = OuterSize({});
    return {static_cast<int>(work.right - work.left),
            static_cast<int>(work.bottom - work.top) - (frame.height - frame.width)};
}

void Form::Arrange(const Size& client) {
    arrangedFor_ = client;
    // In a mirrored form what a control showed before is not at the place where it is taken from.
    const UINT keep = language_ == Language::Arabic ? SWP_NOCOPYBITS : 0;
    HDWP moves = BeginDeferWindowPos(static_cast<int>(parts_.size()));
    for (const Part& part : parts_) {
        if (part.window == nullptr) continue;
        const Rect place = BoundsFor(part.data->place, part.data->flow, data_.design, client, dpi_);
        if (part.data->kind == ControlKind::DropDown) {
            ArrangeDropDown(part.window, place);
            continue;
        }
        if (part.frame != nullptr) {
            SetWindowPos(part.window, nullptr, 0, 0, place.Width(), place.Height(),
                         SWP_NOZORDER | SWP_NOACTIVATE);
        }
        const HWND outer = part.frame != nullptr ? part.frame : part.window;
        if (moves != nullptr) {
            moves = DeferWindowPos(moves, outer, nullptr, place.left, place.top, place.Width(),
                                   place.Height(), SWP_NOZORDER | SWP_NOACTIVATE | keep);
        }
    }
    if (moves != nullptr) EndDeferWindowPos(moves);
    if (language_ == Language::Arabic) {
        // What the window itself showed is moved to the wrong side too.
        RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        return;
    }
    for (const Part& part : parts_) {
        // Texts wrap and are shortened by the width.
        if (IsLabel(part.data->kind)) InvalidateRect(part.window, nullptr, TRUE);
    }
}

// A form gets its size more than once when it is shown. In a mirrored form other widths move the
// controls, even when they were arranged for this width before.
void Form::OnSize() {
    const Size client = ClientSize();
    if (language_ == Language::Arabic || client != arrangedFor_) Arrange(client);
}

// The height of a drop-down box is that of its field and its open list; the field follows its text.
void Form::ArrangeDropDown(HWND dropDown, const Rect& place) const {
    RECT now{};
    GetWindowRect(dropDown, &now);
    const auto field = static_cast<WPARAM>(-1);
    const auto text = static_cast<int>(SendMessageW(dropDown, CB_GETITEMHEIGHT, field, 0));
    const int frame = static_cast<int>(now.bottom - now.top) - text;
    if (frame >= 0 && place.Height() > frame) {
        SendMessageW(dropDown, CB_SETITEMHEIGHT, field, place.Height() - frame);
    }
    // The rows of the list keep the height of the font that the box was made with.
    const int row = std::max(text, Scaled(kDropDownRow, dpi_));
    SendMessageW(dropDown, CB_SETITEMHEIGHT, 0, row);
    SetWindowPos(dropDown, nullptr, place.left, place.top, place.Width(),
                 place.Height() + kDropDownRows * row, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::GrowBy(int height) {
    const int pixels = Scaled(height, dpi_);
    if (State() != WindowState::Normal) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof placement;
        GetWindowPlacement(Handle(), &placement);
        placement.rcNormalPosition.bottom += pixels;
        if (placement.showCmd == SW_SHOWMINIMIZED) placement.showCmd = SW_SHOWMINNOACTIVE;
        if (!IsVisible()) placement.showCmd = SW_HIDE;
        SetWindowPlacement(Handle(), &placement);
        return;
    }
    RECT now{};
    GetWindowRect(Handle(), &now);
    const RECT work = WorkAreaOf(Handle());
    const LONG bottom = now.bottom + pixels;
    const LONG above = pixels > 0 ? std::max(0L, bottom - work.bottom) : 0;
    SetWindowPos(Handle(), nullptr, now.left, std::max(work.top, now.top - above),
                 now.right - now.left, bottom - now.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::TakeIcon(int id) {
    iconId_ = id;
    const auto dpi = static_cast<UINT>(dpi_);
    IconHandle small = LoadPicture(id, GetSystemMetricsForDpi(SM_CXSMICON, dpi));
    IconHandle large = LoadPicture(id, GetSystemMetricsForDpi(SM_CXICON, dpi));
    SendMessageW(Handle(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.Get()));
    SendMessageW(Handle(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large.Get()));
    smallIcon_ = std::move(small);
    largeIcon_ = std::move(large);
}

void Form::SetIcon(std::wstring_view images, int index) {
    if (!IsLoaded()) return;
    for (const ControlData& data : data_.controls) {
        if (data.name == images && data.index == index) TakeIcon(data.icon);
    }
}

}  // namespace vw
