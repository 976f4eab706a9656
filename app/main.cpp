#include "app/Program.h"
#include "platform/WindowsHeader.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    // An empty drive is an answer for us, not a box of the system's that waits for the user.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    vw::Program program;
    return program.Run(GetCommandLineW());
}
