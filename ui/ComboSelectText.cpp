#include "ui/ComboSelectText.h"

#include <string>

#include "platform/RuntimeError.h"

namespace vw::MFileDosShell {

namespace {

std::wstring EntryText(HWND comboBox, WPARAM index) {
    const LRESULT length = SendMessageW(comboBox, CB_GETLBTEXTLEN, index, 0);
    if (length == CB_ERR) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const LRESULT copied =
        SendMessageW(comboBox, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    text.resize(copied == CB_ERR ? 0 : static_cast<std::size_t>(copied));
    return text;
}

std::wstring EditText(HWND comboBox) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(comboBox)) + 1, L'\0');
    const int copied = GetWindowTextW(comboBox, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

}  // namespace

void ComboSelectText(HWND comboBox, std::wstring_view text, bool mustMatch) {
    // The box's own search (CB_FINDSTRINGEXACT) takes no notice of letter case.
    const LRESULT count = SendMessageW(comboBox, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        const auto index = static_cast<WPARAM>(i);
        if (EntryText(comboBox, index) == text) {
            SendMessageW(comboBox, CB_SETCURSEL, index, 0);
            return;
        }
    }
    if (mustMatch && EditText(comboBox) != text) Throw(error_number::kInvalidCall);
}

}  // namespace vw::MFileDosShell
