#include "platform/CCommonAPI.h"

namespace vw {

bool CCommonAPI::IsWinNT() {
    return Quietly(L"IsWinNT", false, [] {
        OSVERSIONINFOEXA version{};
        static_assert(sizeof version == 156);
        version.dwOSVersionInfoSize = sizeof version;
        return GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&version)) != FALSE &&
               version.dwPlatformId == VER_PLATFORM_WIN32_NT;
    });
}

}  // namespace vw
