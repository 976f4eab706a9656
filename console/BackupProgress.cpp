#include "console/BackupProgress.h"

#include <algorithm>

#include "console/JsonLine.h"
#include "console/SizeWords.h"
#include "platform/Clock.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"

namespace vw {
namespace {

constexpr std::uint64_t kShowMilliseconds = 100;
constexpr std::uint64_t kSecond = 1000;
constexpr int kBusy = error_number::kDestinationBusy;

}  // namespace

BackupProgress::BackupProgress(Console& console)
    : console_(console), begun_(console.system.clock.Milliseconds()) {}

void BackupProgress::Msg(std::wstring_view, std::wstring_view message) {
    if (!console_.output.HasProgress()) return;
    file_ = message;
    Tick();
}

void BackupProgress::Notice(std::wstring_view text) {
    console_.output.Line(text);
    console_.output.Json(JsonLine("notice").Text("text", text));
}

void BackupProgress::OnItem(ItemEvent event, std::wstring_view path, const ItemSize& size) {
    switch (event) {
        case ItemEvent::Started:
            End();
            Begin(path);
            break;
        case ItemEvent::Missing:
            result_ = "missing";
            break;
        case ItemEvent::Refused:
            result_ = "refused";
            break;
        case ItemEvent::Unchanged:
            if (result_.empty()) result_ = "unchanged";
            break;
        case ItemEvent::Copying:
            isCopying_ = true;
            toDo_ = size;
            copyingSince_ = console_.system.clock.Milliseconds();
            break;
        case ItemEvent::Copied:
            result_ = "copied";
            break;
    }
}

void BackupProgress::OnFileCopied(std::uint64_t bytes) {
    ++done_.files;
    done_.bytes += bytes;
}

void BackupProgress::Begin(std::wstring_view path) {
    isInItem_ = true;
    isCopying_ = false;
    item_ = path;
    result_.clear();
    toDo_ = done_ = {};
    errorsBefore_ = console_.Errors();
}

void BackupProgress::End() {
    if (!isInItem_) return;
    isInItem_ = false;
    const int errors = console_.Errors() - errorsBefore_;
    if (result_ == "missing" || result_ == "refused") {
        const bool isMissing = result_ == "missing";
        ++(isMissing ? counts_.missing : counts_.refused);
        const bool isFolder = item_.ends_with(L'\\') || item_.ends_with(L'*');
        const int number = !isMissing ? error_number::kAccessError
                           : isFolder ? error_number::kPathNotFound
                                      : error_number::kFileNotFound;
        console_.output.Error(item_,
                              isMissing ? L"The item does not exist"
                                        : L"The item holds the destination or lies in it",
                              number);
    } else if (result_ == "copied") {
        ++counts_.copied;
    } else if (result_ == "unchanged") {
        ++counts_.unchanged;
    } else {
        const bool isBusy = errors == 0 && console_.exitStatus.Code() == kBusy;
        if (isBusy) console_.output.Error(console_.state.BackupTo, DescriptionOf(kBusy), kBusy);
        result_ = console_.state.cancel.IsRequested() ? "cancelled" : "failed";
        if (!console_.state.cancel.IsRequested()) ++counts_.failed;
    }
    sum_.files += done_.files;
    sum_.bytes += done_.bytes;
    std::wstring line = FromUtf8(result_) + L": " + item_;
    if (result_ == "copied") {
        line += L" (" + FilesAndBytesText(done_.files, done_.bytes);
        if (errors > 0) line += L", " + std::to_wstring(errors) + L" failed";
        line += L")";
    }
    console_.output.Line(line);
    console_.output.Json(JsonLine("item")
                             .Text("path", item_)
                             .Text("result", FromUtf8(result_))
                             .Number("files", static_cast<std::int64_t>(done_.files))
                             .Number("bytes", static_cast<std::int64_t>(done_.bytes))
                             .Number("errors", errors));
}

void BackupProgress::Finish(int exitCode) {
    End();
    const std::uint64_t milliseconds = console_.system.clock.Milliseconds() - begun_;
    // The exit code is that of the first error.
    const bool isCancelled =
        console_.state.cancel.IsRequested() || exitCode == error_number::kCancelled;
    std::wstring line = isCancelled ? L"Cancelled. " : L"";
    line += std::to_wstring(counts_.copied) + L" copied, " + std::to_wstring(counts_.unchanged) +
            L" unchanged, " + std::to_wstring(counts_.missing) + L" missing, " +
            std::to_wstring(counts_.refused) + L" refused, " + std::to_wstring(counts_.failed) +
            L" failed; " + FilesAndBytesText(sum_.files, sum_.bytes) + L" in " +
            std::to_wstring((milliseconds + kSecond / 2) / kSecond) + L" s";
    console_.output.Line(line);
    console_.output.Json(JsonLine("end")
                             .Number("code", exitCode)
                             .Number("copied", static_cast<std::int64_t>(counts_.copied))
                             .Number("unchanged", static_cast<std::int64_t>(counts_.unchanged))
                             .Number("missing", static_cast<std::int64_t>(counts_.missing))
                             .Number("refused", static_cast<std::int64_t>(counts_.refused))
                             .Number("failed", static_cast<std::int64_t>(counts_.failed))
                             .Number("files", static_cast<std::int64_t>(sum_.files))
                             .Number("bytes", static_cast<std::int64_t>(sum_.bytes))
                             .Number("milliseconds", static_cast<std::int64_t>(milliseconds)));
}

void BackupProgress::Tick() {
    if (!isInItem_ || !console_.output.HasProgress()) return;
    const std::uint64_t now = console_.system.clock.Milliseconds();
    if (now < nextShow_) return;
    nextShow_ = now + kShowMilliseconds;
    console_.output.Progress(ProgressText());
}

std::wstring BackupProgress::ProgressText() const {
    if (!isCopying_) return item_;
    const std::uint64_t elapsed =
        std::max<std::uint64_t>(console_.system.clock.Milliseconds() - copyingSince_, 1);
    std::wstring file = file_;
    if (file.starts_with(item_) && item_.ends_with(L'\\')) file.erase(0, item_.size());
    return item_ + L"  " + std::to_wstring(done_.files) + L"/" + FilesText(toDo_.files) + L"  " +
           BytesText(done_.bytes) + L"/" + BytesText(toDo_.bytes) + L"  " +
           BytesText(done_.bytes * kSecond / elapsed) + L"/s  " + file;
}

}  // namespace vw
