#include "engine/NameEncoding.h"

#include <cstddef>

#include "platform/Digits.h"

namespace vw {
namespace {

constexpr wchar_t kRunMark = L'\'';
constexpr wchar_t kUnitMark = L'u';
constexpr int kUnitDigits = 4;

constexpr wchar_t HexDigit(unsigned value) noexcept {
    return static_cast<wchar_t>(value < 10 ? L'0' + value : L'A' + (value - 10));
}

/// Value of a hexadecimal digit in either case; -1 for anything else.
constexpr int HexValue(wchar_t character) noexcept {
    if (IsDigit(character)) {
        return character - L'0';
    }
    if (character >= L'A' && character <= L'F') {
        return character - L'A' + 10;
    }
    if (character >= L'a' && character <= L'f') {
        return character - L'a' + 10;
    }
    return -1;
}

void AppendByte(std::wstring& text, unsigned char byte) {
    text += HexDigit(byte >> 4U);
    text += HexDigit(byte & 0x0FU);
}

void AppendUnit(std::wstring& text, wchar_t unit) {
    for (int digit = kUnitDigits - 1; digit >= 0; --digit) {
        text += kUnitMark;
        text += HexDigit((static_cast<unsigned>(unit) >> (4U * digit)) & 0x0FU);
    }
}

/// What represents one character in a run: its bytes when they lead back to it, else its unit.
void AppendToRun(std::wstring& text, wchar_t character, const AnsiCodec& ansi) {
    const std::wstring_view name(&character, 1);
    const std::string bytes = ansi.Encode(name);
    // The units mean the same under every code page.
    if (ansi.IsUnicode() || ansi.Decode(bytes) != name) {
        AppendUnit(text, character);
        return;
    }
    for (const char byte : bytes) {
        AppendByte(text, static_cast<unsigned char>(byte));
    }
}

/// Collects the pairs of one run. Bytes are turned into text together, since a character may take
/// more than one of them.
class RunDecoder {
  public:
    RunDecoder(std::wstring& text, const AnsiCodec& ansi) noexcept : text_(text), ansi_(ansi) {}

    /// `second` is 0 behind the end of the text; the first digit then counts alone.
    void Take(wchar_t first, wchar_t second) {
        const int low = HexValue(second);
        if (first == kUnitMark && low >= 0) {
            TakeUnitDigit(static_cast<unsigned>(low));
            return;
        }
        ForgetUnit();
        const int high = HexValue(first);
        if (high >= 0 && low >= 0) {
            bytes_ += static_cast<char>(high * 16 + low);
        } else if (high >= 0 && second == 0) {
            bytes_ += static_cast<char>(high);
        }
    }

    /// Ends the run, or the part of it that belongs together.
    void Finish() {
        ForgetUnit();
        if (!bytes_.empty()) {
            text_ += ansi_.Decode(bytes_);
            bytes_.clear();
        }
    }

  private:
    void TakeUnitDigit(unsigned digit) {
        unit_ = unit_ * 16 + digit;
        if (++unitDigits_ == kUnitDigits) {
            const auto unit = static_cast<wchar_t>(unit_);
            Finish();
            text_ += unit;
        }
    }

    void ForgetUnit() noexcept {
        unit_ = 0;
        unitDigits_ = 0;
    }

    std::wstring& text_;
    const AnsiCodec& ansi_;
    std::string bytes_;
    unsigned unit_ = 0;
    int unitDigits_ = 0;
};

constexpr bool IsSevenBit(wchar_t character) noexcept { return character < 0x80; }

}  // namespace

std::wstring EnglishNameFrom(std::wstring_view name, const AnsiCodec& ansi) {
    std::wstring text;
    text.reserve(name.size());
    bool inRun = false;
    for (const wchar_t character : name) {
        if (IsSevenBit(character) == inRun) {
            text += kRunMark;
            inRun = !inRun;
        }
        if (inRun) {
            AppendToRun(text, character, ansi);
        } else {
            text += character;
        }
    }
    return text;
}

std::wstring EnglishNameOrigin(std::wstring_view text, const AnsiCodec& ansi) {
    std::wstring name;
    name.reserve(text.size());
    RunDecoder run(name, ansi);
    bool inRun = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == kRunMark) {
            run.Finish();
            inRun = !inRun;
        } else if (inRun) {
            const std::size_t next = i + 1;
            run.Take(text[i], next < text.size() ? text[next] : L'\0');
            i = next;
        } else {
            name += text[i];
        }
    }
    run.Finish();
    return name;
}

}  // namespace vw
