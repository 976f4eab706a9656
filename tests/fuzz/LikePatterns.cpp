// Matching agrees with a plain recursive definition of the patterns.
#include "platform/TextCase.h"
#include "platform/Wildcards.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Guarantee;

namespace {

bool InList(std::wstring_view list, wchar_t character) {
    const wchar_t upper = vw::UpperCase(character);
    if (list.empty()) {
        return false;
    }
    if (list.size() >= 3 && list[1] == L'-') {
        return (vw::UpperCase(list[0]) <= upper && upper <= vw::UpperCase(list[2])) ||
               InList(list.substr(3), character);
    }
    return vw::UpperCase(list[0]) == upper || InList(list.substr(1), character);
}

/// `steps` bounds the work: the definition takes too long for many stars.
bool Defined(std::wstring_view text, std::wstring_view pattern, int& steps) {
    if (--steps < 0) {
        return false;
    }
    if (pattern.empty()) {
        return text.empty();
    }
    const std::wstring_view rest = pattern.substr(1);
    switch (pattern.front()) {
        case L'*':
            return Defined(text, rest, steps) ||
                   (!text.empty() && Defined(text.substr(1), pattern, steps));
        case L'?':
            return !text.empty() && Defined(text.substr(1), rest, steps);
        case L'#':
            return !text.empty() && text.front() >= L'0' && text.front() <= L'9' &&
                   Defined(text.substr(1), rest, steps);
        case L'[': {
            const std::size_t close = rest.find(L']');
            if (close == std::wstring_view::npos) {
                break;
            }
            const std::wstring_view list = rest.substr(0, close);
            const std::wstring_view behind = rest.substr(close + 1);
            if (list.empty()) {
                return Defined(text, behind, steps);
            }
            const bool isNegated = list.size() > 1 && list.front() == L'!';
            return !text.empty() &&
                   InList(list.substr(isNegated ? 1 : 0), text.front()) != isNegated &&
                   Defined(text.substr(1), behind, steps);
        }
        default:
            break;
    }
    return !text.empty() && vw::UpperCase(text.front()) == vw::UpperCase(pattern.front()) &&
           Defined(text.substr(1), rest, steps);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    const std::wstring text = input.Text();
    const std::wstring pattern = input.RestAsText();

    const bool matches = vw::MatchesWildcard(text, pattern);
    if (pattern.size() < 200 && text.size() < 200) {
        int steps = 20000;
        const bool expected = Defined(text, pattern, steps);
        Guarantee(steps < 0 || matches == expected, "matching agrees with its definition");
    }
    Guarantee(
        vw::MatchesWildcard(text, L"*" + text) || text.find_first_of(L"[#") != std::wstring::npos,
        "a text without lists and digit signs matches itself");
    return 0;
}
