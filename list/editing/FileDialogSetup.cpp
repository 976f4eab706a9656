#include "list/editing/FileDialogSetup.h"

#include "platform/RuntimeError.h"

namespace vw {
namespace {

// OFN_... flags of the system.
constexpr std::uint32_t kOverwritePrompt = 0x2;
constexpr std::uint32_t kHideReadOnly = 0x4;
constexpr std::uint32_t kNoValidation = 0x100;
constexpr std::uint32_t kMultipleSelection = 0x200;
constexpr std::uint32_t kFileMustExist = 0x1000;
constexpr std::uint32_t kExplorerStyle = 0x80000;
constexpr std::uint32_t kKeepShortcuts = 0x100000;

constexpr std::uint32_t kEveryDialog = kHideReadOnly | kExplorerStyle | kKeepShortcuts;
// Files may be typed as a pattern, hence no validation.
constexpr std::uint32_t kAddFilesFlags = kEveryDialog | kNoValidation | kFileMustExist;
constexpr std::uint32_t kOpenListFlags = kEveryDialog | kFileMustExist;
constexpr std::uint32_t kSaveListFlags = kEveryDialog | kOverwritePrompt;
constexpr std::uint32_t kFolderFlags = kEveryDialog | kNoValidation;

// The texts are Arabic in the English window too.
constexpr std::wstring_view kAllFiles = L" |*.*";
constexpr std::wstring_view kLists = L"مهمة نسخ احتياطي(As *.vwl)|*.vwl";
constexpr std::wstring_view kFolder = L"مجلد|*.folder";
constexpr std::wstring_view kRule = L"قاعدة|*.folder";
// Folders are chosen with a file dialog: this name represents the open folder in it.
constexpr std::wstring_view kFolderName = L"ChooseFolder....Don't modify this line";

void SetUpListDialog(FileDialogSetup& dialog, std::uint32_t flags, std::wstring_view folder) {
    dialog.flags = flags;
    dialog.filter = kLists;
    dialog.defaultExtension = L"vwl";
    dialog.fileName.clear();
    if (dialog.initialFolder.empty()) dialog.initialFolder = folder;
}

void SetUpFolderDialog(FileDialogSetup& dialog, std::wstring_view filter, std::wstring_view title) {
    dialog.flags = kFolderFlags;
    dialog.filter = filter;
    dialog.fileName = kFolderName;
    dialog.title = title;
}

}  // namespace

void SetUpFileDialog(FileDialogSetup& dialog, FileDialogKind kind, std::wstring_view currentFolder,
                     std::wstring_view defaultFolder) {
    dialog.initialFolder = currentFolder;
    dialog.defaultExtension.clear();
    switch (kind) {
        case FileDialogKind::AddFiles:
            dialog.flags = kAddFilesFlags | kMultipleSelection;
            dialog.filter = kAllFiles;
            dialog.fileName.clear();
            dialog.title = L"إضافة";
            break;
        case FileDialogKind::OpenList:
            SetUpListDialog(dialog, kOpenListFlags, defaultFolder);
            break;
        case FileDialogKind::SaveList:
            SetUpListDialog(dialog, kSaveListFlags, defaultFolder);
            break;
        case FileDialogKind::AddFolder:
            SetUpFolderDialog(dialog, kFolder,
                              L"إضافة مجلد: (افتح المجلد المطلوب اضافته ثم اختر حفظ)");
            break;
        case FileDialogKind::AddRule:
            SetUpFolderDialog(dialog, kRule,
                              L"اختر مجلداً: (إضافة جميع الملفات الموجودة في المجلد المفتوح)");
            break;
        case FileDialogKind::ChooseDestination:
            SetUpFolderDialog(dialog, kFolder,
                              L"نسخ إلى: (افتح المجلد المطلوب النسخ إليه ثم اختر حفظ)");
            break;
        default:
            ThrowWith(error_number::kUnknownDialogKind, L"Unknown kind of file dialog");
    }
    dialog.cancelIsError = true;
}

}  // namespace vw
