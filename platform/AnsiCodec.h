#pragma once

#include <string>
#include <string_view>

namespace vw {

/// Text to and from the bytes of one ANSI code page. Lists and comment files are kept in it.
class AnsiCodec {
  public:
    AnsiCodec() = default;
    AnsiCodec(const AnsiCodec&) = delete;
    AnsiCodec& operator=(const AnsiCodec&) = delete;
    virtual ~AnsiCodec() = default;

    /// The bytes of `text`; "?" for what the code page cannot hold (never a look-alike letter).
    [[nodiscard]] virtual std::string Encode(std::wstring_view text) const = 0;

    /// The text of `bytes`; never fails. What is no valid text of a Unicode code page was written
    /// before the system was switched to it.
    [[nodiscard]] virtual std::wstring Decode(std::string_view bytes) const = 0;

    /// Whether the code page is a form of Unicode. It holds every name then, but a system with
    /// another code page reads its bytes as other letters.
    [[nodiscard]] virtual bool IsUnicode() const { return false; }

    /// Whether `text` comes back unchanged from its bytes.
    [[nodiscard]] bool Holds(std::wstring_view text) const { return Decode(Encode(text)) == text; }
};

}  // namespace vw
