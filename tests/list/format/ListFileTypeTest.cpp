#include "list/format/ListFileType.h"

#include <gtest/gtest.h>

#include "platform/CCommonAPI.h"
#include "platform/ExitStatus.h"
#include "platform/SystemCodePage.h"
#include "tests/support/FakeMessageBoxes.h"
#include "tests/support/RecordedErrors.h"
#include "tests/support/ScratchRegistry.h"

namespace vw::test {
namespace {

const HKEY kRoot = HKEY_CLASSES_ROOT;

TEST(ListFileType, RegistersListsWithTheirIconAndTheirBackup) {
    // The machine may have the real type: this one has longer names.
    const std::wstring longExtension = std::wstring(list_file_type::kExtension).append(L"Test");
    std::wstring typeName = std::wstring(list_file_type::kTypeName).append(L"Test");
    const ScratchKey extension(kRoot, L".vwlTest");
    const ScratchKey type(kRoot, L"VaultwrightFilesListTest");
    ExitStatus exitStatus;
    RecordedErrors faults(exitStatus);
    FakeMessageBoxes boxes;
    SystemRegistry registry;
    const CodePage ansi;
    CCommonAPI api(registry, ansi, boxes, faults);

    const std::wstring folder = L"C:\\Vault";
    const std::wstring program = folder + L"\\Vaultwright.exe";
    api.RegisterFileType(longExtension, typeName, program,
                         std::wstring(folder).append(list_file_type::kIconFile), true);
    api.RegisterFileTypeCommand(
        typeName, L"Backup", std::wstring(program).append(list_file_type::kBackupCommand), false);

    EXPECT_EQ(ReadValue(kRoot, L".vwlTest", L""), TextValue(L"VaultwrightFilesListTest"));
    EXPECT_EQ(ReadValue(kRoot, L"VaultwrightFilesListTest\\DefaultIcon", L""),
              TextValue(L"C:\\Vault\\vwl.ICO"));
    EXPECT_EQ(ReadValue(kRoot, L"VaultwrightFilesListTest\\shell\\Open\\Command", L""),
              TextValue(L"\"C:\\Vault\\Vaultwright.exe\" %1"));
    EXPECT_EQ(ReadValue(kRoot, L"VaultwrightFilesListTest\\shell\\Backup\\command", L""),
              TextValue(L"C:\\Vault\\Vaultwright.exe /B %1"));
}

TEST(ListFileType, Names_AreThoseOfTheRegistry) {
    EXPECT_EQ(list_file_type::kExtension, L".VWL");
    EXPECT_EQ(list_file_type::kTypeName, L"VaultwrightFilesList");
    EXPECT_EQ(list_file_type::kIconFile, L"\\vwl.ICO");
    EXPECT_EQ(list_file_type::kBackupCommand, L" /B %1");
}

}  // namespace
}  // namespace vw::test
