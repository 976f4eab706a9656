#include "tests/platform/ApiFixture.h"

namespace vw::test {
namespace {

// One entry for the whole machine; the tests write an entry of their own.
const std::wstring kRunKey = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
const std::wstring kEntry = L"VaultwrightTests-Startup";

class ShellStartup : public ApiTest {
  protected:
    SavedValue entry{HKEY_LOCAL_MACHINE, kRunKey, kEntry};

    [[nodiscard]] static std::optional<StoredValue> Stored() {
        return ReadValue(HKEY_LOCAL_MACHINE, kRunKey, kEntry);
    }
};

TEST_F(ShellStartup, On_StoresTheCommandLineAsItIs) {
    const std::wstring command = L"C:\\Program Files\\My Vault\\Vaultwright.exe /S";
    api.ApplicationSartup(kEntry, command, true);
    EXPECT_EQ(Stored(), TextValue(command));
    EXPECT_TRUE(api.ApplicationSartup(kEntry));
}

TEST_F(ShellStartup, Off_DeletesTheEntry) {
    api.ApplicationSartup(kEntry, L"C:\\a.exe /S", true);
    api.ApplicationSartup(kEntry, L"C:\\a.exe /S", false);
    EXPECT_EQ(Stored(), std::nullopt);
    EXPECT_FALSE(api.ApplicationSartup(kEntry));
}

TEST_F(ShellStartup, On_NoCommandLine_DeletesTheEntry) {
    api.ApplicationSartup(kEntry, L"C:\\a.exe /S", true);
    api.ApplicationSartup(kEntry, L"", true);
    EXPECT_EQ(Stored(), std::nullopt);
}

TEST_F(ShellStartup, EmptyName_OpensNoKey) {
    // An entry without a name and data would mean the key of all entries: were it asked for,
    // this machine keeps its own.
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    api.ApplicationSartup(L"", L"C:\\a.exe /S", true);
    api.ApplicationSartup(L"", L"C:\\a.exe /S", false);
    EXPECT_TRUE(registry.opened.empty());
}

TEST_F(ShellStartup, MissingOrEmptyEntry_IsOff) {
    EXPECT_FALSE(api.ApplicationSartup(kEntry));
    entry.Set(L"");
    EXPECT_FALSE(api.ApplicationSartup(kEntry));
}

TEST_F(ShellStartup, WithoutTheRights_NoMessage_EntryUnchanged) {
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    api.ApplicationSartup(kEntry, L"C:\\a.exe /S", true);
    registry.createKeyFails.reset();
    EXPECT_FALSE(api.ApplicationSartup(kEntry));

    registry.setValueFails = ERROR_ACCESS_DENIED;
    api.ApplicationSartup(kEntry, L"C:\\a.exe /S", true);
    EXPECT_FALSE(api.ApplicationSartup(kEntry));
}

}  // namespace
}  // namespace vw::test
