#include "list/format/Settings.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/ExitStatus.h"
#include "platform/RuntimeError.h"
#include "tests/support/ImportHook.h"
#include "tests/support/RecordedErrors.h"
#include "tests/support/ScratchRegistry.h"

namespace vw::test {
namespace {

const std::wstring kBaseName = L"VaultwrightTests-Settings";
const std::wstring kKey = L"Software\\Tallowmere.Net\\" + kBaseName;

class Settings : public testing::Test {
  protected:
    ScratchKey key{HKEY_CURRENT_USER, kKey};
    ExitStatus exitStatus;
    RecordedErrors errors{exitStatus};
    MRecentFiles::SettingsStore settings{errors, kBaseName};
};

TEST_F(Settings, ReturnsTheStoredText) {
    settings.SaveSetting(L"BackupTo", L"D:\\Vault");
    EXPECT_EQ(settings.GetSetting(L"BackupTo", L"C:\\Backup"), L"D:\\Vault");
    settings.SaveSetting(L"BackupTo", L"E:\\Vault");
    EXPECT_EQ(settings.GetSetting(L"BackupTo", L"C:\\Backup"), L"E:\\Vault");
}

TEST_F(Settings, AbsentSetting_ReturnsTheDefault) {
    EXPECT_EQ(settings.GetSetting(L"Backages", L"3"), L"3");
    settings.SaveSetting(L"Another", L"x");
    EXPECT_EQ(settings.GetSetting(L"Backages", L"3"), L"3");
}

TEST_F(Settings, Read_CreatesNoKey) {
    (void)settings.GetSetting(L"Backages", L"3");
    EXPECT_FALSE(KeyExists(HKEY_CURRENT_USER, kKey));
}

TEST_F(Settings, StoresAnEmptyText) {
    settings.SaveSetting(L"RecentFile1", L"");
    EXPECT_EQ(settings.GetSetting(L"RecentFile1", L"default"), L"");
}

TEST_F(Settings, EmptyText_IsStoredWithItsZero) {
    settings.SaveSetting(L"RecentFile1", L"");
    EXPECT_EQ(ReadValue(HKEY_CURRENT_USER, kKey, L"RecentFile1"), TextValue(L""));
}

TEST_F(Settings, StoresTextsUnderCompanyAndProgram) {
    settings.SaveSetting(L"Arabic", L"-1");
    EXPECT_EQ(ReadValue(HKEY_CURRENT_USER, L"Software\\Tallowmere.Net\\" + kBaseName, L"Arabic"),
              TextValue(L"-1"));
}

TEST_F(Settings, OtherProgramName_HasItsOwnSettings) {
    const ScratchKey otherKey(HKEY_CURRENT_USER, kKey + L"2");
    MRecentFiles::SettingsStore other(errors, kBaseName + L"2");
    settings.SaveSetting(L"Arabic", L"-1");
    EXPECT_EQ(other.GetSetting(L"Arabic", L"N/A"), L"N/A");
    other.SaveSetting(L"Arabic", L"0");
    EXPECT_EQ(settings.GetSetting(L"Arabic", L"N/A"), L"-1");
}

// Unlike the machine's registry values: paths in settings name real folders.
TEST_F(Settings, KeepsEveryLetterOnEveryCodePage) {
    const std::wstring path = L"D:\\نسخ احتياطية\\\u0100\u65E5.vwl";
    settings.SaveSetting(L"RecentFile1", path);
    EXPECT_EQ(settings.GetSetting(L"RecentFile1", L""), path);
    EXPECT_EQ(ReadValue(HKEY_CURRENT_USER, kKey, L"RecentFile1"), TextValue(path));
}

TEST_F(Settings, StoresLongTexts) {
    const std::wstring path(30000, L'x');
    settings.SaveSetting(L"RecentFile1", path);
    EXPECT_EQ(settings.GetSetting(L"RecentFile1", L""), path);
}

TEST_F(Settings, TextWithoutATerminator_IsRead) {
    WriteValue(HKEY_CURRENT_USER, kKey, L"Backages", {REG_SZ, std::string("5\0", 2)});
    EXPECT_EQ(settings.GetSetting(L"Backages", L"3"), L"5");
}

// Half a character is left behind the last whole one.
TEST_F(Settings, TextOfOddSize_IsRead) {
    WriteValue(HKEY_CURRENT_USER, kKey, L"Backages", {REG_SZ, std::string("5\0\0", 3)});
    EXPECT_EQ(settings.GetSetting(L"Backages", L"3"), L"5");
}

TEST_F(Settings, OtherTypeThanText_ReturnsTheDefault) {
    WriteValue(HKEY_CURRENT_USER, kKey, L"Backages", {REG_DWORD, std::string("\5\0\0\0", 4)});
    EXPECT_EQ(settings.GetSetting(L"Backages", L"3"), L"3");
}

TEST_F(Settings, KeyRefused_IsReportedAsError5) {
    // No key of the registry may have so long a name.
    MRecentFiles::SettingsStore refused(errors, std::wstring(300, L'x'));
    refused.SaveSetting(L"Arabic", L"-1");
    const ToldError error = errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kInvalidCall);
    EXPECT_EQ(error.procedure, L"SaveSetting");
    EXPECT_EQ(error.kind, L"Module");
    EXPECT_EQ(error.container, L"MRecentFiles");
    EXPECT_EQ(error.path,
              L"HKEY_CURRENT_USER\\Software\\Tallowmere.Net\\" + std::wstring(300, L'x'));
    EXPECT_EQ(refused.GetSetting(L"Arabic", L"N/A"), L"N/A");
}

/// Answers as when another instance stores a longer text after this one has asked for the size.
LSTATUS WINAPI GrownValue(HKEY, LPCWSTR, LPCWSTR, DWORD, LPDWORD, PVOID data, LPDWORD bytes) {
    static constexpr std::wstring_view kText = L"longer";
    constexpr DWORD kNeeded = 7 * sizeof(wchar_t);
    if (data == nullptr) {
        *bytes = 2 * sizeof(wchar_t);
        return ERROR_SUCCESS;
    }
    const bool fits = *bytes >= kNeeded;
    *bytes = kNeeded;
    if (!fits) return ERROR_MORE_DATA;
    *std::copy(kText.begin(), kText.end(), static_cast<wchar_t*>(data)) = L'\0';
    return ERROR_SUCCESS;
}

TEST_F(Settings, GrowsDuringTheRead_IsReadWhole) {
    const ImportHook hook("RegGetValueW", &GrownValue);
    EXPECT_EQ(settings.GetSetting(L"BackupTo", L"C:\\Backup"), L"longer");
}

DWORD reservedOfValue = 0;

LSTATUS WINAPI RefusedValue(HKEY, LPCWSTR, DWORD reserved, DWORD, const BYTE*, DWORD) {
    reservedOfValue = reserved;
    return ERROR_NO_SYSTEM_RESOURCES;
}

TEST_F(Settings, ValueRefused_IsReportedAsError5) {
    reservedOfValue = 1;
    const ImportHook hook("RegSetValueExW", &RefusedValue);
    settings.SaveSetting(L"Arabic", L"-1");
    const ToldError error = errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kInvalidCall);
    EXPECT_EQ(error.path, L"HKEY_CURRENT_USER\\" + kKey);
    EXPECT_EQ(reservedOfValue, 0U);
}

