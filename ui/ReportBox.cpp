#include "ui/ReportBox.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/TextDirection.h"
#include "ui/Subclass.h"

namespace vw {

namespace {

constexpr WPARAM kUnlimited = 0x7FFFFFFE;

std::wstring SelectedText(HWND box) {
    DWORD from = 0;
    DWORD to = 0;
    SendMessageW(box, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(box)), L'\0');
    GetWindowTextW(box, text.data(), static_cast<int>(text.size()) + 1);
    return from < to && from < text.size() ? text.substr(from, to - from) : std::wstring();
}

void PutOnClipboard(HWND owner, const std::wstring& text) {
    if (OpenClipboard(owner) == 0) return;
    EmptyClipboard();
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (memory != nullptr) {
        std::memcpy(GlobalLock(memory), text.c_str(), bytes);
        GlobalUnlock(memory);
        // The clipboard owns it from here on.
        if (SetClipboardData(CF_UNICODETEXT, memory) == nullptr) GlobalFree(memory);
    }
    CloseClipboard();
}

LRESULT OnReport(HWND box, UINT message, WPARAM wParam, LPARAM lParam, void*) {
    // A text of many lines takes Tab, Enter and Esc for its own. Nobody writes into a report, so
    // they mean what they mean everywhere else in the form.
    if (message == WM_GETDLGCODE) return DLGC_WANTARROWS;
    if (message != WM_COPY) return CallControl(box, message, wParam, lParam);
    const std::wstring selected = SelectedText(box);
    if (!selected.empty()) PutOnClipboard(box, WithoutMarks(selected));
    return 0;
}

}  // namespace

void ReportBox::Prepare(HWND box) {
    SendMessageW(box, EM_SETLIMITTEXT, kUnlimited, 0);
    Subclass(box, OnReport, nullptr);
}

void ReportBox::Append(HWND box, std::wstring_view lines, Language language) {
    const std::wstring added =
        language == Language::Arabic ? MarkReport(lines) : std::wstring(lines);
    const auto end = static_cast<WPARAM>(GetWindowTextLengthW(box));
    SendMessageW(box, EM_SETSEL, end, static_cast<LPARAM>(end));
    SendMessageW(box, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(added.c_str()));
}

}  // namespace vw
