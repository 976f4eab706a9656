#include "app/WindowSet.h"

#include "platform/ProgramState.h"
#include "ui/Forms.h"

namespace vw {

WindowSet::WindowSet(System& system, ProgramState& state, MRecentFiles::SettingsStore& settings,
                     LogonStart& logonStart, LanguageChoice& language, const WindowHosts& hosts)
    : language_(LanguageOf(state)),
      main(system, state, frmMain, hosts.main),
      frmMain(MainForm(), language_, main),
      frmBusyDialog(system, state, language_, hosts.busy),
      frmTrayIcon(system, state, language_, hosts.tray),
      frmAbout(system, language_),
      silent(system.clock, frmTrayIcon, frmBusyDialog),
      dialogs(frmMain),
      recent(system.errors, settings, state, hosts.recent),
      list(system, state, frmMain, dialogs, settings, recent, hosts.list),
      editing(system, state, frmMain, dialogs, list, hosts.list),
      browser(system, frmMain, hosts.restore),
      restore(system, state, frmMain, browser, dialogs, list.Dialog(), hosts.restore),
      idleWatch(system.clock, state, frmMain, frmBusyDialog, frmTrayIcon) {
    main.Bind({list, editing, recent, browser, restore, logonStart, language});
}

Language WindowSet::LanguageOf(const ProgramState& state) {
    return state.arabic ? Language::Arabic : Language::English;
}

std::vector<Form*> WindowSet::LoadedForms() {
    std::vector<Form*> loaded;
    for (Form* form :
         {&frmMain, &frmBusyDialog.Window(), &frmAbout.Window(), &frmTrayIcon.Window()}) {
        if (form->IsLoaded()) loaded.push_back(form);
    }
    return loaded;
}

}  // namespace vw