DWORD optionsOfKey = 0;

LSTATUS WINAPI RefusedKey(HKEY, LPCWSTR, DWORD, LPWSTR, DWORD options, REGSAM,
                          const LPSECURITY_ATTRIBUTES, PHKEY, LPDWORD) {
    optionsOfKey = options;
    return ERROR_ACCESS_DENIED;
}

TEST_F(Settings, CreatesANonVolatileKey) {
    optionsOfKey = REG_OPTION_VOLATILE;
    const ImportHook hook("RegCreateKeyExW", &RefusedKey);
    settings.SaveSetting(L"Arabic", L"-1");
    EXPECT_EQ(errors.TakeOne().number, error_number::kInvalidCall);
    EXPECT_EQ(optionsOfKey, REG_OPTION_NON_VOLATILE);
}

TEST(SettingNames, Names_HaveTheirTexts) {
    EXPECT_EQ(setting::kArabic, L"Arabic");
    EXPECT_EQ(setting::kBackupTo, L"BackupTo");
    EXPECT_EQ(setting::kBackages, L"Backages");
    EXPECT_EQ(setting::kStartup, L"Startup");
    EXPECT_EQ(setting::kRecentFile, L"RecentFile");
}

TEST(SettingNames, SettingText_YesAndNo_AreMinusOneAndZero) {
    EXPECT_EQ(SettingText(true), L"-1");
    EXPECT_EQ(SettingText(false), L"0");
}

}  // namespace
}  // namespace vw::test
