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
struct MessageBoxRequest {
    std::wstring text;
    std::wstring title = std::wstring(kApplicationTitle);
    BoxButtons buttons = BoxButtons::Ok;
    BoxIcon icon = BoxIcon::None;
    bool rightToLeft = false;      ///< right-aligned, read from right to left
    bool secondIsDefault = false;  ///< No is the default button of a Yes/No question
};

/// Tells and asks the user. In a silent run nothing waits for an answer: see Win32MessageBoxes.
class MessageBoxes {
  public:
    MessageBoxes() = default;
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;
    virtual ~MessageBoxes() = default;

    /// Shows a box and gives the button that closed it.
    virtual BoxAnswer Show(const MessageBoxRequest& content) = 0;
};

}  // namespace vw
