#include <string>

#include "tests/platform/ApiFixture.h"
#include "tests/support/ImportHook.h"

namespace vw::test {
namespace {

const HKEY kRoot = HKEY_CURRENT_USER;

// The system adds a NUL that it finds right behind a text: parts of this one have none.
constexpr std::string_view kUnended = "ABCD";

class RegistryValues : public ApiTest {
  protected:
    ScratchKey key{kRoot, L"Software\\VaultwrightTests\\Values"};

    [[nodiscard]] std::wstring Read(std::wstring_view name) {
        return api.RegValue(kRoot, key.Path(), name, REG_SZ);
    }
    void Write(std::wstring_view name, std::wstring_view data, DWORD type = REG_SZ) {
        api.RegValue(kRoot, key.Path(), name, type, data);
    }
};

TEST_F(RegistryValues, Read_ReturnsTheText) {
    WriteValue(kRoot, key.Path(), L"Name", TextValue(L"D:\\Vault \u00E9"));
    EXPECT_EQ(Read(L"Name"), L"D:\\Vault \u00E9");
}

TEST_F(RegistryValues, Read_EmptyName_ReturnsTheDefaultValue) {
    WriteValue(kRoot, key.Path(), L"", TextValue(L"the default"));
    EXPECT_EQ(Read(L""), L"the default");
}

TEST_F(RegistryValues, Read_LongText_ReturnsAllOfIt) {
    const std::wstring text(20000, L'x');
    WriteValue(kRoot, key.Path(), L"Name", TextValue(text));
    EXPECT_EQ(Read(L"Name"), text);
}

TEST_F(RegistryValues, Read_EmptyPath_OpensNoKey) {
    EXPECT_EQ(api.RegValue(kRoot, L"", L"Name", REG_SZ), L"");
    EXPECT_TRUE(registry.opened.empty());
}

TEST_F(RegistryValues, Read_MissingValue_CreatesItsKey) {
    ASSERT_FALSE(KeyExists(kRoot, key.Path()));
    EXPECT_EQ(Read(L"Missing"), L"");
    EXPECT_TRUE(KeyExists(kRoot, key.Path()));
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Missing"), std::nullopt);
}

TEST_F(RegistryValues, Read_EmptyText_ReturnsEmptyText) {
    WriteValue(kRoot, key.Path(), L"Name", TextValue(L""));
    EXPECT_EQ(Read(L"Name"), L"");
}

TEST_F(RegistryValues, Read_OneByte_ReturnsEmptyText) {
    WriteAnsi(kRoot, key.Path(), L"Text", REG_SZ, kUnended.substr(0, 1));
    WriteAnsi(kRoot, key.Path(), L"Bytes", REG_BINARY, "A");
    EXPECT_EQ(Read(L"Text"), L"");
    EXPECT_EQ(Read(L"Bytes"), L"");
}

TEST_F(RegistryValues, Read_OneCharacterAndTerminator_ReturnsIt) {
    WriteAnsi(kRoot, key.Path(), L"Text", REG_SZ, std::string("A\0", 2));
    EXPECT_EQ(Read(L"Text"), L"A");
}

TEST_F(RegistryValues, Read_DoubleWord_ReturnsItsBytesButTheLast) {
    WriteValue(kRoot, key.Path(), L"Number", {REG_DWORD, std::string("\5\1\0\0", 4)});
    EXPECT_EQ(Read(L"Number"), std::wstring(L"\5\1\0", 3));
}

TEST_F(RegistryValues, Read_AnyTypeAskedFor_ReturnsTheSame) {
    WriteValue(kRoot, key.Path(), L"Number", {REG_DWORD, std::string("\5\1\0\0", 4)});
    for (const DWORD type : {REG_SZ, REG_DWORD, REG_BINARY}) {
        EXPECT_EQ(api.RegValue(kRoot, key.Path(), L"Number", type), std::wstring(L"\5\1\0", 3));
    }
}

// Nothing to cut, so the blank that the buffer has beyond the data stays.
TEST_F(RegistryValues, Read_DataWithoutNul_EndWithABlank) {
    WriteValue(kRoot, key.Path(), L"Number", {REG_DWORD, "abcd"});
    WriteAnsi(kRoot, key.Path(), L"Text", REG_SZ, kUnended.substr(0, 2));
    EXPECT_EQ(Read(L"Number"), L"abcd ");
    EXPECT_EQ(Read(L"Text"), L"AB ");
}

TEST_F(RegistryValues, Read_NulInTheMiddle_LosesTheLastByteOnly) {
    WriteValue(kRoot, key.Path(), L"Bytes", {REG_BINARY, std::string("a\0bc", 4)});
    EXPECT_EQ(Read(L"Bytes"), std::wstring(L"a\0b", 3));
}

TEST_F(RegistryValues, Read_ExpandableText_IsNotExpanded) {
    StoredValue value = TextValue(L"%TEMP%\\x");
    value.type = REG_EXPAND_SZ;
    WriteValue(kRoot, key.Path(), L"Name", value);
    EXPECT_EQ(Read(L"Name"), L"%TEMP%\\x");
}

TEST_F(RegistryValues, Read_KeyRefused_ReturnsEmptyText) {
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    EXPECT_EQ(Read(L"Name"), L"");
    EXPECT_EQ(registry.queries, 0);
}

TEST_F(RegistryValues, Read_SecondQueryFails_ReturnsEmptyText) {
    WriteValue(kRoot, key.Path(), L"Name", TextValue(L"text"));
    registry.onQuery = [](int query) {
        return query == 2 ? std::optional<LSTATUS>(ERROR_FILE_NOT_FOUND) : std::nullopt;
    };
    EXPECT_EQ(Read(L"Name"), L"");
    EXPECT_EQ(registry.queries, 2);
}

TEST_F(RegistryValues, Read_ValueGrowsMeanwhile_ReturnsEmptyText) {
    WriteValue(kRoot, key.Path(), L"Name", TextValue(L"text"));
    registry.onQuery = [this](int query) {
        if (query == 2) WriteValue(kRoot, key.Path(), L"Name", TextValue(L"a longer text"));
        return std::optional<LSTATUS>();
    };
    EXPECT_EQ(Read(L"Name"), L"");
}

TEST_F(RegistryValues, Read_ValueShrinksMeanwhile_ReturnsTheNewText) {
    WriteValue(kRoot, key.Path(), L"Name", TextValue(L"a longer text"));
    registry.onQuery = [this](int query) {
        if (query == 2) WriteValue(kRoot, key.Path(), L"Name", TextValue(L"text"));
        return std::optional<LSTATUS>();
    };
    EXPECT_EQ(Read(L"Name"), L"text");
}

TEST_F(RegistryValues, Write_StoresTheTextWithItsTerminator) {
    Write(L"Name", L"D:\\Vault");
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Name"), TextValue(L"D:\\Vault"));
    EXPECT_EQ(Read(L"Name"), L"D:\\Vault");
}

LSTATUS WINAPI CheckReserved(HKEY, LPCSTR, DWORD reserved, DWORD, const BYTE*, DWORD) {
    EXPECT_EQ(reserved, 0U);
    return ERROR_SUCCESS;
}

TEST_F(RegistryValues, Write_ReservedParameter_IsZero) {
    const ImportHook set("RegSetValueExA", &CheckReserved);
    Write(L"Name", L"x");
}

TEST_F(RegistryValues, Write_EmptyName_StoresTheDefaultValue) {
    Write(L"", L"the default");
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L""), TextValue(L"the default"));
}

