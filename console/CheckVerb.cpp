#include <memory>
#include <vector>

#include "console/Console.h"
#include "console/ConsoleList.h"
#include "console/DestinationCheck.h"
#include "console/Findings.h"
#include "console/ItemCheck.h"
#include "console/JsonLine.h"
#include "console/SilentHost.h"
#include "console/StoredCopies.h"
#include "console/Verbs.h"
#include "engine/CPackage.h"
#include "platform/TextCase.h"

namespace vw {

int Check(Console& console, const CheckArguments& arguments) {
    const ConsoleList list = ReadConsoleList(console, arguments.list);
    SilentHost host(console);
    ConsoleProgram program;
    CPackage engine(console.system, console.state, host, program);
    Findings findings(console);
    std::vector<std::unique_ptr<DestinationView>> views;
    for (const std::wstring& destination : list.destinations) {
        console.Try(
            [&] { views.push_back(std::make_unique<DestinationView>(console, destination)); });
    }
    ItemCheck items(console, engine, findings, arguments.content);
    for (const ConsoleItem& item : list.items) {
        Console::StopIfRequested();
        for (const auto& view : views) {
            if (!EqualNoCase(view->Folder(), item.destination)) continue;
            console.Try([&] { items.Check(item); });
        }
    }
    items.Finish();
    for (const auto& view : views) {
        CheckDestination(console, *view, items.CheckedCopies(), findings);
        console.Try([&] {
            if (!view->HasChanged()) return;
            findings.Note(L"changed", view->Folder(), L"the destination changed during the check");
        });
    }
    const std::wstring count = std::to_wstring(list.items.size());
    console.output.Line(count + L" items checked, " + std::to_wstring(findings.Count()) +
                        L" findings");
    console.output.Json(JsonLine("end")
                            .Number("items", static_cast<std::int64_t>(list.items.size()))
                            .Number("findings", findings.Count()));
    return findings.Count() > 0 ? 1 : 0;
}

}  // namespace vw
