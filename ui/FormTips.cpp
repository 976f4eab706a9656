#include <algorithm>
#include <string>

#include "platform/TextDirection.h"
#include "ui/Form.h"
#include "ui/Painting.h"
// The extended window macros need the declarations of the window system first.
#include <windowsx.h>

// The tool tips of a form: of its controls, its lists and its menu.

namespace vw {

namespace {

bool HasTip(const ControlData& data) noexcept {
    return data.kind == ControlKind::ListView || data.path || !data.tip.english.empty();
}

}  // namespace

// The tip of a label with a path is the whole path, unless all of it shows.
void Form::OnTipAsked(NMTTDISPINFOW& info) {
    const HWND control = reinterpret_cast<HWND>(info.hdr.idFrom);
    const Part* part = FindByWindow(control);
    if (part == nullptr) return;
    const bool arabic = language_ == Language::Arabic;
    if (part->list) {
        const DWORD position = GetMessagePos();
        POINT mouse{GET_X_LPARAM(position), GET_Y_LPARAM(position)};
        MapWindowPoints(nullptr, control, &mouse, 1);
        tipText_ = part->list->Tips().TipAt(mouse);
        if (arabic || PhraseReadsFromRight(tipText_)) tipText_ = MarkTip(tipText_);
        info.lpszText = tipText_.data();
        return;
    }
    tipText_ =
        part->data->path ? Text(part->data->name) : std::wstring(part->data->tip.In(language_));
    if (part->data->path) {
        const int width = MeasureIn(control)(tipText_);
        RECT area{};
        GetClientRect(control, &area);
        if (width <= area.right) tipText_.clear();
    }
    // A tip does not take over the direction of its window on every system, and Arabic folders are
    // met in English windows, too.
    if (arabic || PhraseReadsFromRight(tipText_)) {
        tipText_ = part->data->path ? MarkTip(tipText_) : MarkSentence(tipText_);
    }
    info.lpszText = tipText_.data();
}

ToolTips& Form::Tips() {
    if (tips_) return *tips_;
    tips_ = std::make_unique<ToolTips>(Handle());
    tips_->UseDpi(dpi_);
    for (const Part& part : parts_) {
        if (!HasTip(*part.data)) continue;
        tips_->Add(part.window, part.list ? ToolTips::Mouse::Relayed : ToolTips::Mouse::Watched);
        if (part.list) part.list->Tips().RelayTo(tips_->Handle());
    }
    return *tips_;
}

// Only a mouse asks for the tip of a control, long after the form was painted. A form may come up
// below a mouse that rests.
void Form::OnMouseCame() {
    if (isInUse_ && std::ranges::any_of(data_.controls, HasTip)) static_cast<void>(Tips());
}

// The keyboard highlights entries too, so their tips do not depend on the mouse.
void Form::OnMenuSelect(WPARAM selected, HMENU menu) {
    if (tips_) tips_->Hide();
    const UINT flags = HIWORD(selected);
    const int id = LOWORD(selected);
    if (!menu_ || menu == nullptr || (flags & MF_POPUP) != 0) return;
    const MenuItemData* item = menu_->Find(id);
    if (item == nullptr) return;
    const std::wstring_view tip = item->tip.In(language_);
    if (tip.empty()) return;
    const bool arabic = language_ == Language::Arabic;
    Tips().ShowBeside(menu_->PlaceOf(*item), arabic,
                      arabic ? MarkSentence(tip) : std::wstring(tip));
}

}  // namespace vw
