#pragma once

#include <span>
#include <string_view>

#include "platform/Language.h"
#include "ui/Layout.h"
#include "ui/MenuData.h"

namespace vw {

enum class ControlKind {
    Label,
    Heading,  ///< label in semibold type above a list
    Picture,  ///< shows one icon
    Button,
    CheckBox,
    DropDown,  ///< choice from a list, no typing
    ListView,
    ScrollBar,  ///< upright; its upper arrow means more
    ToolBar,
    ProgressBar,
    Report,  ///< text of many lines that only the program writes
    // What follows has no window of its own.
    Timer,
    Images,
    FileDialog,
};

/// Where a progress bar is full.
inline constexpr int kProgressMaximum = 100;

/// How large the sign of a status line's warning is, at 96 DPI.
inline constexpr int kStatusSign = 16;

/// One face at one size, in points. A face that the system lacks is replaced by that of its
/// message boxes.
struct FontData {
    std::wstring_view face;
    int points = 9;
    bool bold = false;
    bool hasArabic = false;  ///< shows Arabic text in a face that may lack its letters
};

/// The faces of the English and of the Arabic form.
struct FontPair {
    FontData english;
    FontData arabic;

    [[nodiscard]] constexpr const FontData& In(Language language) const noexcept {
        return language == Language::Arabic ? arabic : english;
    }
};

enum class ColumnKind {
    Text,
    Number,  ///< at the side where numbers end
    Path,    ///< reads from left to right in every language
};

/// Whether the cells of a column end at the side where reading ends: numbers, which end at the
/// right in every language, in a window that reads from left to right.
[[nodiscard]] constexpr bool EndsAtFarSide(ColumnKind kind, Language language) noexcept {
    return kind == ColumnKind::Number && language == Language::English;
}

/// A column of a list view. The program finds it by its key, never by its position.
struct ColumnData {
    std::wstring_view key;
    Texts header{};
    ColumnKind kind = ColumnKind::Text;
    int width = 100;       ///< at 96 DPI; while the list is empty, at least
    bool mayHide = false;  ///< is left to the scroll bar before a path becomes unreadable
};

/// A button of a toolbar. The program finds it by its key.
struct ToolButtonData {
    std::wstring_view key;
    int id = 0;
    int icon = 0;
    int arabicIcon = 0;  ///< turned round for reading from right to left; 0: the same
    Texts text{};
    Texts tip{};
    bool beginsGroup = false;  ///< with a line before it
    bool showText = false;     ///< with its text beside the icon
    int accentIcon = 0;        ///< not 0: the one accented button, and its icon on that colour
};

/// One control, for both languages at once.
struct ControlData {
    std::wstring_view name;
    int index = kNoIndex;  ///< position in a control array
    int id = 0;
    ControlKind kind = ControlKind::Label;
    Texts text{};
    FontPair font{};
    Bounds place{};
    ResizeWeights flow{};
    bool hidden = false;
    bool centred = false;
    bool oneLine = false;       ///< a label whose text is centred vertically, beside a field
    bool framed = false;        ///< a label that looks like a field to write in
    bool path = false;          ///< a label on one line; a long path loses its middle
    bool accent = false;        ///< a label in the colour of what is selected
    bool statusLine = false;    ///< a label along the lower edge; see Form::SetAlert
    bool acceptsFiles = false;  ///< files may be dropped onto a list
    bool firstFocus = false;    ///< takes the keyboard when the form opens
    int icon = 0;               ///< of a picture or of one image
    int interval = 0;           ///< of a timer, in milliseconds
    int lowest = 0;             ///< of a scroll bar: the numbers that the user can choose
    int highest = 0;
    std::wstring_view wheelLabel{};  ///< of a scroll bar: the wheel works over this label, too
    int opens = 0;                   ///< while it is shown, the form is this much taller, at 96 DPI
    Texts tip{};
    Texts spokenName{};  ///< for screen readers, where no label before it names it
    Texts emptyText{};   ///< what a list without rows says
    std::span<const ColumnData> columns{};
    std::span<const ToolButtonData> buttons{};
};

enum class FormKind {
    Main,    ///< can be sized in every way
    Dialog,  ///< can be sized and minimised
    Box,     ///< has a fixed size
    Hidden,  ///< never shown
};

/// A key that runs a menu entry, or replaces a click on the status line.
struct AcceleratorData {
    char16_t key = 0;  ///< a capital letter, or a function key
    bool control = false;
    int id = 0;
};

/// F1 to F24 as a key.
[[nodiscard]] constexpr char16_t FunctionKey(int number) noexcept {
    constexpr int kBeforeF1 = 0x6F;
    return static_cast<char16_t>(kBeforeF1 + number);
}

/// A form: a window with its controls and its menu, for both languages at once.
struct FormData {
    std::wstring_view name;
    Texts className{};
    Texts caption{};
    FormKind kind = FormKind::Main;
    Size design{};   ///< inner size that the places are written for; the form gets no smaller
    Size initial{};  ///< inner size when it opens
    int icon = 0;
    std::span<const ControlData> controls{};
    MenuData menu{};
    bool menuBar = false;  ///< false: the menu only pops up
    std::span<const AcceleratorData> accelerators{};
    std::wstring_view defaultButton{};  ///< what Enter presses
    std::wstring_view escapeButton{};   ///< what Esc presses
};

}  // namespace vw
