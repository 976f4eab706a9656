#include "engine/ContentsCheck.h"

#include "engine/RunTexts.h"
#include "fsutil/FileQueries.h"
#include "platform/ExitStatus.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"

namespace vw {
namespace {

// More than this is not downloaded before the user has agreed.
constexpr std::uint64_t kQuietDownload = std::uint64_t{1} << 30;

RunText CloudText(const MFileDosShell::ItemStats::Cloud& cloud, std::wstring& english,
                  std::wstring& arabic) {
    const std::wstring size = MFileDosShell::CSize(cloud.bytes);
    english = cloud.files == 1
                  ? L"1 file, " + size + L", is only in the cloud:"
                  : std::to_wstring(cloud.files) + L" files, " + size + L", are only in the cloud:";
    arabic = L"ملفات موجودة في السحابة فقط (العدد: " + std::to_wstring(cloud.files) + L"، الحجم: " +
             size + L")";
    return {english, arabic};
}

}  // namespace

bool ContentsCheck::MayCopy(std::wstring_view path, const MFileDosShell::ItemStats& stats,
                            bool subFolders) {
    if (subFolders ? stats.treeHasEncrypted : stats.hasEncrypted) {
        Notice(run_text::kEncrypted, path);
    }
    const auto& cloud = subFolders ? stats.treeCloud : stats.cloud;
    if (cloud.files == 0) return true;
    std::wstring english;
    std::wstring arabic;
    const RunText text = CloudText(cloud, english, arabic);
    Notice(text, path);
    if (state_.silentRun || cloud.bytes <= kQuietDownload) return true;
    const std::wstring question = text.With(state_.arabic, path) + L"\r\n\r\n" +
                                  (state_.arabic ? L"هل تريد تنزيلها الآن لنسخها احتياطياً؟"
                                                 : L"Download them now to back them up?");
    const BoxAnswer answer = system_.boxes.Show(
        {.text = question, .buttons = BoxButtons::YesNo, .rightToLeft = state_.arabic});
    if (answer == BoxAnswer::Yes) return true;
    system_.exitStatus.Note(error_number::kCancelled);
    Notice(run_text::kNotDownloaded, path);
    return false;
}

}  // namespace vw
