#pragma once

namespace vw {

class AnsiCodec;
class Clock;
class ErrorSink;
class EventPump;
class ExitStatus;
class FileSystem;
class MsgBoxes;
class ProgramEnd;

/// The world outside, as one bundle for the rooms above. `wWinMain` fills it with the real things,
/// a test with its own.
struct System {
    FileSystem& files;
    EventPump& pump;
    MsgBoxes& boxes;
    ErrorSink& errors;
    ExitStatus& exitStatus;
    ProgramEnd& programEnd;
    const Clock& clock;
    const AnsiCodec& ansi;
};

}  // namespace vw
