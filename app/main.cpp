#include "app/Program.h"
#include "platform/WindowsHeader.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    // What lies beside the program, in a folder that others may write to, is not loaded as a
    // library.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    // An empty drive is an answer for us, not a box of the system's that waits for the user.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    vw::Program program;
    return program.Run(GetCommandLineW());
}
