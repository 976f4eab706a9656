#include "ui/Menu.h"

#include <algorithm>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/SystemError.h"

namespace vw {

namespace {

// In a menu "&" underlines the next letter; captions are names of lists too, so it is doubled.
std::wstring Escaped(std::wstring_view text) {
    std::wstring escaped;
    escaped.reserve(text.size());
    for (const wchar_t unit : text) {
        escaped += unit;
        if (unit == L'&') escaped += unit;
    }
    return escaped;
}

}  // namespace

Menu::Menu(MenuData data, Language language, bool menuBar)
    : root_(menuBar ? CreateMenu() : CreatePopupMenu()), language_(language) {
    if (!root_) RaiseLast({});
    std::vector<HMENU> levels{root_.Get()};
    entries_.reserve(data.size());
    for (const MenuItemData& item : data) {
        levels.resize(static_cast<std::size_t>(item.level) + 1);
        Entry entry;
        entry.data = &item;
        entry.parent = levels.back();
        entry.text = item.caption.In(language);
        entry.shown = !item.hidden;
        const auto next = static_cast<std::size_t>(&item - data.data()) + 1;
        if (next < data.size() && data[next].level > item.level) {
            entry.below = CreatePopupMenu();
            if (entry.below == nullptr) RaiseLast({});
            levels.push_back(entry.below);
        }
        entries_.push_back(std::move(entry));
        if (entries_.back().shown) Insert(entries_.back());
    }
}

Menu::~Menu() {
    // What opens from a hidden entry hangs on no menu.
    for (const Entry& entry : entries_) {
        if (!entry.shown && entry.below != nullptr) DestroyMenu(entry.below);
    }
    if (window_ != nullptr) static_cast<void>(root_.Release());
}

void Menu::AttachTo(HWND window) {
    if (SetMenu(window, root_.Get()) == 0) RaiseLast({});
    window_ = window;
}

const Menu::Entry& Menu::At(std::wstring_view name, int index) const {
    for (const Entry& entry : entries_) {
        if (entry.data->index == index && NameOf(*entry.data) == name) return entry;
    }
    Throw(error_number::kInvalidCall);
}

Menu::Entry& Menu::At(std::wstring_view name, int index) {
    return const_cast<Entry&>(std::as_const(*this).At(name, index));
}

// The place of an entry is behind those of its menu that come earlier in the data and are shown.
void Menu::Insert(const Entry& entry) {
    UINT position = 0;
    for (const Entry& earlier : entries_) {
        if (earlier.data == entry.data) break;
        if (earlier.parent == entry.parent && earlier.shown) ++position;
    }
    std::wstring text = Escaped(entry.text);
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STATE;
    info.fType = entry.data->separator ? MFT_SEPARATOR : MFT_STRING;
    if (entry.data->radio) info.fType |= MFT_RADIOCHECK;
    info.wID = static_cast<UINT>(entry.data->id);
    info.fState = static_cast<UINT>(entry.enabled ? MFS_ENABLED : MFS_GRAYED) |
                  static_cast<UINT>(entry.checked ? MFS_CHECKED : MFS_UNCHECKED);
    if (!entry.data->separator) {
        info.fMask |= MIIM_STRING;
        info.dwTypeData = text.data();
    }
    if (entry.below != nullptr) {
        info.fMask |= MIIM_SUBMENU;
        info.hSubMenu = entry.below;
    }
    if (InsertMenuItemW(entry.parent, position, TRUE, &info) == 0) RaiseLast({});
}

// A menu bar does not notice by itself that one of its entries changed.
void Menu::Redraw(const Entry& entry) const noexcept {
    if (window_ != nullptr && entry.parent == root_.Get()) DrawMenuBar(window_);
}

std::wstring Menu::Text(std::wstring_view name, int index) const { return At(name, index).text; }

void Menu::SetText(std::wstring_view name, std::wstring_view text, int index) {
    Entry& entry = At(name, index);
    entry.text = text;
    if (!entry.shown) return;
    std::wstring escaped = Escaped(text);
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = escaped.data();
    SetMenuItemInfoW(entry.parent, static_cast<UINT>(entry.data->id), FALSE, &info);
    Redraw(entry);
}

bool Menu::IsEnabled(std::wstring_view name, int index) const { return At(name, index).enabled; }

bool Menu::IsEnabled(int id) const {
    return std::ranges::any_of(
        entries_, [id](const Entry& entry) { return entry.data->id == id && entry.enabled; });
}

void Menu::Enable(std::wstring_view name, bool on, int index) {
    Entry& entry = At(name, index);
    entry.enabled = on;
    const auto state = static_cast<UINT>(on ? MF_ENABLED : MF_GRAYED);
    EnableMenuItem(entry.parent, static_cast<UINT>(entry.data->id), MF_BYCOMMAND | state);
    Redraw(entry);
}

bool Menu::IsChecked(std::wstring_view name, int index) const { return At(name, index).checked; }

void Menu::Check(std::wstring_view name, bool on, int index) {
    Entry& entry = At(name, index);
    entry.checked = on;
    const auto state = static_cast<UINT>(on ? MF_CHECKED : MF_UNCHECKED);
    CheckMenuItem(entry.parent, static_cast<UINT>(entry.data->id), MF_BYCOMMAND | state);
}

void Menu::CheckOnly(std::wstring_view name, int index) {
    for (const Entry& entry : entries_) {
        if (NameOf(*entry.data) == name && !entry.data->separator) {
            Check(name, entry.data->index == index, entry.data->index);
        }
    }
}

bool Menu::IsShown(std::wstring_view name, int index) const { return At(name, index).shown; }

void Menu::Show(std::wstring_view name, bool on, int index) {
    Entry& entry = At(name, index);
    if (entry.shown == on) return;
    entry.shown = on;
    if (on) {
        Insert(entry);
    } else {
        RemoveMenu(entry.parent, static_cast<UINT>(entry.data->id), MF_BYCOMMAND);
    }
    Redraw(entry);
}

int Menu::PopUp(HWND owner, std::wstring_view name, std::wstring_view defaultName) {
    const HMENU menu = At(name, kNoIndex).below;
    if (menu == nullptr) Throw(error_number::kInvalidCall);
    if (!defaultName.empty()) {
        SetMenuDefaultItem(menu, static_cast<UINT>(At(defaultName, kNoIndex).data->id), FALSE);
    }
    POINT mouse{};
    GetCursorPos(&mouse);
    // Without the foreground the menu would stay open when the user clicks elsewhere, and without
    // a message behind it the next menu would close at once.
    SetForegroundWindow(owner);
    UINT flags = TPM_RETURNCMD | TPM_RIGHTBUTTON;
    if (language_ == Language::Arabic) flags |= TPM_LAYOUTRTL;
    // The side of the pointer that the user's menus open at.
    if (GetSystemMetrics(SM_MENUDROPALIGNMENT) != 0) flags |= TPM_RIGHTALIGN;
    const BOOL chosen = TrackPopupMenu(menu, flags, mouse.x, mouse.y, 0, owner, nullptr);
    PostMessageW(owner, WM_NULL, 0, 0);
    return chosen;
}

const MenuItemData* Menu::Find(int id) const noexcept {
    for (const Entry& entry : entries_) {
        if (entry.data->id == id) return entry.data;
    }
    return nullptr;
}

RECT Menu::PlaceOf(const MenuItemData& item) const noexcept {
    RECT place{};
    for (const Entry& entry : entries_) {
        if (entry.data != &item) continue;
        const int count = GetMenuItemCount(entry.parent);
        for (int position = 0; position < count; ++position) {
            if (GetMenuItemID(entry.parent, position) != static_cast<UINT>(item.id)) continue;
            const HWND window = entry.parent == root_.Get() ? window_ : nullptr;
            GetMenuItemRect(window, entry.parent, static_cast<UINT>(position), &place);
        }
    }
    return place;
}

bool Menu::IsAvailable(const MenuItemData& item) const noexcept {
    for (const Entry& entry : entries_) {
        if (entry.data == &item) return entry.enabled && entry.shown;
    }
    return false;
}

}  // namespace vw
