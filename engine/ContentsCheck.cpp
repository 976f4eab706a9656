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

std::wstring CloudText(const MFileDosShell::ItemStats::Cloud& cloud, Language language) {
    const std::wstring size = MFileDosShell::CSize(cloud.bytes);
    const std::wstring files = std::to_wstring(cloud.files);
    if (language == Language::Arabic) {
        return L"ملفات موجودة في السحابة فقط (العدد: " + files + L"، الحجم: " + size + L")";
    }
    return cloud.files == 1 ? L"1 file, " + size + L", is only in the cloud:"
                            : files + L" files, " + size + L", are only in the cloud:";
}

}  // namespace

bool ContentsCheck::MayCopy(std::wstring_view path, const MFileDosShell::ItemStats& stats,
                            bool subFolders) {
    if (subFolders ? stats.treeHasEncrypted : stats.hasEncrypted) {
        Notice(run_text::kEncrypted, path);
    }
    const auto& cloud = subFolders ? stats.treeCloud : stats.cloud;
    if (cloud.files == 0) return true;
    const std::wstring line = RunLine(CloudText(cloud, state_.language), state_.language, path);
    progress_.Notice(line);
    if (state_.silentRun || cloud.bytes <= kQuietDownload) return true;
    constexpr Texts kQuestion{L"Download them now to back them up?",
                              L"هل تريد تنزيلها الآن لنسخها احتياطياً؟"};
    const std::wstring question = line + L"\r\n\r\n" + std::wstring(kQuestion.In(state_.language));
    const BoxAnswer answer = system_.boxes.Show(
        {.text = question, .buttons = BoxButtons::YesNo, .rightToLeft = state_.IsArabic()});
    if (answer == BoxAnswer::Yes) return true;
    system_.exitStatus.Note(error_number::kCancelled);
    Notice(run_text::kNotDownloaded, path);
    return false;
}

}  // namespace vw
