#include "tests/platform/ApiFixture.h"

namespace vw::test {
namespace {

class RegistryKeys : public ApiTest {
  protected:
    ScratchKey key{HKEY_CURRENT_USER, L"Software\\VaultwrightTests\\Keys"};

    LSTATUS Delete(std::wstring_view path) { return api.RegDeleteKeyVB(HKEY_CURRENT_USER, path); }
};

TEST_F(RegistryKeys, Create_MakesAKeyOfTheMachine) {
    const ScratchKey machine(HKEY_LOCAL_MACHINE, L"SOFTWARE\\VaultwrightTests");
    EXPECT_EQ(api.RegKeyCreate(machine.Path(L"A\\B")), ERROR_SUCCESS);
    EXPECT_TRUE(KeyExists(HKEY_LOCAL_MACHINE, machine.Path(L"A\\B")));
    EXPECT_EQ(api.RegKeyCreate(machine.Path(L"A\\B")), ERROR_SUCCESS);
}

TEST_F(RegistryKeys, Create_EmptyPath_ReturnsBadKey) {
    EXPECT_EQ(api.RegKeyCreate(L""), 1010);
    EXPECT_TRUE(registry.opened.empty());
}

TEST_F(RegistryKeys, Create_Refused_ReturnsItsStatus) {
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    EXPECT_EQ(api.RegKeyCreate(L"SOFTWARE\\VaultwrightTests"), ERROR_ACCESS_DENIED);
}

TEST_F(RegistryKeys, Delete_RemovesTheKeyAndItsSubkeys) {
    WriteValue(HKEY_CURRENT_USER, key.Path(L"A\\B\\C"), L"Name", TextValue(L"text"));
    WriteValue(HKEY_CURRENT_USER, key.Path(L"A2"), L"Name", TextValue(L"text"));
    EXPECT_EQ(Delete(key.Path(L"A")), ERROR_SUCCESS);
    EXPECT_FALSE(KeyExists(HKEY_CURRENT_USER, key.Path(L"A")));
    EXPECT_TRUE(KeyExists(HKEY_CURRENT_USER, key.Path(L"A2")));
}

TEST_F(RegistryKeys, Delete_MissingKey_CreatesItsParent) {
    EXPECT_EQ(Delete(key.Path(L"Missing")), ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(KeyExists(HKEY_CURRENT_USER, key.Path()));
}

TEST_F(RegistryKeys, Delete_PathWithoutBackslash_ChangesNothing) {
    const ScratchKey top(HKEY_CURRENT_USER, L"VaultwrightTests-Top");
    WriteValue(HKEY_CURRENT_USER, top.Path(), L"Name", TextValue(L"text"));
    EXPECT_EQ(Delete(top.Path()), 0);
    EXPECT_EQ(Delete(L""), 0);
    EXPECT_TRUE(KeyExists(HKEY_CURRENT_USER, top.Path()));
    EXPECT_TRUE(registry.opened.empty());
}

TEST_F(RegistryKeys, Delete_BackslashAndName_RemovesTheTopLevelKey) {
    for (const HKEY root : {HKEY_CURRENT_USER, HKEY_CLASSES_ROOT}) {
        const ScratchKey top(root, L"VaultwrightTests-Top");
        WriteValue(root, top.Path(L"Below"), L"Name", TextValue(L"text"));
        EXPECT_EQ(api.RegDeleteKeyVB(root, L"\\" + top.Path()), ERROR_SUCCESS);
        EXPECT_FALSE(KeyExists(root, top.Path()));
    }
}

TEST_F(RegistryKeys, Delete_ParentRefused_ReturnsZero) {
    WriteValue(HKEY_CURRENT_USER, key.Path(L"A"), L"Name", TextValue(L"text"));
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    EXPECT_EQ(Delete(key.Path(L"A")), 0);
    EXPECT_EQ(registry.changes, 0);
}

TEST_F(RegistryKeys, Delete_Refused_ReturnsItsStatus) {
    registry.deleteTreeFails = ERROR_ACCESS_DENIED;
    EXPECT_EQ(Delete(key.Path(L"A")), ERROR_ACCESS_DENIED);
}

// The system takes the empty name for the key that it is given: a whole root would be emptied.
TEST_F(RegistryKeys, Delete_EmptyName_KeepsTheParent) {
    WriteValue(HKEY_CURRENT_USER, key.Path(L"A"), L"Name", TextValue(L"text"));
    EXPECT_EQ(Delete(key.Path(L"")), 1010);
    EXPECT_EQ(Delete(L"\\"), 1010);
    EXPECT_TRUE(registry.deletedTrees.empty());
    EXPECT_TRUE(KeyExists(HKEY_CURRENT_USER, key.Path(L"A")));
}

TEST_F(RegistryKeys, LeadingBackslash_IsTriedAsItIsFirst) {
    api.RegValue(HKEY_CURRENT_USER, L"\\" + key.Path(), L"Name", REG_SZ, L"text");
    ASSERT_FALSE(registry.opened.empty());
    EXPECT_EQ(registry.opened.front(), "\\Software\\VaultwrightTests\\Keys");
    EXPECT_EQ(ReadValue(HKEY_CURRENT_USER, key.Path(), L"Name"), TextValue(L"text"));
    EXPECT_EQ(api.RegValue(HKEY_CURRENT_USER, L"\\" + key.Path(), L"Name", REG_SZ), L"text");
}

TEST_F(RegistryKeys, OtherErrorThanBadPathName_IsNotTriedAgain) {
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    (void)api.RegValue(HKEY_CURRENT_USER, L"\\" + key.Path(), L"Name", REG_SZ);
    EXPECT_EQ(registry.opened.size(), 1U);

    registry.createKeyFails = ERROR_BAD_PATHNAME;
    (void)api.RegValue(HKEY_CURRENT_USER, key.Path(), L"Name", REG_SZ);
    EXPECT_EQ(registry.opened.size(), 2U);
}

TEST_F(RegistryKeys, RemovesOneLeadingBackslashOnly) {
    (void)api.RegValue(HKEY_CURRENT_USER, L"\\\\" + key.Path(), L"Name", REG_SZ);
    EXPECT_EQ(registry.opened, (std::vector<std::string>{"\\\\Software\\VaultwrightTests\\Keys",
                                                         "\\Software\\VaultwrightTests\\Keys"}));
}

}  // namespace
}  // namespace vw::test
