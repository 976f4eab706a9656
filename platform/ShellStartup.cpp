#include "platform/CCommonAPI.h"

namespace vw {
namespace {

// One entry for all users of the machine.
constexpr std::wstring_view kRunKey = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";

}  // namespace

bool CCommonAPI::ApplicationSartup(std::wstring_view name) {
    return Quietly(L"ApplicationSartup", false,
                   [&] { return !RegValue(HKEY_LOCAL_MACHINE, kRunKey, name, REG_SZ).empty(); });
}

}  // namespace vw
