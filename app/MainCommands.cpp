#include "app/MainCommands.h"

#include <algorithm>
#include <array>
#include <string>

#include "app/Application.h"
#include "app/KeepAwake.h"
#include "fsutil/NameCase.h"
#include "fsutil/PathText.h"
#include "fsutil/Scripting.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/TextCase.h"
#include "ui/ControlNames.h"
#include "ui/ToolBarTable.h"
#include "ui/resource.h"

namespace vw {

namespace {

constexpr std::array kLists{control::lsvBackupList, control::lsvRestore1, control::lsvRestore2};

[[nodiscard]] bool HasItems(MainParts& parts) {
    if (parts.list.Rows().Count() > 0) return true;
    parts.system.boxes.Show(
        {.text = parts.form.Text(control::lblNoFileToBack), .rightToLeft = true});
    return false;
}

void BackUp(MainParts& parts) {
    if (!HasItems(parts)) return;
    // The engine reads the file: a run with a file that differs from the window would back up what
    // was deleted, and leave out what was added.
    if (!parts.list.FileSave()) return;
    parts.application.LongWork().BackUpCurrentList();
    // The end of the busy dialog has given the window back, but the command still runs: what the
    // user chose now would be lost.
    parts.application.Ready(false);
    parts.browser.ListRestoreFiles();
    // The user goes on with the item that is selected, if it has copies.
    parts.browser.RestoredPath(parts.list.Rows().SelectedPath());
    parts.list.Rows().UpdateWarnings();
    parts.application.LongWork().BusyHide(false);
}

// For a rule, opens its folder.
void Open(MainParts& parts) {
    std::wstring path = HasItems(parts) ? parts.list.Rows().SelectedPath() : std::wstring();
    if (path.ends_with(L'*')) path.pop_back();
    if (!path.empty()) MMyScripting::ShellPath(parts.system, path);
}

// The button belongs to the list that the user worked in last.
void OpenInFocus(MainParts& parts) {
    const HWND focus = GetFocus();
    const bool atCopies = focus != nullptr && (focus == parts.form.Control(control::lsvRestore1) ||
                                               focus == parts.form.Control(control::lsvRestore2));
    if (atCopies && parts.browser.Copies().Selected() >= 0) {
        parts.restore.mnuOpenCopyClick();
    } else {
        Open(parts);
    }
}

// Nothing brings the old names back, so the user is asked first.
void LowerNames(MainParts& parts) {
    const std::wstring folder = parts.editing.GetFileFolder(FileDialogKind::AddFolder);
    if (folder.empty()) return;
    const std::wstring question =
        parts.state.IsArabic()
            ? L"هل تريد تحويل الأحرف الكبيرة في أسماء كل الملفات والمجلدات داخل هذا "
              L"المجلد إلى أحرف صغيرة؟ لا يمكن التراجع عن ذلك."
            : L"Rename all files and folders in this folder to lower case? This cannot be "
              L"undone.";
    if (parts.system.boxes.Show({.text = question + L"\r\n" + folder,
                                 .buttons = BoxButtons::YesNo,
                                 .rightToLeft = parts.state.IsArabic(),
                                 .secondIsDefault = true}) != BoxAnswer::Yes) {
        return;
    }
    const KeepAwake awake;
    MFileDosShell::TreeNamesLower(parts.system, folder);
    parts.system.boxes.Show({.text = L"Done"});
}

// A page that is missing opens nothing.
void ShowHelp(MainParts& parts) {
    const std::wstring page = parts.state.applicationFolder +
                              (parts.state.IsArabic() ? L"\\Help\\" : L"\\Help\\en\\") +
                              parts.state.executableBaseName + L".htm";
    if (parts.system.files.Stat(page)) MMyScripting::ShellPath(parts.system, page);
}

// The box disables the window itself, and enables it again before it goes.
void ShowAbout(MainParts& parts) {
    parts.application.Ready(true);
    parts.about.AsAbout(parts.form);
}

void ChangeLanguage(MainParts& parts) {
    parts.language.Write(parts.state.IsArabic() ? Language::English : Language::Arabic);
    parts.list.FileSave();
    parts.application.EndAtOnce();
}

void SwitchLogonStart(MainParts& parts) {
    parts.logonStart.ApplicationSartup(!parts.form.Menus().IsChecked(control::mnuOptions, 0));
}

/// A command on stored copies, which may take long.
template <void (RestoreCommands::*Command)()>
void OnCopies(MainParts& parts) {
    const KeepAwake awake;
    (parts.restore.*Command)();
}

template <int Index>
void OpenRecent(MainParts& parts) {
    parts.recent.mnuRecentFileClick(Index);
}

template <ViewStyle Style>
void ShowAs(MainParts& parts) {
    ShowLists(parts.form, Style);
}

template <ViewArrange Arrange>
void ArrangeBy(MainParts& parts) {
    ArrangeLists(parts.form, Arrange);
}

constexpr int kNone = MainCommand::kNone;

constexpr MainCommand kCommands[] = {
    {ID_mnuFileNew, ID_Toolbar1_FileNew, L"mnuFileNewClick",
     [](MainParts& parts) { parts.list.FileNew(false); }},
    {ID_mnuFileOpen, ID_Toolbar1_FileOpen, L"mnuFileOpenClick",
     [](MainParts& parts) { parts.list.FileOpen(); }},
    {ID_mnuFileSave, ID_Toolbar1_FileSave, L"mnuFileSaveClick",
     [](MainParts& parts) { parts.list.FileSave(); }},
    {ID_mnuFileSaveAs, ID_Toolbar1_FileSaveAs, L"mnuFileSaveAsClick",
     [](MainParts& parts) { parts.list.FileSaveAs(); }},
    {ID_mnuFileClose, ID_Toolbar1_FileExit, L"mnuFileCloseClick",
     [](MainParts& parts) { parts.list.DoClose(); }},
    {ID_mnuRecentFile_0, kNone, L"mnuRecentFileClick", OpenRecent<0>},
    {ID_mnuRecentFile_1, kNone, L"mnuRecentFileClick", OpenRecent<1>},
    {ID_mnuRecentFile_2, kNone, L"mnuRecentFileClick", OpenRecent<2>},
    {ID_mnuRecentFile_3, kNone, L"mnuRecentFileClick", OpenRecent<3>},

    {ID_mnuBackup, ID_Toolbar1_ActionBackup, L"mnuBackupClick", BackUp},
    {ID_mnuAddFile, ID_Toolbar1_EditAddFile, L"mnuAddFileClick",
     [](MainParts& parts) { parts.editing.mnuAddFileClick(); }},
    {ID_mnuAddFiles, ID_Toolbar1_EditAddFiles, L"AddRule",
     [](MainParts& parts) { parts.editing.AddRule(); }},
    {ID_mnuAddFolder, ID_Toolbar1_EditAddFolder, L"mnuAddFolderClick",
     [](MainParts& parts) { parts.editing.mnuAddFolderClick(); }},
    {ID_mnuDel, ID_Toolbar1_Del, L"mnuDelClick", [](MainParts& parts) { parts.editing.DelItem(); }},
    {ID_mnuDelAll, ID_Toolbar1_EditDelAll, L"mnuDelAllClick",
     [](MainParts& parts) { parts.editing.mnuDelAllClick(); }},
    {ID_mnuOpen, kNone, L"mnuOpenClick", Open},
    {kNone, ID_Toolbar1_ActionOpen, L"mnuOpenClick", OpenInFocus},

    {ID_mnuRestore, ID_Toolbar1_ActionRestore, L"mnuRestoreClick",
     OnCopies<&RestoreCommands::mnuRestoreClick>},
    {ID_mnuRestoreTo, ID_Toolbar1_ActionRestoreTo, L"mnuRestoreToClick",
     OnCopies<&RestoreCommands::mnuRestoreToClick>},
    {ID_mnuOpenCopy, kNone, L"mnuOpenCopyClick",
     [](MainParts& parts) { parts.restore.mnuOpenCopyClick(); }},
    {ID_mnuDelCopy, kNone, L"mnuDelCopyClick", OnCopies<&RestoreCommands::mnuDelCopyClick>},
    {ID_mnuDelCopies, kNone, L"mnuDelCopiesClick", OnCopies<&RestoreCommands::mnuDelCopiesClick>},

    {ID_mnuViewMethod_0, ID_Toolbar1_ViewLIcons, L"mnuViewMethodClick",
     ShowAs<ViewStyle::LargeIcons>},
    {ID_mnuViewMethod_1, ID_Toolbar1_ViewSIcons, L"mnuViewMethodClick",
     ShowAs<ViewStyle::SmallIcons>},
    {ID_mnuViewMethod_2, ID_Toolbar1_ViewList, L"mnuViewMethodClick", ShowAs<ViewStyle::List>},
    {ID_mnuViewMethod_3, ID_Toolbar1_ViewDetails, L"mnuViewMethodClick",
     ShowAs<ViewStyle::Details>},
    {ID_mnuViewAlign_0, kNone, L"mnuViewAlignClick", ArrangeBy<ViewArrange::None>},
    {ID_mnuViewAlign_1, kNone, L"mnuViewAlignClick", ArrangeBy<ViewArrange::Left>},
    {ID_mnuViewAlign_2, kNone, L"mnuViewAlignClick", ArrangeBy<ViewArrange::Top>},

    {ID_mnuOptions_0, kNone, L"mnuOptionsClick", SwitchLogonStart},
    {ID_mnuToolRepair, kNone, L"mnuToolRepairClick", LowerNames},
    {ID_mnuToolsDelTemp, kNone, L"mnuToolsDelTempClick",
     [](MainParts& parts) { parts.application.DeleteTemporaryFiles(); }},
    {ID_mnuHelpHelp, kNone, L"mnuHelpHelpClick", ShowHelp},
    {ID_mnuHelpAbout, kNone, L"mnuHelpAboutClick", ShowAbout},
    {ID_mnuToolEnAr, kNone, L"mnuToolEnArClick", ChangeLanguage},
};

}  // namespace

const MainCommand* MainCommand::Find(int id) {
    const auto found = std::ranges::find_if(kCommands, [id](const MainCommand& command) {
        return id != kNone && (command.entry == id || command.button == id);
    });
    return found == std::end(kCommands) ? nullptr : &*found;
}

const MainCommand* MainCommand::FindByKey(std::wstring_view key) {
    const auto found = std::ranges::find_if(
        kToolButtons, [key](const ToolButtonData& button) { return EqualNoCase(button.key, key); });
    return found == kToolButtons.end() ? nullptr : Find(found->id);
}

void ShowLists(Form& main, ViewStyle style) {
    static constexpr std::array kKeys{L"ViewLIcons", L"ViewSIcons", L"ViewList", L"ViewDetails"};
    const auto chosen = static_cast<std::size_t>(style);
    for (const std::wstring_view name : kLists) main.List(name).SetStyle(style);
    main.Menus().CheckOnly(control::mnuViewMethod, static_cast<int>(style));
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        main.Tools(control::Toolbar1).Check(kKeys[i], i == chosen);
    }
}

void ArrangeLists(Form& main, ViewArrange arrange) {
    for (const std::wstring_view name : kLists) main.List(name).SetArrange(arrange);
    main.Menus().CheckOnly(control::mnuViewAlign, static_cast<int>(arrange));
}

}  // namespace vw
