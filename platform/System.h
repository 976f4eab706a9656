#pragma once

namespace vw {

class AnsiCodec;
class Clock;
class ErrorSink;
class MessagePump;
class ExitStatus;
class FileSystem;
class MessageBoxes;
class ProcessExit;

/// The world outside, as one bundle for the layers above. `wWinMain` fills it with the real things,
/// a test with its own.
struct System {
    FileSystem& files;
    MessagePump& pump;
    MessageBoxes& boxes;
    ErrorSink& errors;
    ExitStatus& exitStatus;
    ProcessExit& programEnd;
    const Clock& clock;
    const AnsiCodec& ansi;
};

}  // namespace vw
