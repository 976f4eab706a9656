#pragma once

#include <optional>
#include <string_view>

#include "fsutil/Patience.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "platform/System.h"

namespace vw {

/// What all parts of the engine work with.
struct EngineContext {
    System& system;
    ProgramState& state;
    ProgressReporter& progress;
    ProgramControl& program;
    Patience& patience;
    FileSystem::CopyProgress duringCopy;  ///< called while a file is copied
};

/// A part of the engine, with the steps that all of them need.
class EnginePart {
  protected:
    explicit EnginePart(const EngineContext& context);
    ~EnginePart() = default;

    /// Adds a line about something unusual to the report.
    void Notice(const Texts& text, std::wstring_view path);

    /// Removes what is no copy (any more). What cannot be removed now is left to a later run.
    void Remove(std::wstring_view path) noexcept;

    [[nodiscard]] std::optional<FileInfo> Stat(std::wstring_view path);

    /// Whether something is there. What cannot be queried is out of reach, which is no better than
    /// gone.
    [[nodiscard]] bool Exists(std::wstring_view path);

    /// Gives a folder the dates and marks of another one, as far as the disk keeps them.
    void KeepFolderInfo(const std::wstring& from, const std::wstring& to,
                        FileSystem::Marks marks = FileSystem::Marks::Replace);

    System& system_;
    ProgramState& state_;
    ProgressReporter& progress_;
    ProgramControl& program_;
    Patience& patience_;
    const FileSystem::CopyProgress& duringCopy_;
    ErrorTrap trap_;
};

}  // namespace vw
