#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vw {

/// Reads the text of a backup list field by field: a field ends at a comma or at the end of a line
/// (CR LF, LF or CR), blanks and tabs before it are skipped, trailing blanks are kept. A field in
/// double quotes loses them, may hold commas and line ends, and what follows its closing quote up
/// to the separator is dropped. Ctrl-Z ends the text. Blank lines and ",," give empty fields.
/// The text must outlive the reader.
class FieldReader {
  public:
    explicit FieldReader(std::wstring_view text) noexcept;

    /// Whether all fields have been read.
    [[nodiscard]] bool AtEnd() const noexcept;

    /// The next field; empty at the end.
    [[nodiscard]] std::wstring Next();

  private:
    void SkipBlanks() noexcept;
    void StepOverSeparator() noexcept;

    std::wstring_view text_;
    std::size_t position_ = 0;
};

}  // namespace vw
