#include "engine/CPackage.h"
#include "engine/NameEncoding.h"
#include "fsutil/NewestDate.h"
#include "fsutil/PathText.h"
#include "platform/AnsiCodec.h"
#include "platform/DriveFailure.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"

namespace vw {

namespace {

constexpr std::wstring_view kUnknownLocation = L"??";

// The date of a comment's field. An impossible one is told with the file that holds it.
Date StoredDate(std::wstring_view field, std::wstring_view commentFile) {
    try {
        return ReadCommentDate(field);
    } catch (const RuntimeError& error) {
        Raise(error.Number(), commentFile);
    }
}

}  // namespace

std::wstring CPackage::PackageCommentFile(std::wstring_view copyPath) {
    std::wstring path(copyPath);
    MFileDosShell::QuoteRmove(path);
    if (path.ends_with(L'\\')) path.pop_back();
    return path.append(kCommentExtension);
}

std::wstring CPackage::PackageComment(std::wstring_view copyPath) {
    return FirstLine(CommentOf(copyPath));
}

void CPackage::PackageComment(std::wstring_view copyPath, std::wstring_view text) {
    trap_(L"PackageComment", [&] {
        const std::wstring file = PackageCommentFile(copyPath);
        const std::wstring inTheMaking = file + L".tmp";
        system_.files.Write(inTheMaking,
                            system_.ansi.Encode(CommentText(text, Completeness::Whole)),
                            FileSystem::Flush::No);
        patience_.Perform([&] { system_.files.Replace(inTheMaking, file); }, file);
    });
}

bool CPackage::IsMarkedIncomplete(std::wstring_view copyPath) {
    return CompletenessOf(CommentOf(copyPath)) != Completeness::Whole;
}

// The comment's line, and the marks below it.
std::wstring CPackage::ReadCommentText(std::wstring_view copyPath) {
    if (destination_) {
        if (auto remembered = destination_->Remembered(copyPath)) return *std::move(remembered);
    }
    const std::wstring file = PackageCommentFile(copyPath);
    const auto facts = system_.files.Look(file);
    if (!facts || facts->isFolder) return {};
    return system_.ansi.Decode(ReadCommentFile(file));
}

// Copy 1 of a file has a comment nearly always, so it is read at once; only when that fails the
// disk is asked whether there is one.
std::wstring CPackage::ReadFirstComment(std::wstring_view copyPath) {
    const std::wstring file = PackageCommentFile(copyPath);
    try {
        return system_.ansi.Decode(ReadCommentFile(file));
    } catch (const RuntimeError&) {
        const auto facts = system_.files.Look(file);
        if (facts && !facts->isFolder) throw;
        return {};
    }
}

// A scanner may have the comment open. Lists that show many comments wait for none.
std::string CPackage::ReadCommentFile(const std::wstring& file) {
    if (!destination_) return system_.files.Read(file);
    std::string bytes;
    patience_.Perform([&] { bytes = system_.files.Read(file); });
    return bytes;
}

// The comment of a copy that belongs to no item in hand: empty when it cannot be read.
std::wstring CPackage::TryReadComment(std::wstring_view copyPath) {
    try {
        return ReadFirstComment(copyPath);
    } catch (const RuntimeError& error) {
        if (ConcernsDrive(error)) throw;
        return {};
    }
}

std::wstring CPackage::CommentOf(std::wstring_view copyPath) {
    return trap_.Or(std::wstring(), L"PackageComment", [&] { return ReadCommentText(copyPath); });
}

Date CPackage::DateOf(std::wstring_view copyPath, std::wstring_view comment) {
    return trap_.Or(kMissingDate, L"PackageDate", [&] {
        if (const auto field = CommentDateField(FirstLine(comment))) {
            return StoredDate(EnglishNameOrigin(*field, system_.ansi),
                              PackageCommentFile(copyPath));
        }
        return NewestFileDate(system_.files, copyPath, [this] { system_.pump.DoEventsIfDue(); });
    });
}

Date CPackage::PackageDate(std::wstring_view copyPath) {
    return DateOf(copyPath, CommentOf(copyPath));
}

std::wstring CPackage::PackageOriginalLocation(std::wstring_view copyPath) {
    return trap_.Or(std::wstring(kUnknownLocation), L"PackageOriginalLocation",
                    [&] { return OriginalLocation(ReadCommentText(copyPath)); });
}

std::wstring CPackage::NamedLocation(std::wstring_view comment) {
    const auto field = CommentLocationField(FirstLine(comment));
    return field ? EnglishNameOrigin(*field, system_.ansi) : std::wstring(kUnknownLocation);
}

std::wstring CPackage::OriginalLocation(std::wstring_view comment) {
    std::wstring folder = NamedLocation(comment);
    if (folder == kUnknownLocation) return folder;
    const auto facts = system_.files.Look(folder);
    return facts && facts->isFolder ? folder : std::wstring(kUnknownLocation);
}

}  // namespace vw
