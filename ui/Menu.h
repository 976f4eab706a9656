#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Handle.h"
#include "ui/MenuData.h"

namespace vw {

/// Menus: destroyed with everything below them.
struct MenuHandleTraits {
    using Type = HMENU;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { DestroyMenu(handle); }
};
using MenuHandle = UniqueHandle<MenuHandleTraits>;

/// The menu of one form, made of its data; entries are reached by control name and index.
/// A name that the data does not have throws 5.
class Menu {
  public:
    Menu(MenuData data, Language language, bool menuBar);
    ~Menu();
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;

    /// Gives the menu bar to a window, which shows it and destroys it with itself.
    void AttachTo(HWND window);

    [[nodiscard]] std::wstring Text(std::wstring_view name, int index = kNoIndex) const;
    /// A "&" in the text shows as such.
    void SetText(std::wstring_view name, std::wstring_view text, int index = kNoIndex);

    [[nodiscard]] bool IsEnabled(std::wstring_view name, int index = kNoIndex) const;
    [[nodiscard]] bool IsEnabled(int id) const;
    void Enable(std::wstring_view name, bool on, int index = kNoIndex);

    [[nodiscard]] bool IsChecked(std::wstring_view name, int index = kNoIndex) const;
    void Check(std::wstring_view name, bool on, int index = kNoIndex);

    /// Marks one entry of a control array and takes the mark from the others.
    void CheckOnly(std::wstring_view name, int index);

    [[nodiscard]] bool IsShown(std::wstring_view name, int index = kNoIndex) const;
    /// A hidden entry is not in the menu; shown again it is in its old place.
    void Show(std::wstring_view name, bool on, int index = kNoIndex);

    /// Opens the menu below the named entry at the mouse and gives the id that was chosen, 0 for
    /// none. `defaultName` is shown in bold type.
    int PopUp(HWND owner, std::wstring_view name, std::wstring_view defaultName);

    /// The entry with an id, or nothing.
    [[nodiscard]] const MenuItemData* Find(int id) const noexcept;

    /// Whether the user could choose an entry now.
    [[nodiscard]] bool IsAvailable(const MenuItemData& item) const noexcept;

    /// Where an entry is on the screen while its menu is open; empty otherwise.
    [[nodiscard]] RECT PlaceOf(const MenuItemData& item) const noexcept;

    /// Its name in the menu's language.
    [[nodiscard]] std::wstring_view NameOf(const MenuItemData& item) const noexcept {
        return item.NameIn(language_);
    }

  private:
    struct Entry {
        const MenuItemData* data = nullptr;
        HMENU parent = nullptr;
        HMENU below = nullptr;  ///< what opens from it
        std::wstring text;
        bool enabled = true;
        bool checked = false;
        bool shown = true;
    };

    [[nodiscard]] const Entry& At(std::wstring_view name, int index) const;
    [[nodiscard]] Entry& At(std::wstring_view name, int index);
    void Insert(const Entry& entry);
    void Redraw(const Entry& entry) const noexcept;

    MenuHandle root_;
    HWND window_ = nullptr;
    Language language_;
    std::vector<Entry> entries_;
};

}  // namespace vw
