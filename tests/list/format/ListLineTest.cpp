#include "list/format/ListLine.h"

#include <gtest/gtest.h>

namespace vw {
namespace {

TEST(ListLine, KeyLines_DifferFromItems) {
    using enum ListLineKind;
    struct Row {
        std::wstring_view field;
        ListLineKind kind;
        std::wstring_view value;
    };
    const Row rows[] = {
        {L"", Empty, L""},
        {L"BackupTo: C:\\Backup", Destination, L"C:\\Backup"},
        {L"backupto: C:\\Backup", Destination, L"C:\\Backup"},
        {L"BACKUPTO: D:", Destination, L"D:"},
        // Colon and blank are taken to be there: without the blank one more character is lost.
        {L"BackupTo:C:\\Backup", Destination, L":\\Backup"},
        {L"BackupTo:", Destination, L""},
        {L"BackupTo: ", Destination, L""},
        {L"BackupTo:x", Destination, L""},
        {L"BackupTo:  C:\\x", Destination, L" C:\\x"},
        {L"BackupTo", Item, L"BackupTo"},
        {L"BackupTo : C:\\x", Item, L"BackupTo : C:\\x"},
        {L"xBackupTo: C:\\x", Item, L"xBackupTo: C:\\x"},
        {L"Backages: 3", CopiesCount, L"3"},
        {L"BACKAGES:  3", CopiesCount, L" 3"},
        {L"Backages:3", CopiesCount, L""},
        {L"Backages: many", CopiesCount, L"many"},
        {L"Backages", Item, L"Backages"},
        {L"C:\\Docs\\report.doc", Item, L"C:\\Docs\\report.doc"},
        {L"C:\\Docs\\*", Item, L"C:\\Docs\\*"},
        {L"C:\\BackupTo:\\x", Item, L"C:\\BackupTo:\\x"},
        {L"\uFEFF"
         L"BackupTo: C:\\x",
         Item,
         L"\uFEFF"
         L"BackupTo: C:\\x"},
    };
    for (const Row& row : rows) {
        const ListLine line = ReadListLine(row.field);
        EXPECT_EQ(line.kind, row.kind) << testing::PrintToString(row.field);
        EXPECT_EQ(line.value, row.value) << testing::PrintToString(row.field);
    }
}

TEST(ListLine, LastCharacter_DecidesTheKindOfItem) {
    struct Row {
        std::wstring_view path;
        ItemKind kind;
    };
    const Row rows[] = {
        {L"C:\\Docs\\*", ItemKind::Rule},
        {L"C:\\Docs\\*.doc*", ItemKind::Rule},
        {L"C:\\Projects\\", ItemKind::Folder},
        {L"C:\\Docs\\report.doc", ItemKind::File},
        {L"C:\\Projects", ItemKind::File},
        {L"*", ItemKind::Rule},
        {L"\\", ItemKind::Folder},
        {L"", ItemKind::File},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ItemKindOf(row.path), row.kind) << testing::PrintToString(row.path);
    }
}

TEST(ListLine, CompletesADestinationThatIsADriveAlone) {
    struct Row {
        std::wstring_view value;
        std::wstring_view destination;
    };
    const Row rows[] = {
        {L"E:", L"E:\\Backup"},
        {L"D:\\", L"D:\\"},
        {L"", L"\\Backup"},
        {L"C", L"C\\Backup"},
        {L"C:\\Backup", L"C:\\Backup"},
        {L":\\Backup", L":\\Backup"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CompleteDestination(row.value), row.destination)
            << testing::PrintToString(row.value);
    }
}

TEST(ListLine, ReadListLine_DriveAlone_IsNotCompleted) {
    EXPECT_EQ(ReadListLine(L"BackupTo: E:").value, L"E:");
    EXPECT_EQ(CompleteDestination(ReadListLine(L"BackupTo: E:").value), L"E:\\Backup");
}

}  // namespace
}  // namespace vw
