// The two languages, views, About, help and the tools, in the real windows.

#include <gmock/gmock.h>

#include <array>

#include "platform/TextCase.h"
#include "tests/windows/BackupWindows.h"
// Needs windows.h before it.
#include <psapi.h>

namespace vw::test {
namespace {

class Interface : public BackupWindows {};

bool HasLoaded(DWORD process, std::wstring_view library) {
    const KernelHandle handle(
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process));
    std::array<HMODULE, 200> modules{};
    DWORD bytes = 0;
    EnumProcessModules(handle.Get(), modules.data(), sizeof modules, &bytes);
    for (std::size_t i = 0; i < std::min(modules.size(), bytes / sizeof(HMODULE)); ++i) {
        std::array<wchar_t, MAX_PATH> name{};
        GetModuleBaseNameW(handle.Get(), modules.at(i), name.data(), MAX_PATH);
        if (EqualNoCase(name.data(), library)) return true;
    }
    return false;
}

// The system offers no way to read the names here; its service for them is what is loaded.
TEST_F(Interface, ShownWindow_NamesItsControlsForScreenReaders) {
    WriteDefaultList({letter});
    DrivenProgram window(program.With(L""));
    window.WaitUntil([&] { return HasLoaded(window.Run().ProcessId(), L"oleacc.dll"); },
                     "the names of the controls");
    window.Close();
}

}  // namespace
}  // namespace vw::test
