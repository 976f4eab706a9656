#pragma once

#include <string>
#include <string_view>

#include "platform/AnsiCodec.h"

namespace vw {

/// The system's own tables for one code page.
class CodePage final : public AnsiCodec {
  public:
    /// `number` 0 is the ANSI code page that the system was set up with. `before` is the code page
    /// that bytes are read in when they are no valid text of a Unicode one: by default that of the
    /// system's language, which the system used before it was switched. Throws 5 for a code page
    /// that the system does not have.
    explicit CodePage(unsigned number = 0, unsigned before = OfSystemLanguage());

    /// The ANSI code page of the system's language, whatever the system was switched to; 0 when the
    /// language has none.
    [[nodiscard]] static unsigned OfSystemLanguage() noexcept;

    /// Throws 7 for a text of more than 2^31 - 1 units.
    [[nodiscard]] std::string Encode(std::wstring_view text) const override;

    /// Throws 7 for more than 2^31 - 1 bytes; otherwise never fails.
    [[nodiscard]] std::wstring Decode(std::string_view bytes) const override;

    [[nodiscard]] bool IsUnicode() const override;

    /// The number of the code page, never 0.
    [[nodiscard]] unsigned Number() const noexcept { return number_; }

  private:
    unsigned number_;
    unsigned before_;
};

}  // namespace vw
