#include "fsutil/WorkingName.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/Digits.h"
#include "platform/Hash.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

// An entry's name, from left to right:
//   <beginning of the item's name>.vw<state>-<item>-<copy>-<date>-<computer>-<process>-<start>
// A ready copy has one more date behind the first, the time when it was made, unless an earlier
// version of the program wrote it; its state word also states whether it is whole. Keys and the
// process are lower-case hexadecimal numbers of full width, the date is yyyymmddhhmmss or zeros for
// none. The parts have fixed lengths, so the name is taken apart from its right end, whatever the
// item's own name looks like. Only what this file would write itself is taken for a working name,
// since such entries may be deleted.

// What earlier versions wrote of the item's name, in UTF-16 units.
constexpr std::size_t kMaxFirstName = 60;
// What is written now, in bytes of UTF-8. Shares that encrypt the names of files take 143 bytes for
// a name; the parts behind the item's name need 107 of them and the ending of a comment 4.
constexpr std::size_t kMaxFirstNameBytes = 32;
constexpr std::size_t kDateDigits = 14;

struct StateWord {
    WorkingState state;
    Completeness completeness;
    std::wstring_view text;
};

constexpr std::array kStateWords{
    StateWord{WorkingState::New, Completeness::Whole, L".vwnew"},
    StateWord{WorkingState::Ready, Completeness::Whole, L".vwready"},
    StateWord{WorkingState::Ready, Completeness::MissesFiles, L".vwpart"},
    StateWord{WorkingState::Ready, Completeness::CutShort, L".vwcut"},
    StateWord{WorkingState::Old, Completeness::Whole, L".vwold"},
};

constexpr bool IsHighSurrogate(wchar_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }

/// What no file name may hold, and the marks of a copy's name.
constexpr bool IsUnfit(wchar_t character) noexcept {
    return character < L' ' ||
           std::wstring_view(L"\\/:*?\"<>|\u00AB\u00BB").find(character) != std::wstring_view::npos;
}

constexpr bool IsSurrogate(wchar_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDFFF; }

/// Bytes of UTF-8 that a unit takes; half of a surrogate pair takes half of the pair's.
constexpr std::size_t Utf8Bytes(wchar_t unit) noexcept {
    if (unit < 0x80) return 1;
    return unit < 0x800 || IsSurrogate(unit) ? 2 : 3;
}

/// The beginning of a name that a working name has room for.
std::wstring_view Shorten(std::wstring_view firstName) {
    std::size_t units = 0;
    std::size_t bytes = 0;
    while (units < firstName.size()) {
        bytes += Utf8Bytes(firstName[units]);
        if (bytes > kMaxFirstNameBytes) break;
        ++units;
    }
    const bool cutsPair =
        units > 0 && units < firstName.size() && IsHighSurrogate(firstName[units - 1]);
    return firstName.substr(0, cutsPair ? units - 1 : units);
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
            const bool isDecimal = IsDigit(digit);
            const bool isLetter = digit >= L'a' && digit <= L'f';
            isGood_ = isGood_ && (isDecimal || isLetter);
            number = number * 16 +
                     static_cast<std::uint64_t>(isDecimal ? digit - L'0' : digit - L'a' + 10);
        }
        return number;
    }

    Date TakeDate() {
        const std::wstring_view digits = TakeField(kDateDigits);
        const bool isNumber = std::all_of(digits.begin(), digits.end(), IsDigit);
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

/// Takes a name apart that has the time of making, or one that has none.
std::optional<WorkingName> ParseForm(std::wstring_view name, bool hasMade) {
    WorkingName parsed;
    RightReader reader(name);
    parsed.owner.processStart = reader.TakeHex(16);
    parsed.owner.processId = static_cast<std::uint32_t>(reader.TakeHex(8));
    parsed.owner.computer = static_cast<std::uint32_t>(reader.TakeHex(8));
    if (hasMade) parsed.made = reader.TakeDate();
    parsed.date = reader.TakeDate();
    parsed.copy = reader.TakeHex(16);
    parsed.item = reader.TakeHex(16);
    if (!reader.IsGood() || hasMade != (parsed.made != kNoDate)) {
        return std::nullopt;
    }
    for (const StateWord& word : kStateWords) {
        if (!reader.Rest().ends_with(word.text)) {
            continue;
        }
        std::wstring_view firstName = reader.Rest();
        firstName.remove_suffix(word.text.size());
        const bool mayHaveMade = word.state == WorkingState::Ready;
        const bool needsMade = word.completeness != Completeness::Whole;
        if (FitFirstName(firstName) != firstName || (hasMade && !mayHaveMade) ||
            (needsMade && !hasMade)) {
            return std::nullopt;
        }
        parsed.state = word.state;
        parsed.completeness = word.completeness;
        return parsed;
    }
    return std::nullopt;
}

}  // namespace

std::uint64_t NameKey(std::wstring_view path) {
    if (path.ends_with(L'\\')) {
        path.remove_suffix(1);
    }
    Fnv64 key;
    for (const wchar_t character : path) {
        const auto unit = static_cast<std::uint64_t>(UpperCase(character));
        key.Add(unit & 0xFFU);
        key.Add((unit >> 8U) & 0xFFU);
    }
    return key.Value();
}

std::wstring FormatWorkingName(const WorkingName& name, std::wstring_view firstName) {
    std::wstring text = FitFirstName(Shorten(firstName));
    for (const StateWord& word : kStateWords) {
        if (word.state == name.state && word.completeness == name.completeness) {
            text += word.text;
        }
    }
    const auto appendHex = [&text](std::uint64_t number, std::size_t width) {
        text += L'-';
        text += ToHex(number, width);
    };
    appendHex(name.item, 16);
    appendHex(name.copy, 16);
    text += L'-';
    text += DateDigits(name.date);
    if (name.made != kNoDate) {
        text += L'-';
        text += DateDigits(name.made);
    }
    appendHex(name.owner.computer, 8);
    appendHex(name.owner.processId, 8);
    appendHex(name.owner.processStart, 16);
    return text;
}

std::optional<WorkingName> ParseWorkingName(std::wstring_view name) {
    const auto parsed = ParseForm(name, true);
    return parsed ? parsed : ParseForm(name, false);
}

bool IsOwnEntry(std::wstring_view name) {
    // Every file of a source is asked about, so the common case has to be cheap.
    if (name.find(L".vw") == std::wstring_view::npos) {
        return false;
    }
    if (name.starts_with(kLockFileName)) {
        return true;
    }
    if (name.ends_with(kCommentExtension)) {
        name.remove_suffix(kCommentExtension.size());
    }
    return ParseWorkingName(name).has_value();
}

}  // namespace vw
