#include "platform/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace vw {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kLastCharacter = 0x10FFFF;

constexpr bool IsHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// What the first byte of a character says about the rest of it. The range of the second byte
/// keeps out longer forms than needed and numbers beyond the last character.
struct Lead {
    int continuations = 0;
    std::uint32_t bits = 0;
    unsigned char secondFrom = 0x80;
    unsigned char secondTo = 0xBF;
    bool isValid = true;
};

constexpr Lead LeadOf(unsigned char byte) {
    Lead lead;
    if (byte < 0x80) {
        lead.bits = byte;
    } else if (byte >= 0xC2 && byte <= 0xDF) {
        lead.continuations = 1;
        lead.bits = byte & 0x1FU;
    } else if (byte >= 0xE0 && byte <= 0xEF) {
        lead.continuations = 2;
        lead.bits = byte & 0x0FU;
        lead.secondFrom = byte == 0xE0 ? 0xA0 : 0x80;
    } else if (byte >= 0xF0 && byte <= 0xF4) {
        lead.continuations = 3;
        lead.bits = byte & 0x07U;
        lead.secondFrom = byte == 0xF0 ? 0x90 : 0x80;
        lead.secondTo = byte == 0xF4 ? 0x8F : 0xBF;
    } else {
        lead.isValid = false;
    }
    return lead;
}

/// The character at `position`, which moves behind it; behind what belongs together when it is
/// damaged.
std::uint32_t NextCharacter(std::string_view bytes, std::size_t& position) {
    const Lead lead = LeadOf(static_cast<unsigned char>(bytes[position++]));
    if (!lead.isValid) {
        return kReplacement;
    }
    std::uint32_t character = lead.bits;
    for (int i = 0; i < lead.continuations; ++i) {
        const unsigned char byte =
            position < bytes.size() ? static_cast<unsigned char>(bytes[position]) : 0;
        const unsigned char from = i == 0 ? lead.secondFrom : 0x80;
        const unsigned char to = i == 0 ? lead.secondTo : 0xBF;
        if (byte < from || byte > to) {
            return kReplacement;
        }
        character = (character << 6U) | (byte & 0x3FU);
        ++position;
    }
    return character;
}

void AppendUnits(std::wstring& text, std::uint32_t character) {
    if (character < 0x10000) {
        text += static_cast<wchar_t>(character);
        return;
    }
    const std::uint32_t offset = character - 0x10000;
    text += static_cast<wchar_t>(0xD800U + (offset >> 10U));
    text += static_cast<wchar_t>(0xDC00U + (offset & 0x3FFU));
}

void AppendBytes(std::string& bytes, std::uint32_t character) {
    const auto append = [&bytes](std::uint32_t byte) { bytes += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0U | (character >> 6U));
        append(0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
        append(0xE0U | (character >> 12U));
        append(0x80U | ((character >> 6U) & 0x3FU));
        append(0x80U | (character & 0x3FU));
    } else {
        append(0xF0U | (character >> 18U));
        append(0x80U | ((character >> 12U) & 0x3FU));
        append(0x80U | ((character >> 6U) & 0x3FU));
        append(0x80U | (character & 0x3FU));
    }
}

}  // namespace

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    std::size_t position = 0;
    while (position < bytes.size()) {
        AppendUnits(text, NextCharacter(bytes, position));
    }
    return text;
}

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto character = static_cast<std::uint32_t>(text[i]);
        const bool isPair = IsHighSurrogate(character) && i + 1 < text.size() &&
                            IsLowSurrogate(static_cast<std::uint32_t>(text[i + 1]));
        if (isPair) {
            ++i;
            const auto low = static_cast<std::uint32_t>(text[i]);
            character = 0x10000 + ((character - 0xD800) << 10U) + (low - 0xDC00);
        }
        AppendBytes(bytes, character > kLastCharacter ? kReplacement : character);
    }
    return bytes;
}

}  // namespace vw
