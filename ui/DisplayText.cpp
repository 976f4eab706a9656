#include "ui/DisplayText.h"

#include <algorithm>

namespace vw {

namespace {

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

std::wstring_view WithoutBlanksBehind(std::wstring_view text) {
    return text.substr(0, text.find_last_not_of(L' ') + 1);
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

bool NameReadsFromRight(std::wstring_view name) noexcept {
    const auto letter = std::find_if(name.begin(), name.end(), [](wchar_t unit) {
        return IsRightToLeft(unit) || IsLeftToRightLetter(unit);
    });
    return letter != name.end() && IsRightToLeft(*letter);
}

bool PhraseReadsFromRight(std::wstring_view phrase) noexcept {
    return std::any_of(phrase.begin(), phrase.end(), IsRightToLeft);
}

bool LooksLikePath(std::wstring_view text) noexcept {
    return (text.size() >= 3 && text[1] == L':' && text[2] == L'\\') || text.starts_with(L"\\\\");
}

std::vector<std::wstring_view> PathPieces(std::wstring_view path) {
    std::vector<std::wstring_view> pieces;
    while (!path.empty()) {
        const std::size_t length = std::min(path.find(L'\\'), path.size() - 1) + 1;
        pieces.push_back(path.substr(0, length));
        path.remove_prefix(length);
    }
    return pieces;
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

std::vector<std::wstring> Wrapped(std::wstring_view text, int room, const Measure& widthOf) {
    std::vector<std::wstring> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        std::wstring_view paragraph = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (paragraph.ends_with(L'\r')) paragraph.remove_suffix(1);
        std::wstring line;
        while (!paragraph.empty()) {
            // A word with the blanks behind it.
            std::size_t length = std::min(paragraph.find(L' '), paragraph.size());
            length = std::min(paragraph.find_first_not_of(L' ', length), paragraph.size());
            const std::wstring_view word = paragraph.substr(0, length);
            paragraph.remove_prefix(length);
            const std::wstring longer = line + std::wstring(WithoutBlanksBehind(word));
            if (!line.empty() && widthOf(longer) > room) {
                lines.emplace_back(WithoutBlanksBehind(line));
                line.clear();
            }
            line += word;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

}  // namespace vw
