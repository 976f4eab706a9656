#include "tests/platform/ApiFixture.h"

namespace vw::test {
namespace {

const HKEY kRoot = HKEY_CLASSES_ROOT;

class ShellFileTypes : public ApiTest {
  protected:
    ScratchKey extension{kRoot, L".vwtest"};
    ScratchKey type{kRoot, L"VaultwrightTestsType"};
    ScratchKey otherType{kRoot, L"VaultwrightTestsOther"};
    std::wstring typeName = type.Path();

    [[nodiscard]] static std::optional<StoredValue> Default(const std::wstring& path) {
        return ReadValue(kRoot, path, L"");
    }
    void Register(std::wstring_view name = L".vwtest") {
        api.RegisterFileType(name, typeName, L"C:\\My Vault\\a.exe", L"C:\\My Vault\\a.ico", true);
    }
    void Remove(std::wstring_view name = L".vwtest") {
        api.RegisterFileType(name, typeName, L"C:\\My Vault\\a.exe", L"", false);
    }
};

TEST_F(ShellFileTypes, Register_WritesExtensionIconVerbAndCommand) {
    Register();
    EXPECT_EQ(Default(extension.Path()), TextValue(L"VaultwrightTestsType"));
    EXPECT_EQ(Default(type.Path(L"DefaultIcon")), TextValue(L"C:\\My Vault\\a.ico"));
    EXPECT_EQ(Default(type.Path(L"shell")), TextValue(L"Open"));
    EXPECT_EQ(Default(type.Path(L"shell\\Open\\Command")),
              TextValue(L"\"C:\\My Vault\\a.exe\" %1"));
    EXPECT_EQ(Default(type.Path()), std::nullopt);
    EXPECT_EQ(typeName, type.Path());
}

TEST_F(ShellFileTypes, ExtensionWithOrWithoutItsPoint_IsTheSameKey) {
    Register(L"vwtest");
    EXPECT_EQ(Default(extension.Path()), TextValue(type.Path()));
    Remove(L".vwtest");
    EXPECT_FALSE(KeyExists(kRoot, extension.Path()));
    Register(L".vwtest");
    EXPECT_EQ(Default(extension.Path()), TextValue(type.Path()));
    Remove(L"vwtest");
    EXPECT_FALSE(KeyExists(kRoot, extension.Path()));
}

TEST_F(ShellFileTypes, Register_ProgramInCapitals_IsAccepted) {
    api.RegisterFileType(L".vwtest", typeName, L"C:\\VAULT\\A.EXE", L"C:\\a.ico", true);
    EXPECT_EQ(Default(type.Path(L"shell\\Open\\Command")), TextValue(L"\"C:\\VAULT\\A.EXE\" %1"));
}

TEST_F(ShellFileTypes, Register_NoProgram_IsRefusedInABox) {
    boxes.Expect(L"Please let sApplicationPath = full path and file name");
    api.RegisterFileType(L".vwtest", typeName, L"C:\\a.bat", L"C:\\a.ico", true);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    const MessageBoxRequest& box = boxes.Shown().front();
    EXPECT_EQ(box.text, L"Please let sApplicationPath = full path and file name");
    EXPECT_EQ(box.title, kApplicationTitle);
    EXPECT_EQ(box.buttons, BoxButtons::Ok);
    EXPECT_EQ(box.icon, BoxIcon::None);
    EXPECT_FALSE(box.rightToLeft);
    EXPECT_TRUE(registry.opened.empty());
    EXPECT_EQ(registry.changes, 0);
}

TEST_F(ShellFileTypes, Remove_DeletesTheExtensionAndTheType) {
    Register();
    Remove();
    EXPECT_FALSE(KeyExists(kRoot, extension.Path()));
    EXPECT_FALSE(KeyExists(kRoot, type.Path()));
}

TEST_F(ShellFileTypes, Register_EmptyProgram_RemovesTheType) {
    Register();
    api.RegisterFileType(L".vwtest", typeName, L"", L"C:\\a.ico", true);
    EXPECT_FALSE(KeyExists(kRoot, extension.Path()));
    EXPECT_FALSE(KeyExists(kRoot, type.Path()));
}

TEST_F(ShellFileTypes, Remove_OtherTypeGiven_DeletesTheRegisteredOne) {
    Register();
    WriteValue(kRoot, extension.Path(), L"", TextValue(otherType.Path()));
    WriteValue(kRoot, otherType.Path(L"shell"), L"", TextValue(L"Open"));
    Remove();
    EXPECT_EQ(typeName, otherType.Path());
    EXPECT_FALSE(KeyExists(kRoot, otherType.Path()));
    EXPECT_TRUE(KeyExists(kRoot, type.Path(L"shell\\Open\\Command")));
    EXPECT_FALSE(KeyExists(kRoot, extension.Path()));
}

// Without a type there is only a backslash left of its key: the root of all types.
TEST_F(ShellFileTypes, Remove_TypeIsNotRegistered_KeepsAllOthers) {
    Register(L".vwtest");
    std::wstring unknown = L"Unknown";
    api.RegisterFileType(L".vwtest2", unknown, L"", L"", false);
    EXPECT_EQ(unknown, L"");
    EXPECT_EQ(registry.deletedTrees, std::vector<std::string>{".vwtest2"});
    EXPECT_FALSE(KeyExists(kRoot, L".vwtest2"));
    EXPECT_TRUE(KeyExists(kRoot, extension.Path()));
    EXPECT_TRUE(KeyExists(kRoot, type.Path()));
}

TEST_F(ShellFileTypes, Read_UsesTheKeyExactlyAsGiven) {
    Register();
    EXPECT_TRUE(api.RegisterFileType(L".vwtest"));
    EXPECT_TRUE(api.RegisterFileType(L"\\.vwtest"));
    const ScratchKey withoutPoint(kRoot, L"vwtest");
    EXPECT_FALSE(api.RegisterFileType(L"vwtest"));
}

TEST_F(ShellFileTypes, Read_NoDefaultValue_ReturnsFalse) {
    EXPECT_FALSE(api.RegisterFileType(L".vwtest"));
    Register();
    EXPECT_TRUE(api.RegisterFileType(L".vwtest"));
    Remove();
    EXPECT_FALSE(api.RegisterFileType(L".vwtest"));
    EXPECT_FALSE(api.RegisterFileType(L""));
}

TEST_F(ShellFileTypes, Command_IsAdded_KeepsTheDefaultVerb) {
    Register();
    api.RegisterFileTypeCommand(type.Path(), L"Backup", L"C:\\My Vault\\a.exe /B %1", false);
    EXPECT_EQ(Default(type.Path(L"shell\\Backup\\command")),
              TextValue(L"C:\\My Vault\\a.exe /B %1"));
    EXPECT_EQ(Default(type.Path(L"shell")), TextValue(L"Open"));
}

TEST_F(ShellFileTypes, Command_AsDefault_IsTheDefaultVerb) {
    Register();
    api.RegisterFileTypeCommand(type.Path(), L"Backup", L"C:\\a.exe /B %1", true);
    EXPECT_EQ(Default(type.Path(L"shell")), TextValue(L"Backup"));
}

TEST_F(ShellFileTypes, Command_NoCommandLine_RemovesTheCommand) {
    Register();
    api.RegisterFileTypeCommand(type.Path(), L"Backup", L"C:\\a.exe /B %1", false);
    WriteValue(kRoot, type.Path(L"shell\\Backup\\command\\Below"), L"", TextValue(L"x"));
    api.RegisterFileTypeCommand(type.Path(), L"Backup", L"", false);
    EXPECT_FALSE(KeyExists(kRoot, type.Path(L"shell\\Backup\\command")));
    EXPECT_TRUE(KeyExists(kRoot, type.Path(L"shell\\Backup")));
    EXPECT_EQ(Default(type.Path(L"shell")), TextValue(L"Open"));
    EXPECT_EQ(registry.deletedTrees, std::vector<std::string>{"command"});
}

TEST_F(ShellFileTypes, Command_NoCommandLineAsDefault_IsTheDefaultVerb) {
    Register();
    api.RegisterFileTypeCommand(type.Path(), L"Backup", L"", true);
    EXPECT_FALSE(KeyExists(kRoot, type.Path(L"shell\\Backup\\command")));
    EXPECT_EQ(Default(type.Path(L"shell")), TextValue(L"Backup"));
}

// The key of an extension is a point and the extension, so this one is a point alone.
TEST_F(ShellFileTypes, EmptyExtension_HasThePointAloneAsItsKey) {
    const ScratchKey point(kRoot, L".");
    Register(L"");
    EXPECT_EQ(registry.opened.front(), "\\.");
    EXPECT_EQ(Default(point.Path()), TextValue(type.Path()));
    EXPECT_TRUE(KeyExists(kRoot, type.Path(L"DefaultIcon")));
    Remove(L"");
    EXPECT_EQ(typeName, type.Path());
    EXPECT_FALSE(KeyExists(kRoot, point.Path()));
    EXPECT_FALSE(KeyExists(kRoot, type.Path()));
}

TEST_F(ShellFileTypes, AccessDenied_ChangesAndReportsNothing) {
    registry.createKeyFails = ERROR_ACCESS_DENIED;
    Register();
    api.RegisterFileTypeCommand(type.Path(), L"Backup", L"C:\\a.exe /B %1", true);
    EXPECT_FALSE(api.RegisterFileType(L".vwtest"));
    EXPECT_EQ(registry.changes, 0);
}

}  // namespace
}  // namespace vw::test
