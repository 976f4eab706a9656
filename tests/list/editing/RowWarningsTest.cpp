#include "list/editing/RowWarnings.h"

#include <gmock/gmock.h>

#include <utility>

namespace vw {
namespace {

using namespace std::chrono_literals;

using testing::Each;
using testing::ElementsAre;

constexpr std::wstring_view kVault = L"E:\\Backup";
constexpr Date kNow = YearBegin(2024);

std::vector<RowWarning> WarningsFor(const std::vector<std::wstring>& paths) {
    std::vector<RowFacts> rows;
    for (const std::wstring& path : paths) rows.push_back({path, kNow});
    return WarningsOf(rows, kVault, kNow);
}

RowWarning WarningFor(const std::wstring& path) { return WarningsFor({path}).front(); }

TEST(RowWarningsTest, OrdinaryItems_NoWarning) {
    EXPECT_THAT(WarningsFor({L"C:\\Docs\\Plan.doc", L"C:\\Docs\\", L"C:\\Work\\*", L"D:\\Plan.doc",
                             L"\\\\nas\\share\\Plan.doc"}),
                Each(RowWarning::None));
}

TEST(RowWarningsTest, CommaOrLeadingQuote_WarnsOfTwoItems) {
    EXPECT_EQ(WarningFor(L"C:\\Docs\\one, two.txt"), RowWarning::ReadAsTwo);
    EXPECT_EQ(WarningFor(L"C:\\Docs, old\\"), RowWarning::ReadAsTwo);
    EXPECT_EQ(WarningFor(L"\"C:\\Docs\\a.txt"), RowWarning::ReadAsTwo);
}

TEST(RowWarningsTest, DestinationInsideOutsideOrAlike_Overlaps) {
    EXPECT_EQ(WarningFor(L"E:\\Backup\\a.txt"), RowWarning::Overlaps);
    EXPECT_EQ(WarningFor(L"E:\\Backup pictures\\"), RowWarning::Overlaps);
    EXPECT_EQ(WarningFor(L"E:\\Back"), RowWarning::Overlaps);
    EXPECT_EQ(WarningFor(L"E:\\Backup\\*"), RowWarning::Overlaps);
}

TEST(RowWarningsTest, DriveRoots_AreRefused) {
    for (const wchar_t* path : {L"C:\\", L"C:", L"C:\\*", L"E:\\"}) {
        EXPECT_EQ(WarningFor(path), RowWarning::DriveRoot);
    }
}

TEST(RowWarningsTest, FoldersOfOneName_BothAreMarked) {
    EXPECT_THAT(WarningsFor({L"C:\\Work\\Letters\\", L"C:\\Docs\\", L"D:\\Home\\letters\\"}),
                ElementsAre(RowWarning::SharedSeries, RowWarning::None, RowWarning::SharedSeries));
}

TEST(RowWarningsTest, FolderAndItsRule_BothAreMarked) {
    for (const std::wstring folder : {L"C:\\Docs\\", L"C:\\j.smith\\"}) {
        EXPECT_THAT(WarningsFor({folder, folder + L'*'}), Each(RowWarning::SharedSeries));
    }
}

// Location numbers distinguish files of one name.
TEST(RowWarningsTest, FilesOfOneName_NoWarning) {
    EXPECT_THAT(WarningsFor({L"C:\\a\\Plan.doc", L"C:\\b\\Plan.doc"}), Each(RowWarning::None));
}

TEST(RowWarningsTest, SingleFile_FolderWithApostrophe_IsMarked) {
    EXPECT_EQ(WarningFor(L"C:\\O'Brien\\Plan.doc"), RowWarning::ApostropheFolder);
    EXPECT_EQ(WarningFor(L"C:\\O'Brien\\"), RowWarning::None);
    EXPECT_EQ(WarningFor(L"C:\\Docs\\O'Brien.doc"), RowWarning::None);
}

TEST(RowWarningsTest, NameOfCopyTooLong_IsMarked) {
    EXPECT_EQ(WarningFor(L"C:\\Docs\\" + std::wstring(250, L'x') + L".txt"),
              RowWarning::ImpossibleName);
    EXPECT_EQ(WarningFor(L"C:\\" + std::wstring(40'000, L'x')), RowWarning::ImpossibleName);
    EXPECT_EQ(WarningFor(L"C:\\Docs\\" + std::wstring(230, L'x') + L".txt"), RowWarning::None);
}

TEST(RowWarningsTest, PathOfADevice_IsMarkedInItsRow) {
    EXPECT_THAT(WarningsFor({L"\\\\.\\COM1", L"C:\\Docs\\Plan.doc"}),
                ElementsAre(RowWarning::ImpossibleName, RowWarning::None));
}

TEST(RowWarningsTest, NewestDateInTheFuture_IsMarked) {
    const auto warning = [](std::optional<Date> newest) {
        return WarningsOf({{L"C:\\Docs\\Plan.doc", newest}}, kVault, kNow).front();
    };
    EXPECT_EQ(warning(kNow + 24h), RowWarning::FutureDate);
    EXPECT_EQ(warning(kNow + 1s), RowWarning::None) << "clocks differ a little";
    EXPECT_EQ(warning(std::nullopt), RowWarning::None);
}

TEST(RowWarningsTest, EveryWarning_HasASentenceInBothLanguages) {
    for (const RowWarning warning :
         {RowWarning::ReadAsTwo, RowWarning::DriveRoot, RowWarning::Overlaps,
          RowWarning::ImpossibleName, RowWarning::SharedSeries, RowWarning::ApostropheFolder,
          RowWarning::FutureDate}) {
        EXPECT_TRUE(WarningText(warning, Language::English).ends_with(L'.'));
        EXPECT_TRUE(WarningText(warning, Language::Arabic).ends_with(L'.'));
    }
    EXPECT_TRUE(WarningText(RowWarning::None, Language::Arabic).empty());
}

class WarningsOfAList : public testing::Test {
  protected:
    std::vector<std::pair<std::wstring, RowWarning>> Of(std::wstring_view text) {
        std::vector<std::pair<std::wstring, RowWarning>> found;
        const auto exists = [this](const std::wstring& line) { return line == there; };
        for (const ItemWarning& item : WarningsOfList(text, kVault, exists)) {
            found.emplace_back(item.path, item.warning);
        }
        return found;
    }

    std::wstring there = L"C:\\Docs\\one, two.txt";
};

TEST_F(WarningsOfAList, ItemsOfEachDestination_AreComparedWithIt) {
    using Found = std::pair<std::wstring, RowWarning>;
    EXPECT_THAT(Of(L"E:\\Backup\\a.txt\r\nBackupTo: F:\\Backup\r\nE:\\Backup\\b.txt\r\n"
                   L"F:\\Backup\\c.txt\r\nC:\\Docs\\a.txt\r\n"),
                ElementsAre(Found(L"E:\\Backup\\a.txt", RowWarning::Overlaps),
                            Found(L"F:\\Backup\\c.txt", RowWarning::Overlaps)));
}

TEST_F(WarningsOfAList, LineWithComma_OnlyWhenItIsAPath_IsReadAsTwo) {
    using Found = std::pair<std::wstring, RowWarning>;
    EXPECT_THAT(Of(there + L"\r\nC:\\a.txt,C:\\b.txt\r\n"),
                ElementsAre(Found(there, RowWarning::ReadAsTwo)));
    EXPECT_THAT(Of(L"\"C:\\Docs\\a.txt\",C:\\Docs\\b.txt"), ElementsAre());
    EXPECT_THAT(Of(L""), ElementsAre());
}

TEST_F(WarningsOfAList, ItemsOfTheDestinationBefore_AreNotComparedWithTheNext) {
    EXPECT_THAT(Of(L"F:\\Backup\\a.txt\r\nBackupTo: F:\\Backup\r\n"), ElementsAre());
}

TEST_F(WarningsOfAList, ItemWithoutComma_NoWarning) {
    there = L"C:\\Docs\\one.txt";
    EXPECT_THAT(Of(there + L"\r\n"), ElementsAre());
}

TEST(IsInFuture, UpToFiveMinutes_IsTolerated) {
    EXPECT_FALSE(IsInFuture(kNow + 5min, kNow));
    EXPECT_TRUE(IsInFuture(kNow + 5min + 1s, kNow));
}

}  // namespace
}  // namespace vw
