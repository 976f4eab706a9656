// The doubles that all other tests trust.

#include <gtest/gtest.h>

#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "tests/support/DiskTest.h"
#include "tests/support/ErrorNumber.h"

namespace vw::test {
namespace {

using FaultyFileSystemTest = DiskTest;

TEST_F(FaultyFileSystemTest, ForwardsEveryCallWithoutAPlan) {
    const std::wstring file = tree.File(L"a.txt", "abc");
    EXPECT_EQ(world.files.Read(file), "abc");
    EXPECT_EQ(world.files.Stat(file)->size, 3U);
    EXPECT_EQ(world.files.Count(), 2);
    EXPECT_TRUE(world.files.Faults().empty());
}

TEST_F(FaultyFileSystemTest, FailsTheNthMatchingOperationOnly) {
    world.files.FailNth(2, 70, OnlyCalls({FileCall::CreateFolder}));
    (void)world.files.Stat(tree.Path());
    world.files.CreateFolder(tree.Path(L"one"));
    EXPECT_EQ(NumberOf([&] { world.files.CreateFolder(tree.Path(L"two")); }), 70);
    world.files.CreateFolder(tree.Path(L"three"));
    EXPECT_TRUE(Exists(tree.Path(L"one")));
    EXPECT_FALSE(Exists(tree.Path(L"two")));
    EXPECT_TRUE(Exists(tree.Path(L"three")));
    EXPECT_EQ(world.files.Count(), 3);
    ASSERT_EQ(world.files.Faults().size(), 1U);
    EXPECT_EQ(world.files.Faults()[0].path, tree.Path(L"two"));
    EXPECT_NE(Describe(world.files.Faults()[0]).find("CreateFolder"), std::string::npos);
}

TEST_F(FaultyFileSystemTest, FullDisk_StaysFull) {
    const std::wstring source = tree.File(L"source", "bytes");
    world.files.FillDiskFrom(2);
    world.files.Write(tree.Path(L"fits"), "1", FileSystem::Flush::No);
    EXPECT_EQ(NumberOf([&] { world.files.Copy(source, tree.Path(L"copy"), {}); }), 61);
    EXPECT_EQ(NumberOf([&] { world.files.CreateFolder(tree.Path(L"folder")); }), 61);
    EXPECT_EQ(world.files.Read(source), "bytes");
    EXPECT_EQ(world.files.Faults()[0].to, tree.Path(L"copy"));
}

TEST_F(FaultyFileSystemTest, Death_LeavesHalfACopyAndRefusesLaterCalls) {
    const std::wstring source = tree.File(L"source", "123456");
    world.files.DieAtNth(1, OnlyCalls({FileCall::Copy}));
    EXPECT_THROW(world.files.Copy(source, tree.Path(L"copy"), {}), Died);
    EXPECT_EQ(ReadBytes(tree.Path(L"copy")), "123");
    EXPECT_THROW((void)world.files.Stat(source), Died);
    EXPECT_THROW((void)world.files.TempFolder(), Died);
    world.files.Heal();
    EXPECT_EQ(world.files.Read(source), "123456");
}

TEST_F(FaultyFileSystemTest, Death_IsCaughtByNoErrorTrap) {
    world.files.DieAtNth(1);
    EXPECT_THROW(ErrorTrap(world.errors, L"Module", L"Test")(
                     L"Test", [&] { (void)world.files.Stat(L"C:\\"); }),
                 Died);
}

TEST_F(FaultyFileSystemTest, ReportsSuccessForIgnoredAndTruncatedCalls) {
    const std::wstring source = tree.File(L"source", "123456");
    world.files.IgnoreNth(1, OnlyChanges());
    world.files.RemoveFile(source);
    EXPECT_TRUE(Exists(source));
    world.files.TruncateNthCopy(1);
    world.files.Copy(source, tree.Path(L"copy"), {});
    EXPECT_EQ(ReadBytes(tree.Path(L"copy")), "123");
}

TEST(ScriptedPump, RunsTheActionAtTheGivenYield) {
    TestEnvironment world;
    int atThird = 0;
    world.pump.AtYield(3, [&] { ++atThird; });
    world.pump.ProcessMessages();
    world.pump.ProcessMessagesIfDue();
    EXPECT_EQ(atThird, 0);
    const std::uint64_t before = world.clock.Milliseconds();
    world.pump.WaitForMessages(250);
    EXPECT_EQ(atThird, 1);
    EXPECT_EQ(world.pump.Yields(), 3);
    EXPECT_EQ(world.clock.Milliseconds(), before + 250);
}

TEST(TestEnvironment, ProgramEnd_IsCaughtByNoErrorTrap) {
    TestEnvironment world;
    try {
        ErrorTrap(world.errors, L"Module", L"Test")(L"Test", [&] { world.programEnd.End(76); });
        FAIL() << "the program went on";
    } catch (const ProgramEnded& end) {
        EXPECT_EQ(end.exitCode, 76);
    }
}

TEST(TestEnvironment, ReportedErrors_SetTheExitCode) {
    TestEnvironment world;
    ErrorTrap(world.errors, L"Module", L"Test")(L"First", [] { Throw(70, L"C:\\locked"); });
    ErrorTrap(world.errors, L"Module", L"Test")(L"Second", [] { Throw(61); });
    const std::vector<ToldError> told = world.errors.Take();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].path, L"C:\\locked");
    EXPECT_EQ(told[0].procedure, L"First");
    EXPECT_EQ(told[1].number, 61);
    EXPECT_EQ(world.exitStatus.Code(), 70);
}

TEST(TestEnvironment, UsesTheChosenCodePage) {
    TestEnvironment world;
    EXPECT_TRUE(world.ansi.Holds(L"ملف"));
    world.ansi.Use(1252);
    EXPECT_FALSE(world.ansi.Holds(L"ملف"));
    EXPECT_TRUE(world.ansi.Holds(L"«é»"));
}

TEST(TempTree, ReadsBackWhatItWrote) {
    const TempTree tree;
    const DateParts date{2024, 7, 15, 13, 45, 30};
    tree.File(L"Sub\\ملف.txt", std::string("\0\x01", 2), date);
    tree.Folder(L"empty");
    const Tree read = ReadTree(tree.Path());
    ASSERT_EQ(read.size(), 3U);
    EXPECT_TRUE(read.at(L"empty").isFolder);
    EXPECT_TRUE(read.at(L"Sub").isFolder);
    const TreeNode expected{false, std::string("\0\x01", 2), MakeDate(date)};
    EXPECT_EQ(read.at(L"Sub\\ملف.txt"), expected);
}

TEST(TempTree, Destructor_RemovesTheTree) {
    std::wstring root;
    {
        const TempTree tree;
        root = tree.Path();
        tree.File(L"a\\b\\read only.txt");
        tree.SetAttributes(L"a\\b\\read only.txt", 1);
        std::wstring deep = L"deep";
        for (int i = 0; i < 20; ++i) deep += L"\\a folder name of some length";
        tree.File(deep + L"\\file.txt");
    }
    EXPECT_FALSE(Exists(root));
}

}  // namespace
}  // namespace vw::test
