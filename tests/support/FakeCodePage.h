#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/AnsiCodec.h"

namespace vw::test {

/// The characters of the bytes 80h to FFh.
using UpperHalf = std::array<wchar_t, 128>;

/// Windows-1252, Western European.
inline constexpr UpperHalf kWestern{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039,
    0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178, 0x00A0, 0x00A1, 0x00A2, 0x00A3,
    0x00A4, 0x00A5, 0x00A6, 0x00A7, 0x00A8, 0x00A9, 0x00AA, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF,
    0x00B0, 0x00B1, 0x00B2, 0x00B3, 0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x00B9, 0x00BA, 0x00BB,
    0x00BC, 0x00BD, 0x00BE, 0x00BF, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C6, 0x00C7,
    0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD, 0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3,
    0x00D4, 0x00D5, 0x00D6, 0x00D7, 0x00D8, 0x00D9, 0x00DA, 0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00DF,
    0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E6, 0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB,
    0x00EC, 0x00ED, 0x00EE, 0x00EF, 0x00F0, 0x00F1, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00F7,
    0x00F8, 0x00F9, 0x00FA, 0x00FB, 0x00FC, 0x00FD, 0x00FE, 0x00FF,
};

/// Windows-1256, Arabic.
inline constexpr UpperHalf kArabic{
    0x20AC, 0x067E, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0679, 0x2039,
    0x0152, 0x0686, 0x0698, 0x0688, 0x06AF, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x06A9, 0x2122, 0x0691, 0x203A, 0x0153, 0x200C, 0x200D, 0x06BA, 0x00A0, 0x060C, 0x00A2, 0x00A3,
    0x00A4, 0x00A5, 0x00A6, 0x00A7, 0x00A8, 0x00A9, 0x06BE, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF,
    0x00B0, 0x00B1, 0x00B2, 0x00B3, 0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x00B9, 0x061B, 0x00BB,
    0x00BC, 0x00BD, 0x00BE, 0x061F, 0x06C1, 0x0621, 0x0622, 0x0623, 0x0624, 0x0625, 0x0626, 0x0627,
    0x0628, 0x0629, 0x062A, 0x062B, 0x062C, 0x062D, 0x062E, 0x062F, 0x0630, 0x0631, 0x0632, 0x0633,
    0x0634, 0x0635, 0x0636, 0x00D7, 0x0637, 0x0638, 0x0639, 0x063A, 0x0640, 0x0641, 0x0642, 0x0643,
    0x00E0, 0x0644, 0x00E2, 0x0645, 0x0646, 0x0647, 0x0648, 0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB,
    0x0649, 0x064A, 0x00EE, 0x00EF, 0x064B, 0x064C, 0x064D, 0x064E, 0x00F4, 0x064F, 0x0650, 0x00F7,
    0x0651, 0x00F9, 0x0652, 0x00FB, 0x00FC, 0x200E, 0x200F, 0x06D2,
};

/// A code page of one byte per character, for tests that run without the system's tables.
class FakeCodePage final : public AnsiCodec {
  public:
    explicit FakeCodePage(const UpperHalf& upperHalf) : upperHalf_(upperHalf) {
        bytes_.fill(kMissing);
        for (std::size_t code = 0; code < 0x80; ++code) {
            bytes_[code] = static_cast<char>(code);
        }
        for (std::size_t i = 0; i < upperHalf.size(); ++i) {
            bytes_[static_cast<std::size_t>(upperHalf[i])] = static_cast<char>(0x80 + i);
        }
    }

    [[nodiscard]] std::string Encode(std::wstring_view text) const override {
        std::string bytes;
        bytes.reserve(text.size());
        for (const wchar_t character : text) {
            const auto unit = static_cast<std::size_t>(character);
            bytes += unit < bytes_.size() ? bytes_[unit] : kMissing;
        }
        return bytes;
    }

    [[nodiscard]] std::wstring Decode(std::string_view bytes) const override {
        std::wstring text;
        text.reserve(bytes.size());
        for (const char byte : bytes) {
            const auto code = static_cast<unsigned char>(byte);
            text += code < 0x80 ? static_cast<wchar_t>(code) : upperHalf_[code - 0x80U];
        }
        return text;
    }

  private:
    static constexpr char kMissing = '?';

    UpperHalf upperHalf_;
    std::array<char, 0x10000> bytes_{};
};

/// A code page of two bytes per character in a small way: "A" to "D" follow a lead byte 81h as
/// the second bytes of U+3041 to U+3044, and "\\" as that of U+8868, as happens in East Asia.
class FakeDoubleByteCodePage final : public AnsiCodec {
  public:
    [[nodiscard]] std::string Encode(std::wstring_view text) const override {
        std::string bytes;
        for (const wchar_t character : text) {
            const std::size_t place = kCharacters.find(character);
            if (place != std::wstring_view::npos) {
                bytes += kLead;
                bytes += kTrails[place];
            } else {
                bytes += character < 0x80 ? static_cast<char>(character) : '?';
            }
        }
        return bytes;
    }

    [[nodiscard]] std::wstring Decode(std::string_view bytes) const override {
        std::wstring text;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            if (bytes[i] != kLead) {
                const auto code = static_cast<unsigned char>(bytes[i]);
                text += code < 0x80 ? static_cast<wchar_t>(code) : L'\uFFFD';
                continue;
            }
            ++i;
            const std::size_t place =
                i < bytes.size() ? kTrails.find(bytes[i]) : std::string_view::npos;
            text += place == std::string_view::npos ? L'\uFFFD' : kCharacters[place];
        }
        return text;
    }

  private:
    static constexpr char kLead = '\x81';
    static constexpr std::wstring_view kCharacters = L"\u3041\u3042\u3043\u3044\u8868";
    static constexpr std::string_view kTrails = "ABCD\\";
};

}  // namespace vw::test
