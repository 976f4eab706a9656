#include "engine/CopyComment.h"

#include <string>

#include "engine/CPackage.h"
#include "engine/CommentLine.h"
#include "engine/NameEncoding.h"
#include "platform/AnsiCodec.h"
#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"

namespace vw {

std::optional<std::string> ReadIfThere(FileSystem& files, const std::wstring& file,
                                       const std::function<std::string()>& read) {
    try {
        return read();
    } catch (const RuntimeError&) {
        const auto facts = files.Stat(file);
        if (facts && !facts->isFolder) throw;
        return std::nullopt;
    }
}

std::optional<CopyComment> ReadCopyComment(System& system, std::wstring_view copyPath,
                                           DamagedDate damaged) {
    const std::wstring file = CPackage::PackageCommentFile(copyPath);
    const auto bytes = ReadIfThere(system.files, file, [&] { return system.files.Read(file); });
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
