#include "ui/DisplayText.h"

#include <algorithm>

namespace vw {

namespace {

constexpr wchar_t kLeftToRightMark = 0x200E;
constexpr wchar_t kBeginLeftToRight = 0x202A;
constexpr wchar_t kEndDirection = 0x202C;

// Hebrew, Arabic, Syriac, Thaana, N'Ko and the forms of their letters that fonts keep apart.
bool IsRightToLeft(wchar_t unit) noexcept {
    return (unit >= 0x0590 && unit <= 0x08FF && !(unit >= 0x0660 && unit <= 0x0669)) ||
           (unit >= 0xFB1D && unit <= 0xFDFF) || (unit >= 0xFE70 && unit <= 0xFEFE);
}

bool IsLeftToRightLetter(wchar_t unit) noexcept {
    return (unit >= L'A' && unit <= L'Z') || (unit >= L'a' && unit <= L'z') ||
           (unit >= 0x00C0 && unit <= 0x058F) || (unit >= 0x0900 && unit <= 0x1FFF) ||
           (unit >= 0x2C00 && unit <= 0xFB1C);
}

std::wstring Enclosed(std::wstring_view text) {
    std::wstring enclosed;
    enclosed.reserve(text.size() + 2);
    enclosed += kBeginLeftToRight;
    enclosed += text;
    enclosed += kEndDirection;
    return enclosed;
}

constexpr wchar_t kEllipsis = 0x2026;

// The longest beginning of `head` that leaves room for "…" and `tail`; the whole text then fits.
// A pair of surrogates is never cut in two.
std::wstring Joined(std::wstring_view head, std::wstring_view tail, int room,
                    const Measure& widthOf) {
    std::size_t fits = 0;
    std::size_t tooLong = head.size() + 1;
    const auto joined = [&](std::size_t length) {
        std::wstring text(head.substr(0, length));
        text += kEllipsis;
        text += tail;
        return text;
    };
    while (fits + 1 < tooLong) {
        const std::size_t middle = fits + (tooLong - fits) / 2;
        (widthOf(joined(middle)) <= room ? fits : tooLong) = middle;
    }
    if (fits > 0 && head[fits - 1] >= 0xD800 && head[fits - 1] <= 0xDBFF) --fits;
    return joined(fits);
}

}  // namespace

bool HasRightToLeft(std::wstring_view text) noexcept {
    return std::any_of(text.begin(), text.end(), IsRightToLeft);
}

std::wstring PathForDisplay(std::wstring_view path, bool rightToLeft) {
    if (path.empty() || !(rightToLeft || HasRightToLeft(path))) return std::wstring(path);
    std::wstring marked;
    marked.reserve(path.size() * 2);
    for (const wchar_t unit : path) {
        marked += unit;
        if (unit == L'\\') marked += kLeftToRightMark;
    }
    return rightToLeft ? Enclosed(marked) : marked;
}

std::wstring TextForDisplay(std::wstring_view text, bool rightToLeft) {
    if (!rightToLeft || text.empty()) return std::wstring(text);
    const auto strong = std::find_if(text.begin(), text.end(), [](wchar_t unit) {
        return IsRightToLeft(unit) || IsLeftToRightLetter(unit);
    });
    if (strong != text.end() && IsRightToLeft(*strong)) return std::wstring(text);
    return Enclosed(text);
}

std::wstring Shortened(std::wstring_view text, int room, const Measure& widthOf) {
    if (widthOf(text) <= room) return std::wstring(text);
    // A folder's path ends in "\\", which belongs to its name.
    const std::size_t slash =
        text.size() < 2 ? std::wstring_view::npos : text.rfind(L'\\', text.size() - 2);
    if (LooksLikePath(text) && slash != std::wstring_view::npos) {
        std::wstring shortened = Joined(text.substr(0, slash), text.substr(slash), room, widthOf);
        if (widthOf(shortened) <= room) return shortened;
    }
    return Joined(text, {}, room, widthOf);
}

bool LooksLikePath(std::wstring_view text) noexcept {
    return (text.size() >= 3 && text[1] == L':' && text[2] == L'\\') || text.starts_with(L"\\\\");
}

}  // namespace vw
