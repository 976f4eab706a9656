#include "platform/ErrorAdvice.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vw {
namespace {

constexpr Procedure kBackup{L"BackupFile", L"Class Module", L"CPackage"};
constexpr Procedure kRestore{L"Extract", L"Class Module", L"CPackage"};
constexpr Procedure kSave{L"FileSave", L"Form", L"frmMain"};
constexpr std::uint32_t kSharingViolation = 32;

TEST(ErrorAdviceTest, LockedFile_NamesCauseConsequenceAndRemedy) {
    const RuntimeError error(70, L"Permission denied", L"C:\\a.txt", 1, kSharingViolation);
    EXPECT_EQ(ErrorAdvice(kBackup, error, Language::English),
              L"Another program has this file open. The older copies are unchanged; close the "
              L"program and back up again.");
    EXPECT_EQ(ErrorAdvice(kBackup, error, Language::Arabic),
              L"هذا الملف مفتوح في برنامج آخر. النسخ الأقدم لم تتغير؛ أغلق البرنامج ثم أعد "
              L"النسخ.");
}

TEST(ErrorAdviceTest, PartOfAFileIsLocked_HasTheAdviceOfAFileInUse) {
    EXPECT_EQ(
        ErrorAdvice(kBackup, RuntimeError(70, {}, {}, 1, 33), Language::English),
        ErrorAdvice(kBackup, RuntimeError(70, {}, {}, 1, kSharingViolation), Language::English));
}

TEST(ErrorAdviceTest, WriteProtectedDrive_NamesTheProtection) {
    EXPECT_TRUE(ErrorAdvice(kBackup, RuntimeError(70, {}, {}, 1, 19), Language::English)
                    .starts_with(L"The drive is write-protected."));
}

TEST(ErrorAdviceTest, RefusedFile_NamesAnotherCauseThanALockedOne) {
    constexpr std::uint32_t kAccessDenied = 5;
    const RuntimeError error(70, {}, {}, 1, kAccessDenied);
    EXPECT_TRUE(ErrorAdvice(kBackup, error, Language::English)
                    .starts_with(L"Windows does not allow access"));
}

TEST(ErrorAdviceTest, SameError_OtherWork_NamesItsOwnConsequence) {
    const RuntimeError error(61, {}, {}, 1);
    EXPECT_EQ(ErrorAdvice(kRestore, error, Language::English),
              L"The drive is full. The stored copy is unchanged; make room or choose another drive "
              L"and restore again.");
    EXPECT_EQ(ErrorAdvice(kSave, error, Language::English),
              L"The drive is full. The list file is unchanged; make room or choose another drive "
              L"and save the list again.");
}

// The copies of an item that vanished were shifted before its copy failed.
TEST(ErrorAdviceTest, VanishedItem_GuaranteesNothingAboutOlderCopies) {
    EXPECT_EQ(ErrorAdvice(kBackup, RuntimeError(53, {}, {}, 1), Language::English),
              L"This file does not exist. No new copy was made; make sure that it is there and "
              L"back up again.");
}

TEST(ErrorAdviceTest, EveryNumber_BothLanguages_OneSentenceOfEach) {
    for (const int number : {5,  6,  7,  13, 52, 53,  57,   58,   61,   62,   67,
                             68, 70, 71, 75, 76, 170, 1000, 1004, 1223, 4008, 10000}) {
        const RuntimeError error(number, {}, {}, 1);
        const std::wstring english = ErrorAdvice(kBackup, error, Language::English);
        EXPECT_TRUE(english.ends_with(L" and back up again.")) << number;
        EXPECT_TRUE(std::ranges::all_of(english, [](wchar_t unit) { return unit < 128; }))
            << number;
        EXPECT_TRUE(ErrorAdvice(kBackup, error, Language::Arabic).ends_with(L"أعد النسخ."))
            << number;
    }
}

TEST(ErrorAdviceTest, BoxText_KeepsGivenLinesAndAddsAdviceAfterAnEmptyOne) {
    const RuntimeError error(76, L"Path not found", L"E:\\Store", 12);
    EXPECT_EQ(ErrorBoxText(kBackup, error, Language::English),
              ErrorText(kBackup, error) +
                  L"\r\n\r\nThis folder or drive cannot be found. No new copy was made; make sure "
                  L"that it is there and back up again.");
}

}  // namespace
}  // namespace vw
