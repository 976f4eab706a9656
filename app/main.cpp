#include "app/Program.h"
#include "platform/WindowsHeader.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    // Load libraries from the system's folder only, never from the program's own, which others may
    // be able to write to.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    // Report missing media as an error code instead of a blocking dialog of the system.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    vw::Program program;
    return program.Run(GetCommandLineW());
}
