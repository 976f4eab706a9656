#pragma once

#include <string_view>

namespace vw {

/// Language of the windows, of messages and of report lines.
enum class Language { English, Arabic };

/// A text in both languages. The views point to literals.
struct Texts {
    std::wstring_view english;
    std::wstring_view arabic;

    [[nodiscard]] constexpr std::wstring_view In(Language language) const noexcept {
        return language == Language::Arabic ? arabic : english;
    }
};

/// A text that is the same in both languages.
[[nodiscard]] constexpr Texts Both(std::wstring_view text) noexcept { return {text, text}; }

}  // namespace vw
