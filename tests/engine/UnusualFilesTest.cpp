// Files that hold no data, files in the cloud alone, and encrypted files. The disk of the tests has
// none, so a double marks ordinary ones.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

constexpr std::uint64_t kGiB = std::uint64_t{1} << 30;
constexpr std::uint32_t kNoNetwork = 388;

class SpecialItems : public testing::Test {
  protected:
    SpecialItems() {
        world_.tree.File(L"Work\\a.txt", "a", Day(1));
        world_.tree.File(L"Work\\b.txt", "b", Day(2));
        world_.tree.File(L"Work\\Sub\\c.txt", "c", Day(1));
        world_.List({L"Work\\"});
        world_.state.silentRun = true;
    }

    void IsLink(const std::wstring& name) {
        world_.drive.marks[name] = [](FileInfo& facts) { facts.isLink = true; };
    }
    void IsInCloud(const std::wstring& name, std::uint64_t size) {
        world_.drive.marks[name] = [size](FileInfo& facts) {
            facts.isOnlyInCloud = true;
            facts.size = size;
        };
    }

    static bool Has(const RunResult& result, std::wstring_view part) {
        return std::ranges::any_of(result.lines,
                                   [&](const auto& line) { return line.find(part) != line.npos; });
    }

    EngineFixture world_;
};

TEST_F(SpecialItems, FileWithoutData_IsSkippedAndReported_NoFailure) {
    IsLink(L"b.txt");
    const RunResult result = world_.Run();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(Has(result, L"Skipped link: ~\\Work\\b.txt")) << Joined(result.lines);
    EXPECT_EQ(world_.Copies(), (Listing{{L"Work«0001»", kFolder},
                                        {L"Work«0001»\\a.txt", "a"},
                                        {L"Work«0001»\\Sub", kFolder},
                                        {L"Work«0001»\\Sub\\c.txt", "c"}}));
    // Neither its date nor its absence in the copy makes the item new.
    world_.tree.File(L"Work\\b.txt", "newer", Day(9));
    world_.ExpectRun(NoChange(L"~\\Work\\"));
}

// It is away when its backup begins, and there again when it is copied.
TEST_F(SpecialItems, EmptyFileComesBack_IsNotCalledChanged) {
    world_.tree.File(L"new.txt", "before", Day(1));
    world_.List({L"new.txt"});
    world_.Run();
    world_.tree.Remove(L"new.txt");
    world_.files.OnOperation([this](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) world_.tree.File(L"new.txt", "", Day(2));
    });
    world_.ExpectRun(Missing(L"~\\new.txt") + BackedUp(L"~\\new.txt"));
    EXPECT_EQ(world_.Copies(), (Listing{{L"new«0001».txt", ""}, {L"new«0002».txt", "before"}}));
}

TEST_F(SpecialItems, ItemWithoutData_IsSkipped_KeepsItsCopies) {
    world_.tree.File(L"alias.exe", "x", Day(1));
    world_.List({L"alias.exe"});
    EXPECT_EQ(world_.Run().exitCode, 0);
    world_.tree.File(L"alias.exe", "y", Day(2));
    IsLink(L"alias.exe");
    const RunResult result = world_.Run();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(Has(result, L"Skipped link: ~\\alias.exe"));
    EXPECT_EQ(world_.Copies(), (Listing{{L"alias«0001».exe", "x"}}));
}

TEST_F(SpecialItems, FilesInTheCloudAlone_AreCountedBeforeTheyAreCopied) {
    world_.drive.marks[L"a.txt"] =
        world_.drive.marks[L"c.txt"] = [](FileInfo& facts) { facts.isOnlyInCloud = true; };
    const RunResult result = world_.Run();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(Has(result, L"2 files, 2Byte, are only in the cloud: ~\\Work\\"))
        << Joined(result.lines);
    EXPECT_EQ(ReadBytes(world_.Store(L"Work«0001»\\a.txt")), "a");
    // A rule takes the files of its own folder alone, and what did not change is not counted.
    EXPECT_FALSE(Has(world_.Run(), L"cloud"));
    world_.List({L"Work\\*"});
    world_.tree.File(L"Work\\b.txt", "b2", Day(5));
    EXPECT_TRUE(Has(world_.Run(), L"1 file, 1Byte, is only in the cloud: ~\\Work"));
}

