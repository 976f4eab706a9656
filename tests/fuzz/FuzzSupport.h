#pragma once

// The fuzzers feed the parsers of list files, comment files, copy names and command lines with
// made-up bytes, under ASan and UBSan, and check what must hold for every input. They belong to the
// preset "host":
//
//     scripts/build host
//     build/host/fuzz/fuzz_<Name> -max_total_time=120
//
// The last line that a fuzzer prints is the number of executions. Useful options:
// -runs=N, -jobs=N, a folder to keep inputs in from run to run, and the name of a file that a crash
// left (crash-...) to see that crash again. The test run starts each of them for some seconds.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/AnsiCodec.h"
#include "tests/support/FakeCodePage.h"

namespace vw::fuzz {

/// Stops the fuzzer when a guarantee is broken; the input is then kept.
inline void Guarantee(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "broken guarantee: %s\n", what);
        std::abort();
    }
}

/// The input piece by piece; empty or 0 when nothing is left.
class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    [[nodiscard]] bool IsEmpty() const { return rest_.empty(); }

    std::uint8_t Byte() {
        const std::string_view byte = Bytes(1);
        return byte.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(byte.front());
    }

    std::uint64_t Number(int byteCount) {
        std::uint64_t number = 0;
        for (int i = 0; i < byteCount; ++i) {
            number = (number << 8U) | Byte();
        }
        return number;
    }

    std::string_view Bytes(std::size_t count) {
        const std::string_view bytes = rest_.substr(0, count);
        rest_.remove_prefix(bytes.size());
        return bytes;
    }

    std::string_view Rest() { return Bytes(rest_.size()); }

    /// Text that ends at a byte 0xFE (which takes part in nothing else) or with the input.
    std::wstring Text() {
        const std::size_t end = rest_.find('\xFE');
        const std::wstring text = Units(Bytes(end));
        Bytes(1);
        return text;
    }

    /// All that is left, as text.
    std::wstring RestAsText() { return Units(Rest()); }

  private:
    /// UTF-16 units of bytes: those below 0xE0 are Latin characters, so that keys, brackets and
    /// guillemets are found soon; one from 0xE0 on begins a unit with the two bytes behind it.
    static std::wstring Units(std::string_view bytes) {
        std::wstring text;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const auto byte = static_cast<unsigned char>(bytes[i]);
            if (byte < 0xE0 || i + 2 >= bytes.size()) {
                text += static_cast<wchar_t>(byte);
                continue;
            }
            const auto high = static_cast<unsigned char>(bytes[i + 1]);
            const auto low = static_cast<unsigned char>(bytes[i + 2]);
            text += static_cast<wchar_t>((high << 8U) | low);
            i += 2;
        }
        return text;
    }

    std::string_view rest_;
};

/// `text` with the first control characters replaced by words, one by one, which chance would not
/// find. Every other character stays.
inline std::wstring WithWords(std::wstring_view text,
                              std::initializer_list<std::wstring_view> words) {
    std::wstring result;
    for (const wchar_t character : text) {
        const auto place = static_cast<std::size_t>(character) - 1;
        if (place < words.size()) {
            result += words.begin()[place];
        } else {
            result += character;
        }
    }
    return result;
}

/// One of the code pages, chosen by the input.
inline const AnsiCodec& AnyCodePage(Input& input) {
    static const test::FakeCodePage western(test::kWestern);
    static const test::FakeCodePage arabic(test::kArabic);
    static const test::FakeDoubleByteCodePage eastern;
    switch (input.Byte() % 3) {
        case 0:
            return western;
        case 1:
            return arabic;
        default:
            return eastern;
    }
}

}  // namespace vw::fuzz
