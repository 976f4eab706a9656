#include "tests/support/EarlierWorkingName.h"

#include <algorithm>
#include <array>
#include <cstddef>

// As that version had it, to the letter: what it writes must be read, and what it reads must not be
// written any more.

namespace vw::test::earlier {
namespace {

constexpr std::size_t kMaxFirstName = 60;
constexpr std::size_t kDateDigits = 14;

struct StateWord {
    WorkingState state;
    std::wstring_view text;
};

constexpr std::array kStateWords{
    StateWord{WorkingState::New, L".vwnew"},
    StateWord{WorkingState::Ready, L".vwready"},
    StateWord{WorkingState::Old, L".vwold"},
};

constexpr bool IsHighSurrogate(wchar_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }

/// What no file name may hold, and the marks of a copy's name.
constexpr bool IsUnfit(wchar_t character) noexcept {
    return character < L' ' ||
           std::wstring_view(L"\\/:*?\"<>|\u00AB\u00BB").find(character) != std::wstring_view::npos;
}

std::wstring FitFirstName(std::wstring_view firstName) {
    std::wstring fit(firstName.substr(0, kMaxFirstName));
    if (fit.size() < firstName.size() && IsHighSurrogate(fit.back())) {
        fit.pop_back();
    }
    std::replace_if(fit.begin(), fit.end(), IsUnfit, L'_');
    for (auto last = fit.rbegin(); last != fit.rend() && (*last == L'.' || *last == L' '); ++last) {
        *last = L'_';
    }
    return fit;
}

void AppendDigits(std::wstring& text, std::int64_t number, std::size_t width) {
    const std::wstring digits = std::to_wstring(number);
    text.append(width - std::min(width, digits.size()), L'0');
    text += digits;
}

std::wstring DateDigits(Date date) {
    std::wstring digits;
    if (date == kNoDate) {
        digits.assign(kDateDigits, L'0');
        return digits;
    }
    const DateParts parts = PartsOf(std::clamp(date, kFirstDate, kLastDate));
    AppendDigits(digits, parts.year, 4);
    for (const int part : {parts.month, parts.day, parts.hour, parts.minute, parts.second}) {
        AppendDigits(digits, part, 2);
    }
    return digits;
}

void AppendHex(std::wstring& text, std::uint64_t number, std::size_t width) {
    constexpr std::wstring_view kDigits = L"0123456789abcdef";
    for (std::size_t i = width; i > 0; --i) {
        text += kDigits[(number >> (4 * (i - 1))) & 0xFU];
    }
}

/// Takes the fields of a name from its right end. Once a field is wrong, all further ones are.
class RightReader {
  public:
    explicit RightReader(std::wstring_view name) noexcept : rest_(name) {}

    [[nodiscard]] bool IsGood() const noexcept { return isGood_; }
    [[nodiscard]] std::wstring_view Rest() const noexcept { return rest_; }

    /// The last `width` characters and the "-" before them.
    std::wstring_view TakeField(std::size_t width) noexcept {
        isGood_ = isGood_ && rest_.size() > width && rest_[rest_.size() - width - 1] == L'-';
        if (!isGood_) {
            return {};
        }
        const std::wstring_view field = rest_.substr(rest_.size() - width);
        rest_.remove_suffix(width + 1);
        return field;
    }

    std::uint64_t TakeHex(std::size_t width) noexcept {
        std::uint64_t number = 0;
        for (const wchar_t digit : TakeField(width)) {
            const bool isDecimal = digit >= L'0' && digit <= L'9';
            const bool isLetter = digit >= L'a' && digit <= L'f';
            isGood_ = isGood_ && (isDecimal || isLetter);
            number = number * 16 +
                     static_cast<std::uint64_t>(isDecimal ? digit - L'0' : digit - L'a' + 10);
        }
        return number;
    }

    Date TakeDate() {
        const std::wstring_view digits = TakeField(kDateDigits);
        const bool isNumber = std::all_of(digits.begin(), digits.end(), [](wchar_t digit) {
            return digit >= L'0' && digit <= L'9';
        });
        isGood_ = isGood_ && isNumber;
        if (!isGood_ || digits == DateDigits(kNoDate)) {
            return kNoDate;
        }
        const auto number = [digits](std::size_t from, std::size_t count) {
            int value = 0;
            for (const wchar_t digit : digits.substr(from, count)) {
                value = value * 10 + (digit - L'0');
            }
            return value;
        };
        const DateParts parts{number(0, 4), number(4, 2),  number(6, 2),
                              number(8, 2), number(10, 2), number(12, 2)};
        // Looked at before the date is made: what rolls over the first or the last year throws an
        // error there.
        isGood_ = parts.year >= 100 && parts.month >= 1 && parts.month <= 12 && parts.day >= 1 &&
                  parts.day <= 31 && parts.hour <= 23 && parts.minute <= 59 && parts.second <= 59;
        const Date date = isGood_ ? MakeDate(parts) : kNoDate;
        isGood_ = isGood_ && DateDigits(date) == digits;
        return date;
    }

  private:
    std::wstring_view rest_;
    bool isGood_ = true;
};

}  // namespace

std::wstring FormatWorkingName(const WorkingName& name, std::wstring_view firstName) {
    std::wstring text = FitFirstName(firstName);
    for (const StateWord& word : kStateWords) {
        if (word.state == name.state) {
            text += word.text;
        }
    }
    const auto appendHex = [&text](std::uint64_t number, std::size_t width) {
        text += L'-';
        AppendHex(text, number, width);
    };
    appendHex(name.item, 16);
    appendHex(name.copy, 16);
    text += L'-';
    text += DateDigits(name.date);
    appendHex(name.owner.computer, 8);
    appendHex(name.owner.processId, 8);
    appendHex(name.owner.processStart, 16);
    return text;
}

std::optional<WorkingName> ParseWorkingName(std::wstring_view name) {
    WorkingName parsed;
    RightReader reader(name);
    parsed.owner.processStart = reader.TakeHex(16);
    parsed.owner.processId = static_cast<std::uint32_t>(reader.TakeHex(8));
    parsed.owner.computer = static_cast<std::uint32_t>(reader.TakeHex(8));
    parsed.date = reader.TakeDate();
    parsed.copy = reader.TakeHex(16);
    parsed.item = reader.TakeHex(16);
    if (!reader.IsGood()) {
        return std::nullopt;
    }
    for (const StateWord& word : kStateWords) {
        if (!reader.Rest().ends_with(word.text)) {
            continue;
        }
        std::wstring_view firstName = reader.Rest();
        firstName.remove_suffix(word.text.size());
        if (FitFirstName(firstName) != firstName) {
            return std::nullopt;
        }
        parsed.state = word.state;
        return parsed;
    }
    return std::nullopt;
}

}  // namespace vw::test::earlier
