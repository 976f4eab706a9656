#include <gtest/gtest.h>

#include "fsutil/Scripting.h"
#include "platform/SystemCodePage.h"
#include "platform/WindowsHeader.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/DiskTest.h"
#include "tests/support/OpenedFiles.h"

namespace vw::MMyScripting {
namespace {

class ShellPathTest : public test::DiskTest {
  protected:
    void ExpectToOpen(std::wstring_view name) {
        ShellPath(world.system, tree.File(name, "opened"));
        EXPECT_EQ(opened.WaitFor(6), "opened");
    }

    test::OpenedFiles opened{tree, L".vwopened"};
};

TEST(FileProtocolCommand, AppendsTheTextToTheHandler) {
    EXPECT_EQ(FileProtocolCommand(L"C:\\Help\\Vaultwright.htm"),
              L"rundll32.exe url.dll,FileProtocolHandler C:\\Help\\Vaultwright.htm");
    EXPECT_EQ(FileProtocolCommand(L"C:\\a b\\«0101».txt"),
              L"rundll32.exe url.dll,FileProtocolHandler C:\\a b\\«0101».txt");
    EXPECT_EQ(FileProtocolCommand(L""), L"rundll32.exe url.dll,FileProtocolHandler ");
}

TEST_F(ShellPathTest, OpensADocumentWithItsProgram) { ExpectToOpen(L"a document.vwopened"); }

TEST_F(ShellPathTest, OpensACopyWithItsProgram) {
    world.ansi.Use(1252);
    ExpectToOpen(L"Report«0101».vwopened");
}

TEST_F(ShellPathTest, OpensADocumentWithANameOutsideTheCodePage) {
    world.ansi.Use(1252);
    ExpectToOpen(L"ملف عربي.vwopened");
}

TEST(FileProtocolCommand, LongPathOrLetterOutsideCodePage_DoesNotFit) {
    const CodePage western(1252);
    EXPECT_TRUE(FitsFileProtocol(western, std::wstring(259, L'a')));
    EXPECT_FALSE(FitsFileProtocol(western, std::wstring(260, L'a')));
    EXPECT_TRUE(FitsFileProtocol(western, L"C:\\«0101».txt"));
    EXPECT_FALSE(FitsFileProtocol(western, L"C:\\ملف.txt"));
}

TEST_F(ShellPathTest, HandlerInCurrentFolder_IsNotStarted) {
    tree.File(L"planted\\rundll32.exe", "no program at all");
    const test::CurrentFolder current(tree.Path(L"planted"));
    ExpectToOpen(L"document.vwopened");
}

TEST_F(ShellPathTest, IgnoresEveryFailure) {
    world.ansi.Use(1252);
    ShellPath(world.system, L"ملف غير موجود.no-program-for-this");
    ShellPath(world.system, L"\x0639:\\");
    EXPECT_EQ(opened.WaitFor(1, 200), "");
    EXPECT_EQ(world.exitStatus.Code(), 0);
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
    const std::wstring document = tree.File(L"a document.vwopened", "opened");
    std::size_t size = 0;
    const auto open = [&] {
        ShellPath(world.system, document);
        size += 6;
        EXPECT_EQ(opened.WaitFor(size).size(), size);
        return OpenHandles();
    };
    open();
    const auto before = open();
    EXPECT_EQ(open(), before);
}

}  // namespace
}  // namespace vw::MMyScripting
