#pragma once

#include <span>
#include <string_view>

#include "platform/Language.h"

namespace vw {

/// Index of an entry or control that belongs to no array.
inline constexpr int kNoIndex = -1;

/// One line of a menu, in the order of the menu.
struct MenuItemData {
    std::wstring_view name;
    int index = kNoIndex;  ///< position in a control array
    int id = 0;
    Texts caption{};
    int level = 0;  ///< 0 for the menu bar, 1 for what opens below it
    bool separator = false;
    bool hidden = false;
    bool radio = false;              ///< its mark is a dot: one of several that exclude each other
    std::wstring_view arabicName{};  ///< where the Arabic window calls it otherwise
    Texts tip{};                     ///< shown beside the entry while it is highlighted

    [[nodiscard]] constexpr std::wstring_view NameIn(Language language) const noexcept {
        return language == Language::Arabic && !arabicName.empty() ? arabicName : name;
    }
};

using MenuData = std::span<const MenuItemData>;

}  // namespace vw
