// kill_point prepare FOLDER none|full|incomplete: makes a world for a run that will be killed.
// kill_point check FOLDER HISTORY PROGRAM [changed]: looks at the world after the kill, lets the
// program run to its end (after a further change of the sources), looks again, and makes the world
// anew for the next kill.
// kill_point fault FOLDER HISTORY PROGRAM EXIT_CODE REPORTS [changed]: the same after a run that
// met a failing call; REPORTS is the file of what it wrote to its standard error.
// kill_point run REPORTS PROGRAM ARGUMENTS: lets the program run to its end, answers its boxes, and
// ends with its exit code; REPORTS is the file for what it writes to its standard error.
// The others write what is wrong, one line each; exit code 0 when nothing is.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "platform/Utf8.h"
#include "tests/system/CrashScenario.h"
#include "tests/system/ProgramRun.h"

namespace vw::test {
namespace {

int Tell(const char* when, const std::vector<std::wstring>& faults) {
    for (const std::wstring& fault : faults) {
        std::printf("%s: %s\n", when, ToUtf8(fault).c_str());
    }
    return static_cast<int>(faults.size());
}

/// Lets the program run to its end, and looks at the world that it found and at what it left.
bool Check(CrashScenario& world, std::wstring_view program, int faults, bool changed) {
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

CrashScenario::History HistoryOf(std::wstring_view name) {
    if (name == L"full") return CrashScenario::History::Full;
    return name == L"incomplete" ? CrashScenario::History::Incomplete
                                 : CrashScenario::History::None;
}

int RunToItsEnd(std::wstring_view reports, const ProgramStart& start) {
    ProgramRun run(start);
    const DWORD code = run.WaitForEnd();
    std::ofstream(std::filesystem::path(reports), std::ios::binary) << ToUtf8(run.Errors());
    return static_cast<int>(code);
}

}  // namespace
}  // namespace vw::test

int wmain(int count, wchar_t** arguments) try {
    using vw::test::CrashScenario;
    using vw::test::Tell;
    // What was found is printed even when this tool itself comes to a sudden end.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const std::wstring_view command = count >= 4 ? arguments[1] : L"";
    if (command == L"run" && count >= 5) {
        return vw::test::RunToItsEnd(arguments[2],
                                     {.program = arguments[3], .arguments = arguments[4]});
    }
    const bool isCheck = command == L"check" && count >= 5;
    const bool isFault = command == L"fault" && count >= 7;
    if (!isCheck && !isFault && command != L"prepare") {
        std::puts("usage: see the head of this tool's source");
        return 2;
    }
    CrashScenario world(arguments[2], vw::test::HistoryOf(arguments[3]));
    int faults = 0;
    if (isCheck) faults = Tell("after the kill", world.AfterKill());
    if (isFault) {
        faults = Tell("after the fault",
                      world.AfterFault(std::stoi(arguments[5]),
                                       vw::FromUtf8(vw::test::ReadBytes(arguments[6]))));
    }
    const bool changed = count > (isFault ? 7 : 5);
    if (command != L"prepare" && !vw::test::Check(world, arguments[4], faults, changed)) return 1;
    world.Prepare();
    return 0;
} catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 3;
}
