// kill_point prepare FOLDER none|full: makes a world for a run that will be killed.
// kill_point check FOLDER none|full PROGRAM [changed]: looks at the world after the kill, lets the
// program run to its end (after a further change of the sources), looks again, and makes the world
// anew for the next kill. Writes what is wrong, one line each; exit code 0 when nothing is.

#include <cstdio>
#include <exception>
#include <string_view>

#include "platform/Utf8.h"
#include "tests/system/KillWorld.h"
#include "tests/system/ProgramRun.h"

namespace vw::test {
namespace {

int Tell(const char* when, const std::vector<std::wstring>& faults) {
    for (const std::wstring& fault : faults) {
        std::printf("%s: %s\n", when, ToUtf8(fault).c_str());
    }
    return static_cast<int>(faults.size());
}

bool Check(KillWorld& world, std::wstring_view program, bool changed) {
    int faults = Tell("after the kill", world.AfterKill());
    if (changed) world.ChangeSources();
    ProgramRun run(
        {.program = std::wstring(program), .arguments = L"/B \"" + world.List() + L"\""});
    if (const DWORD code = run.WaitForEnd(); code != 0) {
        std::printf("the next run ended with exit code %lu\n%s\n", code,
                    ToUtf8(run.Errors()).c_str());
        ++faults;
    }
    faults += Tell("after the next run", world.AfterNextRun());
    return faults == 0;
}

}  // namespace
}  // namespace vw::test

int wmain(int count, wchar_t** arguments) try {
    using vw::test::KillWorld;
    // What was found is told even when this tool itself comes to a sudden end.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const std::wstring_view command = count >= 4 ? arguments[1] : L"";
    const bool isCheck = command == L"check" && count >= 5;
    if (!isCheck && command != L"prepare") {
        std::puts("usage: kill_point prepare|check FOLDER none|full [PROGRAM [changed]]");
        return 2;
    }
    const auto history = arguments[3] == std::wstring_view(L"full") ? KillWorld::History::Full
                                                                    : KillWorld::History::None;
    KillWorld world(arguments[2], history);
    if (isCheck && !vw::test::Check(world, arguments[4], count > 5)) return 1;
    world.Prepare();
    return 0;
} catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 3;
}
