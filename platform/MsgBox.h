#pragma once

#include <string>
#include <string_view>

namespace vw {

/// Title of every box that has none of its own.
inline constexpr std::wstring_view kApplicationTitle = L"Vaultwright";

enum class BoxButtons { Ok, YesNo };
enum class BoxIcon { None, Exclamation };
enum class BoxAnswer { Ok, Yes, No };

/// One message box.
struct BoxContent {
    std::wstring text;
    std::wstring title = std::wstring(kApplicationTitle);
    BoxButtons buttons = BoxButtons::Ok;
    BoxIcon icon = BoxIcon::None;
    bool rightToLeft = false;      ///< right-aligned, read from right to left
    bool secondIsDefault = false;  ///< No is the default button of a Yes/No question
};

/// Tells and asks the user. In a silent run nothing waits for an answer: see UserBoxes.
class MsgBoxes {
  public:
    MsgBoxes() = default;
    MsgBoxes(const MsgBoxes&) = delete;
    MsgBoxes& operator=(const MsgBoxes&) = delete;
    virtual ~MsgBoxes() = default;

    /// Shows a box and gives the button that closed it.
    virtual BoxAnswer MsgBox(const BoxContent& content) = 0;
};

}  // namespace vw
