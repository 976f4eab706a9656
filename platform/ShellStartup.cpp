#include "platform/CCommonAPI.h"

namespace vw {
namespace {

// One entry for all users of the machine.
constexpr std::wstring_view kRunKey = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";

}  // namespace

bool CCommonAPI::ApplicationSartup(std::wstring_view name) {
    return trap_.Or(false, L"ApplicationSartup",
                    [&] { return !RegValue(HKEY_LOCAL_MACHINE, kRunKey, name, REG_SZ).empty(); });
}

void CCommonAPI::ApplicationSartup(std::wstring_view name, std::wstring_view sApplicationPath,
                                   bool on) {
    trap_(L"ApplicationSartup", [&] {
        if (name.empty()) return;
        // Empty data remove the entry.
        RegValue(HKEY_LOCAL_MACHINE, kRunKey, name, REG_SZ,
                 on ? sApplicationPath : std::wstring_view());
    });
}

}  // namespace vw