TEST_F(SpecialItems, MoreThanAGigabyteInTheCloud_IsAskedForInAWindow) {
    IsInCloud(L"a.txt", kGiB + 1);
    world_.drive.freeBytes[world_.Store()] = 100 * kGiB;
    world_.state.silentRun = false;
    world_.boxes.Expect(L"Download them now", BoxAnswer::No);
    const RunResult refused = world_.Run();
    EXPECT_TRUE(Has(refused, L"Not backed up, its files were not downloaded: ~\\Work\\"));
    EXPECT_FALSE(Has(refused, L"Backing: ~\\Work\\"));
    EXPECT_EQ(refused.exitCode, error_number::kCancelled);
    EXPECT_TRUE(world_.Copies().empty());
    ASSERT_EQ(world_.boxes.Shown().size(), 1U);
    EXPECT_EQ(world_.boxes.Shown()[0].buttons, BoxButtons::YesNo);

    world_.boxes.Expect(L"Download them now", BoxAnswer::Yes);
    EXPECT_TRUE(Has(world_.Run(), L"Backing: ~\\Work\\"));
}

TEST_F(SpecialItems, UpToAGigabyteOrInASilentRun_AsksNothing) {
    IsInCloud(L"a.txt", kGiB);
    world_.drive.freeBytes[world_.Store()] = 100 * kGiB;
    world_.state.silentRun = false;
    EXPECT_TRUE(Has(world_.Run(), L"Backing: ~\\Work\\"));
    world_.state.silentRun = true;
    IsInCloud(L"a.txt", 50 * kGiB);
    world_.tree.File(L"Work\\b.txt", "b2", Day(5));
    EXPECT_TRUE(Has(world_.Run(), L"Backing: ~\\Work\\"));
    EXPECT_TRUE(world_.boxes.Shown().empty());
}

TEST_F(SpecialItems, CloudOutOfReach_FailsTheItemOnceAndKeepsItsCopies) {
    EXPECT_EQ(world_.Run().exitCode, 0);
    const Listing before = world_.Copies();
    world_.tree.File(L"Work\\a.txt", "newer", Day(9));
    world_.drive.copyCode = kNoNetwork;
    const RunResult result = world_.Run();
    ASSERT_EQ(result.errors.size(), 1U);
    EXPECT_EQ(result.errors[0].number, 75);
    EXPECT_TRUE(Has(result, L"! 75 BackupFile ~\\Work\\")) << Joined(result.lines);
    EXPECT_EQ(world_.Copies(), before);
}

TEST_F(SpecialItems, EncryptedFiles_AreReportedOncePerItem) {
    world_.drive.marks[L"a.txt"] =
        world_.drive.marks[L"c.txt"] = [](FileInfo& facts) { facts.isEncrypted = true; };
    const RunResult result = world_.Run();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(std::ranges::count_if(
                  result.lines,
                  [](const auto& line) {
                      return line ==
                             L"Encrypted files, whose copies only this account can read: "
                             L"~\\Work\\";
                  }),
              1);
}

TEST_F(SpecialItems, EncryptedFileBelowTheFolderOfARule_IsNotReported) {
    world_.drive.marks[L"c.txt"] = [](FileInfo& facts) { facts.isEncrypted = true; };
    world_.List({L"Work\\*"});
    EXPECT_FALSE(Has(world_.Run(), L"Encrypted files"));
    world_.tree.Remove(L"Store");
    world_.tree.Folder(L"Store");
    world_.List({L"Work\\"});
    EXPECT_TRUE(Has(world_.Run(), L"Encrypted files"));
}

}  // namespace
}  // namespace vw::test