TEST_F(RegistryValues, Write_AnyType_StoresTheBytesOfTheText) {
    Write(L"Number", L"1234", REG_DWORD);
    Write(L"Bytes", L"xy", REG_BINARY);
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Number"),
              (StoredValue{REG_DWORD, std::string("1234\0", 5)}));
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Bytes"),
              (StoredValue{REG_BINARY, std::string("xy\0", 3)}));
}

TEST_F(RegistryValues, Write_EmptyPath_ChangesNothing) {
    api.RegValue(kRoot, L"", L"Name", REG_SZ, L"text");
    api.RegValue(kRoot, L"", L"", REG_SZ, L"");
    EXPECT_TRUE(registry.opened.empty());
    EXPECT_EQ(registry.changes, 0);
}

TEST_F(RegistryValues, Write_EmptyText_DeletesThatValueOnly) {
    Write(L"One", L"1");
    Write(L"Two", L"2");
    Write(L"One", L"");
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"One"), std::nullopt);
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Two"), TextValue(L"2"));
}

TEST_F(RegistryValues, Write_EmptyTextAndName_DeletesTheKeyAndSubkeys) {
    WriteValue(kRoot, key.Path(L"Below\\Deeper"), L"Name", TextValue(L"text"));
    Write(L"Name", L"text");
    Write(L"", L"");
    EXPECT_FALSE(KeyExists(kRoot, key.Path()));
    EXPECT_TRUE(KeyExists(kRoot, L"Software\\VaultwrightTests"));
}

TEST_F(RegistryValues, Write_KeyRefused_ChangesNothing) {
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    Write(L"Name", L"text");
    Write(L"Name", L"");
    EXPECT_EQ(registry.changes, 0);
}

TEST_F(RegistryValues, Write_ValueRefused_ReportsNothing) {
    registry.setValueFails = ERROR_ACCESS_DENIED;
    Write(L"Name", L"text");
    EXPECT_EQ(registry.changes, 1);
}

TEST_F(RegistryValues, Delete_ReturnsTheStatus) {
    Write(L"Name", L"text");
    EXPECT_EQ(api.RegDeleteValue(kRoot, key.Path(), L"Name"), ERROR_SUCCESS);
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Name"), std::nullopt);
    EXPECT_EQ(api.RegDeleteValue(kRoot, key.Path(), L"Name"), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryValues, Delete_MissingValue_CreatesItsKey) {
    EXPECT_EQ(api.RegDeleteValue(kRoot, key.Path(), L"Name"), ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(KeyExists(kRoot, key.Path()));
}

TEST_F(RegistryValues, Delete_NoPathOrName_ReturnsBadKey) {
    EXPECT_EQ(api.RegDeleteValue(kRoot, L"", L"Name"), 1010);
    EXPECT_EQ(api.RegDeleteValue(kRoot, key.Path(), L""), 1010);
    EXPECT_TRUE(registry.opened.empty());
}

TEST_F(RegistryValues, Delete_KeyRefused_ReturnsZero) {
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    EXPECT_EQ(api.RegDeleteValue(kRoot, key.Path(), L"Name"), 0);
}

TEST_F(RegistryValues, ClosesEveryKeyAfterUse) {
    Write(L"Name", L"text");
    (void)Read(L"Name");
    Write(L"Name", L"");
    ASSERT_FALSE(registry.keys.empty());
    for (const HKEY opened : registry.keys) {
        EXPECT_NE(RegQueryValueExW(opened, L"", nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
        EXPECT_NE(RegCloseKey(opened), ERROR_SUCCESS);
    }
}

}  // namespace
}  // namespace vw::test
