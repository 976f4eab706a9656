#include "engine/CopyComment.h"

#include <string>

#include "engine/CPackage.h"
#include "engine/CommentLine.h"
#include "engine/NameEncoding.h"
#include "platform/AnsiCodec.h"
#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"

namespace vw {

namespace {

// Nearly every copy that is asked about has a comment: only when the reading fails the disk is
// asked whether there is one.
std::optional<std::string> ReadIfThere(FileSystem& files, const std::wstring& file) {
    try {
        return files.Read(file);
    } catch (const RuntimeError&) {
        const auto facts = files.Stat(file);
        if (facts && !facts->isFolder) throw;
        return std::nullopt;
    }
}

}  // namespace

std::optional<CopyComment> ReadCopyComment(System& system, std::wstring_view copyPath,
                                           DamagedDate damaged) {
    const auto bytes = ReadIfThere(system.files, CPackage::PackageCommentFile(copyPath));
    if (!bytes) return std::nullopt;
    const std::wstring text = system.ansi.Decode(*bytes);
    const std::wstring line = FirstLine(text);
    CopyComment comment;
    comment.isIncomplete = CompletenessOf(text) != Completeness::Whole;
    if (const auto field = CommentDateField(line)) {
        try {
            comment.date = ReadCommentDate(EnglishNameOrigin(*field, system.ansi));
        } catch (const RuntimeError&) {
            if (damaged == DamagedDate::Raise) throw;
        }
    }
    if (const auto field = CommentLocationField(line)) {
        comment.place = EnglishNameOrigin(*field, system.ansi);
    }
    return comment;
}

}  // namespace vw
