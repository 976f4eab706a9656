#pragma once

#include <string>
#include <string_view>

#include "engine/CommentLine.h"
#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"
#include "platform/Date.h"

namespace vw {

struct PendingCopy;

/// The comments of copies: the date and the original folder of an item, in a file beside its copy.
class CommentStore final : private EnginePart {
  public:
    CommentStore(const EngineContext& context, DestinationSession& session);

    /// The comment file of a copy.
    [[nodiscard]] static std::wstring FileOf(std::wstring_view copyPath);

    /// The whole comment; empty when there is none. Throws the error of the disk.
    [[nodiscard]] std::wstring Read(std::wstring_view copyPath);
    /// The same for copy 1 of a file, which nearly always has one.
    [[nodiscard]] std::wstring ReadFirst(std::wstring_view copyPath);
    /// The same; empty also when it cannot be read. Throws when the drive is out of reach.
    [[nodiscard]] std::wstring TryRead(std::wstring_view copyPath);
    /// The same; an error is reported, and the text is empty then.
    [[nodiscard]] std::wstring TextOf(std::wstring_view copyPath);

    /// Stores a comment given by its first line.
    void Store(std::wstring_view copyPath, std::wstring_view text);

    /// Writes the comment of a new copy under a working name, which it returns.
    [[nodiscard]] std::wstring Prepare(const PendingCopy& copy);

    /// The date in a comment; without one the newest date of the copy's files. kMissingDate after
    /// an error, which has been reported.
    [[nodiscard]] Date DateOf(std::wstring_view copyPath, std::wstring_view comment);

    /// The folder that a comment names; "??" without one.
    [[nodiscard]] std::wstring NamedLocation(std::wstring_view comment);
    /// The same; "??" also when the folder does not exist.
    [[nodiscard]] std::wstring OriginalLocation(std::wstring_view comment);
    /// The same from the comment of a copy. "??" after an error, which has been reported.
    [[nodiscard]] std::wstring LocationOf(std::wstring_view copyPath);

  private:
    [[nodiscard]] std::string ReadCommentFile(const std::wstring& file);

    DestinationSession& session_;
    DateSeparators separators_;
};

}  // namespace vw
