#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/StandardStreams.h"

namespace vw {

class JsonLine;

/// What a verb writes. Lines for people and the progress line go to standard output unless the user
/// asked for JSON or for silence; errors always go to standard error.
class Output {
  public:
    enum class Style { Plain, Json, Quiet };

    void SetStyle(Style style) noexcept { style_ = style; }

    /// Gets a copy of every line and error, for a log.
    void SetCopy(std::function<void(std::wstring_view line)> copy) { copy_ = std::move(copy); }

    /// A line for people.
    void Line(std::wstring_view text);

    /// An object for programs.
    void Json(const JsonLine& line);

    /// "error: path: reason" on standard error; with JSON also an object with the error's number.
    /// The path may be empty.
    void Error(std::wstring_view path, std::wstring_view reason, int number);

    /// Whether a progress line can be seen.
    [[nodiscard]] bool HasProgress();

    /// Shows a text in place of the last progress, cut to the width of the terminal.
    void Progress(std::wstring_view text);

    /// Writes what is still held back.
    void Flush();

  private:
    void EndProgress();

    StandardStreams streams_;
    Style style_ = Style::Plain;
    std::size_t shown_ = 0;  ///< units of the progress line
    std::function<void(std::wstring_view)> copy_;
};

}  // namespace vw
