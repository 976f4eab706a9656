#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Handle.h"

namespace vw {

/// Standard output and standard error of a silent run, where the program was given them: a pipe, a
/// file, or the console that it was started from. No file is made for them. Redirected text is
/// UTF-8; lines end in CR LF. The streams are found at the first use, so that a program that works
/// in windows never looks for a console.
class StandardStreams {
  public:
    StandardStreams() = default;
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;
    ~StandardStreams();

    /// A line of the report. Written in large pieces to a file, once a second to a console, since a
    /// run may report every file.
    void Report(std::wstring_view line);

    /// An error, written at once, after the report lines before it.
    void Error(std::wstring_view text);

    /// Writes a text without a line end at once, after the report lines before it; for what a
    /// terminal shows for a moment.
    void Transient(std::wstring_view text);

    /// Whether standard output is a console of this process.
    [[nodiscard]] bool OutputIsConsole();

    /// Columns of that console; 80 when it has none.
    [[nodiscard]] std::size_t ConsoleWidth();

    /// Writes what is still held back.
    void Flush();

    /// Whether report and errors end up in the same place: one console, file or pipe.
    [[nodiscard]] bool AreOne();

  private:
    /// Where a stream leads.
    struct Stream {
        HANDLE handle = nullptr;
        bool isConsole = false;

        [[nodiscard]] bool Leads() const noexcept { return handle != nullptr || isConsole; }
    };

    void Open();
    [[nodiscard]] bool IsDue() const;
    static Stream Find(DWORD which);
    static void Write(const Stream& stream, std::wstring_view text);

    Stream output_;
    Stream error_;
    bool open_ = false;
    std::wstring held_;
    std::uint64_t lastWritten_ = 0;
};

}  // namespace vw
