// canary.exe: leaves a file beside itself that says that it was started. Tests put it, under the
// names of programs of the system, where it must never be found.

#include <filesystem>
#include <fstream>

#include "platform/WindowsHeader.h"

int wmain() {
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::ofstream(std::filesystem::path(self) += L".ran") << "started";
    return 0;
}
