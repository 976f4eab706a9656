#include "ui/DisplayText.h"

#include <algorithm>

#include "platform/TextDirection.h"

namespace vw {

namespace {

std::wstring_view WithoutBlanksBehind(std::wstring_view text) {
    return text.substr(0, text.find_last_not_of(L' ') + 1);
}

constexpr wchar_t kEllipsis = 0x2026;

std::wstring Joined(std::wstring_view head, std::wstring_view tail) {
    std::wstring text(head);
    text += kEllipsis;
    text += tail;
    return text;
}

// The longest beginning of `head` that leaves room for "…" and `tail`; empty where not even those
// fit. A pair of surrogates is never cut in two.
std::wstring_view FittingHead(std::wstring_view head, std::wstring_view tail, int room,
                              const Measure& widthOf) {
    std::size_t fits = 0;
    std::size_t tooLong = head.size() + 1;
    while (fits + 1 < tooLong) {
        const std::size_t middle = fits + (tooLong - fits) / 2;
        (widthOf(Joined(head.substr(0, middle), tail)) <= room ? fits : tooLong) = middle;
    }
    if (fits > 0 && head[fits - 1] >= 0xD800 && head[fits - 1] <= 0xDBFF) --fits;
    return head.substr(0, fits);
}

// Between folders that run from left to right, "…" would come before the beginning of a folder
// with a right-to-left name and not behind what is left of it: such a folder goes as a whole.
std::wstring_view WithoutCutFolder(std::wstring_view head) {
    const std::size_t folder = head.rfind(L'\\') + 1;
    return PhraseReadsFromRight(head.substr(folder)) ? head.substr(0, folder) : head;
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

std::wstring Shorten(std::wstring_view text, int room, const Measure& widthOf) {
    if (widthOf(text) <= room) return std::wstring(text);
    // A folder's path ends in "\\", which belongs to its name.
    const std::size_t slash =
        text.size() < 2 ? std::wstring_view::npos : text.rfind(L'\\', text.size() - 2);
    if (IsPathLike(text) && slash != std::wstring_view::npos) {
        const std::wstring_view tail = text.substr(slash);
        const std::wstring_view head =
            WithoutCutFolder(FittingHead(text.substr(0, slash), tail, room, widthOf));
        std::wstring shortened = Joined(head, tail);
        if (widthOf(shortened) <= room) return shortened;
        // The name says more than the drive.
        shortened = Joined({}, tail);
        return Joined(FittingHead(shortened, {}, room, widthOf), {});
    }
    return Joined(FittingHead(text, {}, room, widthOf), {});
}

bool IsShownAsPath(std::wstring_view text) noexcept {
    return IsPathLike(text) || (text.size() > 1 && text[0] == kEllipsis && text[1] == L'\\');
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
