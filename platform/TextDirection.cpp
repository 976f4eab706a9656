#include "platform/TextDirection.h"

#include <algorithm>

#include "platform/Digits.h"

namespace vw {

namespace {

constexpr wchar_t kLeftToRightMark = 0x200E;
constexpr wchar_t kRightToLeftMark = 0x200F;
constexpr wchar_t kLeftToRightEmbedding = 0x202A;
constexpr wchar_t kRightToLeftEmbedding = 0x202B;
constexpr wchar_t kEndOfEmbedding = 0x202C;

bool IsArabicDigit(wchar_t unit) noexcept { return unit >= 0x0660 && unit <= 0x0669; }

// Hebrew, Arabic, Syriac, Thaana, N'Ko and the forms of their letters that fonts keep apart.
bool IsRightToLeft(wchar_t unit) noexcept {
    return (unit >= 0x0590 && unit <= 0x08FF && !IsArabicDigit(unit)) ||
           (unit >= 0xFB1D && unit <= 0xFDFF) || (unit >= 0xFE70 && unit <= 0xFEFE);
}

bool IsLeftToRightLetter(wchar_t unit) noexcept {
    return (unit >= L'A' && unit <= L'Z') || (unit >= L'a' && unit <= L'z') ||
           (unit >= 0x00C0 && unit <= 0x058F && unit != 0x00D7 && unit != 0x00F7) ||
           (unit >= 0x0900 && unit <= 0x1FFF) || (unit >= 0x2C00 && unit <= 0x2DFF) ||
           (unit >= 0x3040 && unit <= 0xFB1C);
}

// Letters outside the first plane come as two units. Scripts from right to left are among them.
bool MayReadFromRight(wchar_t unit) noexcept {
    return IsRightToLeft(unit) || IsArabicDigit(unit) || (unit >= 0xD800 && unit <= 0xDFFF);
}

// Whether a right-to-left text shows this one in the order of a left-to-right text: it is all of
// one direction and has nothing at its ends that would move to the other side.
bool KeepsItsOrder(std::wstring_view text) noexcept {
    if (std::any_of(text.begin(), text.end(), MayReadFromRight)) return false;
    const auto letter = std::find_if_not(text.begin(), text.end(), IsDigit);
    if (letter == text.end()) return true;
    return IsLeftToRightLetter(*letter) &&
           (IsLeftToRightLetter(text.back()) || IsDigit(text.back()));
}

// A text with each of its lines changed; the line ends stay.
template <typename Change>
std::wstring EachLine(std::wstring_view text, Change change) {
    std::wstring changed;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        changed += change(text.substr(0, end));
        text.remove_prefix(end);
        if (text.empty()) break;
        changed += text.front();
        text.remove_prefix(1);
    }
    return changed;
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

bool IsPathLike(std::wstring_view text) noexcept {
    return (text.size() >= 3 && text[1] == L':' && text[2] == L'\\') || text.starts_with(L"\\\\");
}

// Embedding alone would show two Arabic folders that follow each other in the wrong order.
std::wstring MarkPath(std::wstring_view path) {
    if (KeepsItsOrder(path)) return std::wstring(path);
    const bool mixed = std::any_of(path.begin(), path.end(), MayReadFromRight);
    std::wstring marked(1, kLeftToRightEmbedding);
    for (const wchar_t unit : path) {
        marked += unit;
        if (mixed && unit == L'\\') marked += kLeftToRightMark;
    }
    marked += kEndOfEmbedding;
    return marked;
}

std::wstring MarkName(std::wstring_view name) {
    return NameReadsFromRight(name) ? MarkSentence(name) : MarkPath(name);
}

std::wstring MarkLines(std::wstring_view text) {
    bool isName = false;
    return EachLine(text, [&isName](std::wstring_view line) {
        const bool readsFromLeft = IsPathLike(line) || !PhraseReadsFromRight(line) ||
                                   (isName && !NameReadsFromRight(line));
        // The line feed of a line end makes an empty line of its own.
        if (!line.empty()) isName = line.ends_with(L':');
        return readsFromLeft ? MarkPath(line) : std::wstring(line);
    });
}

std::wstring MarkTip(std::wstring_view lines) {
    return EachLine(lines, [](std::wstring_view line) {
        return IsPathLike(line) ? MarkPath(line) : MarkName(line);
    });
}

std::wstring MarkReport(std::wstring_view lines) {
    return EachLine(lines, [](std::wstring_view line) {
        if (line.find(L'\\') == std::wstring_view::npos) return MarkSentence(line);
        std::wstring marked;
        for (std::size_t i = 0; i < line.size(); ++i) {
            marked += line[i];
            if (line[i] == L'\\' && i + 1 < line.size() && MayReadFromRight(line[i + 1])) {
                marked += kLeftToRightMark;
            }
        }
        return marked;
    });
}

std::wstring WithoutMarks(std::wstring_view text) {
    std::wstring plain(text);
    std::erase_if(plain, [](wchar_t unit) {
        return unit == kLeftToRightMark || unit == kRightToLeftMark ||
               unit == kLeftToRightEmbedding || unit == kRightToLeftEmbedding ||
               unit == kEndOfEmbedding;
    });
    return plain;
}

std::wstring MarkSentence(std::wstring_view sentence) {
    const bool plain = std::all_of(sentence.begin(), sentence.end(), [](wchar_t unit) {
        return IsRightToLeft(unit) || unit == L' ';
    });
    if (plain || !PhraseReadsFromRight(sentence)) return std::wstring(sentence);
    std::wstring marked = kRightToLeftEmbedding + std::wstring(sentence);
    // A box breaks a long sentence, and shows the rest of it without the embedding.
    if (!IsRightToLeft(sentence.back())) marked += kRightToLeftMark;
    return marked + kEndOfEmbedding;
}

}  // namespace vw
