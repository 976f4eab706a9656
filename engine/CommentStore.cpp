#include "engine/CommentStore.h"
#include "engine/CopyComment.h"
#include "engine/CopyName.h"
#include "engine/NameEncoding.h"
#include "engine/PendingCopy.h"
#include "fsutil/NewestDate.h"
#include "fsutil/PathText.h"
#include "platform/AnsiCodec.h"
#include "platform/DriveFailure.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/UserLocale.h"

namespace vw {

namespace {

// The date of a comment's field. An impossible one is reported with the file that holds it.
Date StoredDate(std::wstring_view field, std::wstring_view commentFile) {
    try {
        return ReadCommentDate(field);
    } catch (const RuntimeError& error) {
        Throw(error.Number(), commentFile);
    }
}

}  // namespace

CommentStore::CommentStore(const EngineContext& context, DestinationSession& session)
    : EnginePart(context),
      session_(session),
      separators_{OneCharacterSeparator(UserDateSeparator(), L'/'),
                  OneCharacterSeparator(UserTimeSeparator(), L':')} {}

std::wstring CommentStore::FileOf(std::wstring_view copyPath) {
    std::wstring path(copyPath);
    MFileDosShell::QuoteRmove(path);
    if (path.ends_with(L'\\')) path.pop_back();
    return path.append(kCommentExtension);
}

void CommentStore::Store(std::wstring_view copyPath, std::wstring_view text) {
    trap_(L"PackageComment", [&] {
        const std::wstring file = FileOf(copyPath);
        const std::wstring inTheMaking = file + L".tmp";
        system_.files.Write(inTheMaking,
                            system_.ansi.Encode(CommentText(text, Completeness::Whole)),
                            FileSystem::Flush::No);
        patience_.Perform([&] { system_.files.Replace(inTheMaking, file); }, file);
    });
}

// The comment's line, and the marks below it.
std::wstring CommentStore::Read(std::wstring_view copyPath) {
    if (session_.IsEntered()) {
        if (auto cached = session_->TakeCachedComment(copyPath)) return *std::move(cached);
    }
    const std::wstring file = FileOf(copyPath);
    const auto facts = system_.files.Stat(file);
    if (!facts || facts->isFolder) return {};
    return system_.ansi.Decode(ReadCommentFile(file));
}

std::wstring CommentStore::ReadFirst(std::wstring_view copyPath) {
    const std::wstring file = FileOf(copyPath);
    const auto bytes = ReadIfThere(system_.files, file, [&] { return ReadCommentFile(file); });
    return bytes ? system_.ansi.Decode(*bytes) : std::wstring();
}

// A scanner may have the comment open. Lists that show many comments wait for none.
std::string CommentStore::ReadCommentFile(const std::wstring& file) {
    if (!session_.IsEntered()) return system_.files.Read(file);
    std::string bytes;
    patience_.Perform([&] { bytes = system_.files.Read(file); });
    return bytes;
}

// The comment of a copy that belongs to no item in hand: empty when it cannot be read.
std::wstring CommentStore::TryRead(std::wstring_view copyPath) {
    try {
        return ReadFirst(copyPath);
    } catch (const RuntimeError& error) {
        if (ConcernsDrive(error)) throw;
        return {};
    }
}

std::wstring CommentStore::TextOf(std::wstring_view copyPath) {
    return trap_.Or(std::wstring(), L"PackageComment", [&] { return Read(copyPath); });
}

Date CommentStore::DateOf(std::wstring_view copyPath, std::wstring_view comment) {
    return trap_.Or(kMissingDate, L"PackageDate", [&] {
        if (const auto field = CommentDateField(FirstLine(comment))) {
            return StoredDate(EnglishNameOrigin(*field, system_.ansi), FileOf(copyPath));
        }
        return NewestFileDate(system_.files, copyPath,
                              [this] { system_.pump.ProcessMessagesIfDue(); });
    });
}

std::wstring CommentStore::LocationOf(std::wstring_view copyPath) {
    return trap_.Or(std::wstring(kUnknownLocation), L"PackageOriginalLocation",
                    [&] { return OriginalLocation(Read(copyPath)); });
}

std::wstring CommentStore::Prepare(const PendingCopy& copy) {
    const std::wstring folder = MFileDosShell::CFileLocation(copy.itemPath);
    const std::wstring text = CommentText(
        CommentLine(copy.newestDate, separators_, EnglishNameFrom(folder, system_.ansi)),
        copy.completeness);
    const std::wstring path =
        FileOf(session_->WorkingPath(WorkingState::New, copy.itemPath, copy.finalPath));
    system_.files.Write(path, system_.ansi.Encode(text), FileSystem::Flush::No);
    return path;
}

std::wstring CommentStore::NamedLocation(std::wstring_view comment) {
    const auto field = CommentLocationField(FirstLine(comment));
    return field ? EnglishNameOrigin(*field, system_.ansi) : std::wstring(kUnknownLocation);
}

std::wstring CommentStore::OriginalLocation(std::wstring_view comment) {
    std::wstring folder = NamedLocation(comment);
    if (folder == kUnknownLocation) return folder;
    const auto facts = system_.files.Stat(folder);
    return facts && facts->isFolder ? folder : std::wstring(kUnknownLocation);
}

}  // namespace vw
