#include "platform/TextDirection.h"

#include <gtest/gtest.h>

namespace vw {
namespace {

TEST(TextDirection, NameReadsFromRight_DependsOnItsFirstLetter) {
    EXPECT_FALSE(NameReadsFromRight(L"Report (1)"));
    EXPECT_TRUE(NameReadsFromRight(L"رسالة (1)"));
    EXPECT_FALSE(NameReadsFromRight(L"Invoice رقم"));
    EXPECT_TRUE(NameReadsFromRight(L"2025 صور"));
    EXPECT_FALSE(NameReadsFromRight(L"2025-10-02 18:41"));
    EXPECT_FALSE(NameReadsFromRight(L""));
    EXPECT_TRUE(NameReadsFromRight(L"שלום"));
}

// The first and the last letters of the scripts, and what is beside them.
TEST(TextDirection, EdgesOfTheScripts_HaveTheirDirection) {
    for (const wchar_t unit :
         std::wstring_view(L"\u0590\u065F\u066A\u08FF\uFB1D\uFDFF\uFE70\uFEFE")) {
        EXPECT_TRUE(NameReadsFromRight(std::wstring{unit, L'a'})) << static_cast<unsigned>(unit);
    }
    for (const wchar_t unit : std::wstring_view(
             L"AZaz\u00C0\u00D6\u00D8\u00F6\u00F8\u058F\u0900\u1FFF\u2C00\u2DFF\u3040\uFB1C")) {
        EXPECT_FALSE(NameReadsFromRight(std::wstring{unit, L'ع'})) << static_cast<unsigned>(unit);
    }
    for (const wchar_t unit : std::wstring_view(
             L"@[`{\u00BF\u00D7\u00F7\u0660\u0669\u2000\u2BFF\u2E00\u303F\uFE00\uFE6F\uFEFF")) {
        EXPECT_TRUE(NameReadsFromRight(std::wstring{unit, L'ع'})) << static_cast<unsigned>(unit);
        EXPECT_FALSE(NameReadsFromRight(std::wstring{unit, L'a'})) << static_cast<unsigned>(unit);
    }
}

TEST(TextDirection, PhraseReadsFromRight_AnyArabicLetter_ReturnsTrue) {
    EXPECT_TRUE(PhraseReadsFromRight(L"Vaultwright يقوم بالعمل نيابة عنك!"));
    EXPECT_FALSE(PhraseReadsFromRight(L"Vaultwright"));
    EXPECT_FALSE(PhraseReadsFromRight(L""));
    EXPECT_FALSE(PhraseReadsFromRight(L"١٢٣")) << "digits have no direction of their own";
}

TEST(TextDirection, IsPathLike_DriveOrServer_ReturnsTrue) {
    EXPECT_TRUE(IsPathLike(L"C:\\a"));
    EXPECT_TRUE(IsPathLike(L"C:\\"));
    EXPECT_TRUE(IsPathLike(L"\\\\server\\share"));
    EXPECT_FALSE(IsPathLike(L"C:"));
    EXPECT_FALSE(IsPathLike(L"C:a"));
    EXPECT_FALSE(IsPathLike(L"Done"));
    EXPECT_FALSE(IsPathLike(L""));
}

// The mark behind a separator keeps two Arabic folders in their order.
constexpr const wchar_t* kMarkedFolders =
    L"\u202AC:\\\u200Eالعمل\\\u200Eعقود\\\u200EContract.pdf\u202C";

TEST(MarkPath, ArabicFolders_AreShownInTheirOrder) {
    EXPECT_EQ(MarkPath(L"C:\\العمل\\عقود\\Contract.pdf"), kMarkedFolders);
}

TEST(MarkPath, OrderIsRightWithoutMarks_ReturnsThePath) {
    for (const auto* path : {L"C:\\Docs\\a.txt", L"C:\\Docs\\2024", L"Budget (2024).xlsx",
                             L"C:\\Été 2\\b", L"2024", L"3d.txt", L""}) {
        EXPECT_EQ(MarkPath(path), path);
    }
}

TEST(MarkPath, NeutralCharacterAtAnEnd_AddsMarks) {
    for (const std::wstring path : {L"C:\\Docs\\", L"C:", L"\\\\server\\share", L"Budget (2024)",
                                    L"R:\\Backup\\Work«0001»", L"2024 Budget.xlsx"}) {
        EXPECT_EQ(MarkPath(path), L"\u202A" + path + L"\u202C");
    }
}

TEST(MarkPath, ArabicDigits_AddsMarks) {
    EXPECT_EQ(MarkPath(L"C:\\٢٠٢٤"), L"\u202AC:\\\u200E٢٠٢٤\u202C");
}

TEST(MarkPath, LettersOutsideTheFirstPlane_AddsMarks) {
    const auto name = [](unsigned unit) {
        return std::wstring{L'a', static_cast<wchar_t>(unit), L'b'};
    };
    for (const unsigned unit : {0xD800U, 0xDFFFU}) {
        EXPECT_EQ(MarkPath(name(unit)), L"\u202A" + name(unit) + L"\u202C");
    }
    for (const unsigned unit : {0xD7FFU, 0xE000U}) EXPECT_EQ(MarkPath(name(unit)), name(unit));
}

TEST(MarkName, FirstLetter_DecidesTheOrder) {
    EXPECT_EQ(MarkName(L"Report عقد.docx"), L"\u202AReport عقد.docx\u202C");
    EXPECT_EQ(MarkName(L"عقد (1).docx"), L"\u202Bعقد (1).docx\u200F\u202C");
    EXPECT_EQ(MarkName(L"Report.docx"), L"Report.docx");
    EXPECT_EQ(MarkName(L"عقد"), L"عقد");
}

TEST(MarkLines, NameAfterAColon_ReadsFromLeft_IsMarked) {
    EXPECT_EQ(MarkLines(L"من الملف:\r\nReport عقد.docx"),
              L"من الملف:\r\n\u202AReport عقد.docx\u202C");
    EXPECT_EQ(MarkLines(L"من الملف:\r\nعقد Report.docx"), L"من الملف:\r\nعقد Report.docx");
    EXPECT_EQ(MarkLines(L"سؤال؟\r\nWindows يبدأ"), L"سؤال؟\r\nWindows يبدأ")
        << "a sentence is no name";
}

TEST(MarkTip, PathNameAndSentence_KeepTheirOrder) {
    EXPECT_EQ(MarkTip(L"C:\\Docs\\\r\nReport عقد.docx\r\nيبدأ Windows."),
              L"\u202AC:\\Docs\\\u202C\r\n\u202AReport عقد.docx\u202C\r\n"
              L"\u202Bيبدأ Windows.\u200F\u202C");
}

TEST(MarkLines, QuestionAndPath_MarksThePathOnly) {
    const std::wstring question = L"هل تريد بالتأكيد حذف الملف التالي:\r\n";
    EXPECT_EQ(MarkLines(question + L"C:\\العمل\\عقود\\Contract.pdf"), question + kMarkedFolders);
    EXPECT_EQ(MarkLines(question + L"C:\\Docs\\"), question + L"\u202AC:\\Docs\\\u202C");
    EXPECT_EQ(MarkLines(question + L"C:\\Docs\\a.txt"), question + L"C:\\Docs\\a.txt");
    EXPECT_EQ(MarkLines(question + L"رسالة (1)"), question + L"رسالة (1)");
}

TEST(MarkLines, LineEnds_Stay) {
    EXPECT_EQ(MarkLines(L"a\r\n\r\nb\n"), L"a\r\n\r\nb\n");
    EXPECT_EQ(MarkLines(L""), L"");
}

TEST(MarkReport, ArabicFolders_KeepTheirOrder) {
    EXPECT_EQ(MarkReport(L"Backing: C:\\العمل\\عقود\\a.txt\r\n\tDone.\r\n"),
              L"Backing: C:\\\u200Eالعمل\\\u200Eعقود\\a.txt\r\n\tDone.\r\n");
    EXPECT_EQ(MarkReport(L"Backing: C:\\Docs\\a.txt"), L"Backing: C:\\Docs\\a.txt");
}

TEST(MarkReport, ArabicSentence_ReadsFromRightToLeft) {
    EXPECT_EQ(MarkReport(L"تم تخطي الارتباط التالي"), L"تم تخطي الارتباط التالي");
    EXPECT_EQ(MarkReport(L"توقف النسخ."), L"\u202Bتوقف النسخ.\u200F\u202C");
}

TEST(WithoutMarks, MarkedPath_IsThePathAgain) {
    for (const auto* path : {L"C:\\العمل\\عقود\\", L"C:\\Docs\\a.txt", L"«النسخ الآن»."}) {
        EXPECT_EQ(WithoutMarks(MarkPath(path)), path);
        EXPECT_EQ(WithoutMarks(MarkReport(path)), path);
        EXPECT_EQ(WithoutMarks(MarkSentence(path)), path);
    }
}

TEST(MarkSentence, LatinInASentence_Embeds) {
    EXPECT_EQ(MarkSentence(L"قائمة جديدة (Ctrl+N)"), L"\u202Bقائمة جديدة (Ctrl+N)\u200F\u202C");
}

TEST(MarkSentence, NothingToReorder_ReturnsTheSentence) {
    EXPECT_EQ(MarkSentence(L"قائمة جديدة"), L"قائمة جديدة");
    EXPECT_EQ(MarkSentence(L"New list (Ctrl+N)"), L"New list (Ctrl+N)");
}

}  // namespace
}  // namespace vw
