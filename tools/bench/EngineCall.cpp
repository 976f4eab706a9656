// EngineCall restore COPY FOLDER | delete COPY | lower FOLDER: one procedure of the engine in a
// process of its own, for the rows of scripts/bench that the window program runs only behind its
// windows. Restores a copy into the folder, deletes a copy with its comment, or gives everything in
// the folder lower-case names. The exit code is that of vw.exe.

#include <string_view>
#include <vector>

#include "console/Console.h"
#include "console/Output.h"
#include "console/SilentHost.h"
#include "engine/CPackage.h"
#include "fsutil/NameCase.h"
#include "fsutil/PathText.h"
#include "platform/RuntimeError.h"

namespace vw::bench {
namespace {

constexpr int kWrongArguments = 2;

int Run(const std::vector<std::wstring_view>& words) {
    Output output;
    Console console(output);
    SilentHost host(console);
    ConsoleProgram program;
    CPackage engine(console.system, console.state, host, program);
    return console.Run([&] {
        if (words.size() == 3 && words[0] == L"restore") {
            engine.Extract(words[1], words[2], false);
        } else if (words.size() == 2 && words[0] == L"delete") {
            const bool entered = engine.InDestination(MFileDosShell::CFileLocation(words[1]),
                                                      [&] { engine.DeleteCopy(words[1]); });
            if (!entered) return error_number::kDestinationBusy;
        } else if (words.size() == 2 && words[0] == L"lower") {
            MFileDosShell::TreeNamesLower(console.system, words[1]);
        } else {
            return kWrongArguments;
        }
        return 0;
    });
}

}  // namespace
}  // namespace vw::bench

int wmain(int count, wchar_t** arguments) {
    return vw::bench::Run({arguments + 1, arguments + count});
}
