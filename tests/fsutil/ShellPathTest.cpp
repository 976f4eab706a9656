// What is opened can be seen: the tests register a type of documents of their own whose program
// copies the document to another place.

#include <gtest/gtest.h>

#include "fsutil/Scripting.h"
#include "platform/Handle.h"
#include "platform/SystemCodePage.h"
#include "platform/WindowsHeader.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw::MMyScripting {
namespace {

using test::Exists;
using test::TempTree;
using test::TestEnvironment;

constexpr const wchar_t* kExtensionKey = L".vwopened";
constexpr const wchar_t* kTypeKey = L"VaultwrightTest.Opened";

void SetDefaultValue(const std::wstring& key, const std::wstring& value) {
    HKEY handle = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                              nullptr, &handle, nullptr),
              ERROR_SUCCESS);
    const RegistryKey owner(handle);
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    ASSERT_EQ(RegSetValueExW(handle, nullptr, 0, REG_SZ,
                             reinterpret_cast<const BYTE*>(value.c_str()), bytes),
              ERROR_SUCCESS);
}

class ShellPathTest : public testing::Test {
  protected:
    void SetUp() override {
        SetDefaultValue(kExtensionKey, kTypeKey);
        SetDefaultValue(std::wstring(kTypeKey) + L"\\shell\\open\\command",
                        L"cmd.exe /c copy /y \"%1\" \"" + Opened() + L"\"");
    }
    ~ShellPathTest() override {
        for (const wchar_t* below :
             {L"\\shell\\open\\command", L"\\shell\\open", L"\\shell", L""}) {
            RegDeleteKeyW(HKEY_CLASSES_ROOT, (std::wstring(kTypeKey) + below).c_str());
        }
        RegDeleteKeyW(HKEY_CLASSES_ROOT, kExtensionKey);
    }

    [[nodiscard]] std::wstring Opened() const { return tree_.Path(L"opened"); }

    // Bytes of the document that was opened; empty when none was within the time.
    [[nodiscard]] std::string WaitForOpened(int milliseconds = 20'000) const {
        for (; milliseconds > 0; milliseconds -= 50) {
            if (Exists(Opened())) {
                const std::string bytes = test::ReadBytes(Opened());
                if (!bytes.empty()) return bytes;
            }
            Sleep(50);
        }
        return {};
    }

    TempTree tree_;
    TestEnvironment world_;
};

TEST(FileProtocolCommand, AppendsTheTextToTheHandler) {
    EXPECT_EQ(FileProtocolCommand(L"C:\\Help\\Vaultwright.htm"),
              L"rundll32.exe url.dll,FileProtocolHandler C:\\Help\\Vaultwright.htm");
    EXPECT_EQ(FileProtocolCommand(L"C:\\a b\\«0101».txt"),
              L"rundll32.exe url.dll,FileProtocolHandler C:\\a b\\«0101».txt");
    EXPECT_EQ(FileProtocolCommand(L""), L"rundll32.exe url.dll,FileProtocolHandler ");
}

TEST_F(ShellPathTest, OpensADocumentWithItsProgram) {
    ShellPath(world_.system, tree_.File(L"a document.vwopened", "by the handler"));
    EXPECT_EQ(WaitForOpened(), "by the handler");
}

TEST_F(ShellPathTest, OpensACopyWithItsProgram) {
    world_.ansi.Use(1252);
    ShellPath(world_.system, tree_.File(L"Report«0101».vwopened", "a copy"));
    EXPECT_EQ(WaitForOpened(), "a copy");
}

TEST_F(ShellPathTest, OpensADocumentWithANameOutsideTheCodePage) {
    world_.ansi.Use(1252);
    ShellPath(world_.system, tree_.File(L"ملف عربي.vwopened", "not by the handler"));
    EXPECT_EQ(WaitForOpened(), "not by the handler");
}

TEST(FileProtocolCommand, LongPathOrLetterOutsideCodePage_DoesNotFit) {
    const CodePage western(1252);
    EXPECT_TRUE(FitsFileProtocol(western, std::wstring(259, L'a')));
    EXPECT_FALSE(FitsFileProtocol(western, std::wstring(260, L'a')));
    EXPECT_TRUE(FitsFileProtocol(western, L"C:\\«0101».txt"));
    EXPECT_FALSE(FitsFileProtocol(western, L"C:\\ملف.txt"));
}

TEST_F(ShellPathTest, HandlerInCurrentFolder_IsNotStarted) {
    tree_.File(L"planted\\rundll32.exe", "no program at all");
    const test::CurrentFolder current(tree_.Path(L"planted"));
    ShellPath(world_.system, tree_.File(L"document.vwopened", "safely"));
    EXPECT_EQ(WaitForOpened(), "safely");
}

TEST_F(ShellPathTest, IgnoresEveryFailure) {
    world_.ansi.Use(1252);
    ShellPath(world_.system, L"ملف غير موجود.no-program-for-this");
    ShellPath(world_.system, L"\x0639:\\");
    EXPECT_EQ(WaitForOpened(200), "");
    EXPECT_EQ(world_.exitStatus.Code(), 0);
}

// Asked one by one: Wine gives the same count for every process.
int OpenHandles() {
    int open = 0;
    for (std::uintptr_t handle = 4; handle < 4096; handle += 4) {
        DWORD flags = 0;
        open += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != 0 ? 1 : 0;
    }
    return open;
}

TEST_F(ShellPathTest, LeavesNoHandleOpen) {
    const std::wstring document = tree_.File(L"a document.vwopened", "opened");
    const auto open = [&] {
        DeleteFileW(Opened().c_str());
        ShellPath(world_.system, document);
        EXPECT_EQ(WaitForOpened(), "opened");
        return OpenHandles();
    };
    open();
    const auto before = open();
    EXPECT_EQ(open(), before);
}

}  // namespace
}  // namespace vw::MMyScripting
