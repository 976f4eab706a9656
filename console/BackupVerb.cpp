#include <memory>

#include "console/BackupProgress.h"
#include "console/Console.h"
#include "console/ConsoleList.h"
#include "console/JsonLine.h"
#include "console/RunLog.h"
#include "console/Verbs.h"
#include "engine/CPackage.h"
#include "platform/RuntimeError.h"

namespace vw {

int Backup(Console& console, const BackupArguments& arguments) {
    const ConsoleList list = ReadConsoleList(console, arguments.list);
    std::unique_ptr<RunLog> log;
    if (!arguments.logFolder.empty()) {
        log = std::make_unique<RunLog>(console, arguments.logFolder);
        console.output.SetCopy([&log](std::wstring_view line) { log->Write(line); });
    }
    console.output.Line(L"Backing up " + list.path);
    console.output.Json(JsonLine("start").Text("list", list.path));
    console.state.currentListPath = list.path;
    BackupProgress progress(console);
    ConsoleProgram program;
    CPackage engine(console.system, console.state, progress, program);
    engine.KeepCopiesOfMissingItems(arguments.keepMissing);
    console.SetTick([&progress] { progress.Tick(); });
    try {
        engine.BackupAll();
    } catch (const EndOfRun&) {
        console.output.Error(console.state.BackupTo, L"The destination folder does not exist",
                             error_number::kPathNotFound);
    }
    console.SetTick({});
    progress.Finish(console.exitStatus.Code());
    if (log && arguments.logsToKeep > 0) log->DeleteOlder(arguments.logsToKeep);
    console.output.SetCopy({});
    return 0;
}

}  // namespace vw
