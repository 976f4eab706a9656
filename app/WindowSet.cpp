#include "app/WindowSet.h"

#include "app/Application.h"
#include "app/LogonStart.h"
#include "platform/ProgramState.h"
#include "ui/Forms.h"

namespace vw {

namespace {

EngineProvider EngineOf(Application& application) {
    return [&application]() -> CPackage& { return application.Engine(); };
}

}  // namespace

WindowSet::WindowSet(System& system, ProgramState& state, MRecentFiles::SettingsStore& settings,
                     LogonStart& logonStart, LanguageChoice& language, Application& application)
    : frmMain(MainForm(), state.language, main),
      frmTrayIcon(system, state, state.language, application, [this] { return LoadedForms(); }),
      frmBusyDialog(
          system, state, state.language,
          {.program = application,
           .showIcon = [this](bool on) { on ? frmTrayIcon.Load() : frmTrayIcon.Unload(); },
           .showMainWindow =
               [this, &application] {
                   if (frmMain.IsLoaded()) application.ShowMainWindow();
               }}),
      frmAbout(system, state.language),
      silent(system.clock, frmTrayIcon, frmBusyDialog),
      status(frmMain),
      browser(system, frmMain, status, EngineOf(application)),
      context{.progress = application.LongWork(),
              .program = application,
              .copies = browser,
              .status = status,
              .engine = EngineOf(application),
              .showCaption = [this] { main.SetCaption(); },
              .startAtLogon = [&logonStart](bool on) { logonStart.ApplicationSartup(on); }},
      dialogs(frmMain),
      recent(system.errors, settings, state,
             {.ready = [&application](bool flag) { application.Ready(flag); },
              .open = [this](std::wstring_view path) { list.FileOpen(path); },
              .openDefault = [this] { list.OpenDefaultList(); },
              .showCaption = context.showCaption,
              .showMenu = [this](const RecentFileMenu& menu) { main.ShowRecentFiles(menu); }}),
      list(system, state, frmMain, dialogs, settings, recent, context),
      editing(system, state, frmMain, dialogs, list, context),
      restore(system, state, frmMain, browser, dialogs, list.Dialog(), application.LongWork(),
              EngineOf(application)),
      idleWatch(system.clock, state, frmMain, frmBusyDialog, frmTrayIcon),
      main({.system = system,
            .state = state,
            .application = application,
            .form = frmMain,
            .status = status,
            .busy = frmBusyDialog,
            .about = frmAbout,
            .list = list,
            .editing = editing,
            .recent = recent,
            .browser = browser,
            .restore = restore,
            .logonStart = logonStart,
            .language = language}) {}

std::vector<Form*> WindowSet::LoadedForms() {
    std::vector<Form*> loaded;
    for (Form* form :
         {&frmMain, &frmBusyDialog.Window(), &frmAbout.Window(), &frmTrayIcon.Window()}) {
        if (form->IsLoaded()) loaded.push_back(form);
    }
    return loaded;
}

}  // namespace vw
