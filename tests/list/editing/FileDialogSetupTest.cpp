#include "list/editing/FileDialogSetup.h"

#include <gtest/gtest.h>

#include <ostream>

#include "platform/RuntimeError.h"

namespace vw {
namespace {

constexpr std::wstring_view kBefore = L"the title before";

struct Row {
    int kind;
    std::uint32_t flags;
    std::wstring_view filter;
    std::wstring_view fileName;
    std::wstring_view title;
};

// For the messages of failed tests.
std::ostream& operator<<(std::ostream& stream, const Row& row) {
    return stream << "kind " << row.kind;
}

class FileDialogs : public testing::TestWithParam<Row> {};

TEST_P(FileDialogs, SetUpFileDialog_EachKind_HasItsSettings) {
    const Row& row = GetParam();
    FileDialogSetup dialog;
    dialog.initialFolder = L"C:\\Old";
    dialog.flags = 0xFFFFFFFF;
    dialog.filter = L"old";
    dialog.fileName = L"old.txt";
    dialog.title = kBefore;
    dialog.defaultExtension = L"old";
    SetUpFileDialog(dialog, static_cast<FileDialogKind>(row.kind), L"C:\\Now", L"C:\\Default");
    EXPECT_EQ(dialog.flags, row.flags);
    EXPECT_EQ(dialog.filter, row.filter);
    EXPECT_EQ(dialog.fileName, row.fileName);
    EXPECT_EQ(dialog.title, row.title);
    EXPECT_EQ(dialog.defaultExtension, row.filter.ends_with(L"vwl") ? L"vwl" : L"");
    EXPECT_EQ(dialog.initialFolder, L"C:\\Now");
    EXPECT_TRUE(dialog.cancelIsError);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AllKinds, FileDialogs, testing::Values(
    Row{0, 0x181104 + 512, L" |*.*", L"", L"إضافة"},
    Row{1, 0x181004, L"مهمة نسخ احتياطي(As *.vwl)|*.vwl", L"", kBefore},
    Row{2, 0x180006, L"مهمة نسخ احتياطي(As *.vwl)|*.vwl", L"", kBefore},
    Row{3, 0x180104, L"مجلد|*.folder", L"ChooseFolder....Don't modify this line",
        L"إضافة مجلد: (افتح المجلد المطلوب اضافته ثم اختر حفظ)"},
    Row{4, 0x180104, L"قاعدة|*.folder", L"ChooseFolder....Don't modify this line",
        L"اختر مجلداً: (إضافة جميع الملفات الموجودة في المجلد المفتوح)"},
    Row{5, 0x180104, L"مجلد|*.folder", L"ChooseFolder....Don't modify this line",
        L"نسخ إلى: (افتح المجلد المطلوب النسخ إليه ثم اختر حفظ)"}));
// clang-format on

TEST(FileDialogKinds, Kinds_HaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(FileDialogKind::AddFiles), 0);
    EXPECT_EQ(static_cast<int>(FileDialogKind::OpenList), 1);
    EXPECT_EQ(static_cast<int>(FileDialogKind::SaveList), 2);
    EXPECT_EQ(static_cast<int>(FileDialogKind::AddFolder), 3);
    EXPECT_EQ(static_cast<int>(FileDialogKind::AddRule), 4);
    EXPECT_EQ(static_cast<int>(FileDialogKind::ChooseDestination), 5);
}

TEST(FileDialogKinds, UnknownKind_ThrowsError1000) {
    for (const int kind : {-1, 6}) {
        FileDialogSetup dialog;
        try {
            SetUpFileDialog(dialog, static_cast<FileDialogKind>(kind), L"C:\\Now", L"");
            FAIL() << "taken: " << kind;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), 1000);
        }
        EXPECT_EQ(dialog.initialFolder, L"C:\\Now");
    }
}

TEST(FileDialogKinds, ListDialog_NoCurrentFolder_BeginsInTheDefaultFolder) {
    for (const FileDialogKind kind : {FileDialogKind::OpenList, FileDialogKind::SaveList}) {
        FileDialogSetup dialog;
        SetUpFileDialog(dialog, kind, L"", L"C:\\Default");
        EXPECT_EQ(dialog.initialFolder, L"C:\\Default");
    }
}

TEST(FileDialogKinds, ItemDialog_NoCurrentFolder_HasNoInitialFolder) {
    for (const FileDialogKind kind : {FileDialogKind::AddFiles, FileDialogKind::AddFolder,
                                      FileDialogKind::AddRule, FileDialogKind::ChooseDestination}) {
        FileDialogSetup dialog;
        SetUpFileDialog(dialog, kind, L"", L"C:\\Default");
        EXPECT_EQ(dialog.initialFolder, L"");
    }
}

}  // namespace
}  // namespace vw
