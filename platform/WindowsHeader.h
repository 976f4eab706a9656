#pragma once

// The one way to the system's declarations. The macros that would rename our own functions and
// methods are taken back: we call the W and A functions by their full names.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef STRICT
#define STRICT
#endif
#ifndef UNICODE
#define UNICODE
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#endif

#include <windows.h>

#undef CopyFile
#undef CreateFile
#undef DeleteFile
#undef FindWindow
#undef GetFreeSpace
#undef GetMessage
#undef LoadString
#undef MessageBox
#undef MoveFile
#undef Yield
