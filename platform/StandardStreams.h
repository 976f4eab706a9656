#pragma once

#include <string>
#include <string_view>

#include "platform/WindowsHeader.h"

namespace vw {

/// Standard output and standard error of a silent run, where the program was given them: a pipe, a
/// file, or the console that it was started from. Nothing is opened or created for them. Redirected
/// text is UTF-8; lines end in CR LF.
class StandardStreams {
  public:
    /// Finds the streams; attaches to the console of the parent process when there is one.
    StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;
    ~StandardStreams();

    /// A line of the report. Written in large pieces, since a run may report every file.
    void Report(std::wstring_view line);

    /// An error, written at once, after the report lines before it.
    void Error(std::wstring_view text);

    /// Writes what is still held back.
    void Flush();

    /// Whether report and errors end up on the same console.
    [[nodiscard]] bool ShareConsole() const;

  private:
    struct Stream {
        HANDLE handle = nullptr;
        bool isConsole = false;
    };

    static Stream Find(DWORD which);
    static void Write(const Stream& stream, std::wstring_view text);

    Stream output_;
    Stream error_;
    std::wstring held_;
};

}  // namespace vw
