#include "ui/DisplayText.h"

#include <algorithm>

#include "platform/TextDirection.h"

namespace vw {

namespace {

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
