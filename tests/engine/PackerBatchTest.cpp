#include "engine/PackerBatch.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

/// Calls the builder and keeps what it handed to the shell.
class Packer {
  public:
    explicit Packer(EngineFixture& world) : world_(world) {}

    RunResult Call(const std::wstring& archive, const std::wstring& files,
                   const std::wstring& workingFolder, bool continued, bool finished) {
        return world_.With([&](CPackage& engine) {
            engine.PackageBat_(archive, files, workingFolder, continued, finished,
                               [this](std::wstring_view path) { opened.emplace_back(path); });
        });
    }

    [[nodiscard]] std::string Batch() const {
        return ReadBytes(world_.Path(L"App\\ToPackage.Bat"));
    }

    Lines opened;

  private:
    EngineFixture& world_;
};

std::string Own(const EngineFixture& world, std::wstring_view name) {
    return world.ansi.Encode(world.Path(L"App") + std::wstring(name));
}

TEST(PackerBatch, BeginsWithThePathOfThePacker) {
    EngineFixture world;
    Packer packer(world);
    packer.Call(L"", L"", L"", false, false);
    EXPECT_EQ(packer.Batch(), "@echo off\r\nPath \"" + Own(world, L"") + "\"\r\n");
    EXPECT_TRUE(packer.opened.empty());
}

TEST(PackerBatch, BeginsEachBatchEmpty) {
    EngineFixture world;
    Packer packer(world);
    packer.Call(L"a", L"b", L"", false, false);
    packer.Call(L"a", L"b", L"", true, false);
    packer.Call(L"a", L"b", L"", false, true);
    EXPECT_EQ(packer.Batch(), "@echo off\r\nPath \"" + Own(world, L"") + "\"\r\n");
    EXPECT_TRUE(packer.opened.empty());
}

TEST(PackerBatch, RemovesTheMarkOfAnEarlierCancel) {
    EngineFixture world;
    world.tree.File(L"App\\Cancel.txt", "cancel");
    Packer packer(world);
    packer.Call(L"", L"", L"", false, false);
    EXPECT_FALSE(Exists(world.Path(L"App\\Cancel.txt")));
}

TEST(PackerBatch, KeepsTheCancelMarkOfItsSteps) {
    EngineFixture world;
    Packer packer(world);
    packer.Call(L"", L"", L"", false, false);
    world.tree.File(L"App\\Cancel.txt", "cancel");
    packer.Call(L"a", L"b", L"", true, false);
    packer.Call(L"", L"", L"", true, true);
    EXPECT_TRUE(Exists(world.Path(L"App\\Cancel.txt")));
}

TEST(PackerBatch, AddsAStepPerPacking) {
    EngineFixture world;
    Packer packer(world);
    packer.Call(L"", L"", L"", false, false);
    packer.Call(L"D:\\Store\\a b.pkg", L"*.txt", L"D:\\My work", true, false);
    packer.Call(L"\"c.pkg\"", L"\"x y\"", L"relative", true, false);
    packer.Call(L"c.pkg", L"x", L"\\\\server\\share", true, false);
    const std::string skip = "IF EXIST \"" + Own(world, L"\\Cancel.txt") + "\" GOTO END\r\n";
    const std::string report = " >> \"" + Own(world, L"\\R.txt") + "\"\r\n";
    EXPECT_EQ(packer.Batch(), "@echo off\r\nPath \"" + Own(world, L"") + "\"\r\n" +  //
                                  skip + "CD \"D:\\My work\"\r\nD:\r\n" +
                                  "Package32 -9 -S \"D:\\Store\\a b.pkg\" \"*.txt\"" + report +  //
                                  skip + "Package32 -9 -S \"c.pkg\" \"x y\"" + report +          //
                                  skip + "Package32 -9 -S \"c.pkg\" \"x\"" + report);
    EXPECT_TRUE(packer.opened.empty());
}

TEST(PackerBatch, EndsWithTheLabelAndIsStarted) {
    EngineFixture world;
    Packer packer(world);
    packer.Call(L"", L"", L"", false, false);
    const std::string start = packer.Batch();
    packer.Call(L"", L"", L"", true, true);
    EXPECT_EQ(packer.Batch(), start + ":END\r\n");
    EXPECT_EQ(packer.opened, (Lines{world.Path(L"App\\ToPackage.Bat")}));
}

TEST(PackerBatch, WritesInTheCodePage) {
    EngineFixture world;
    Packer packer(world);
    packer.Call(L"", L"", L"", false, false);
    packer.Call(L"ملف.pkg", L"x", L"", true, false);
    EXPECT_NE(packer.Batch().find("\"\xE3\xE1\xDD.pkg\""), std::string::npos);
}

TEST(PackerBatch, Unwritable_IsReportedAndNotStarted) {
    EngineFixture world;
    Packer packer(world);
    packer.Call(L"", L"", L"", false, false);
    world.files.FailNth(1, error_number::kDiskFull, OnlyCalls({FileCall::Write}));
    const RunResult result = packer.Call(L"", L"", L"", true, true);
    EXPECT_EQ(Joined(result.lines), Joined({L"! 61 PackageBat_ ~\\App\\ToPackage.Bat"}));
    EXPECT_TRUE(packer.opened.empty());
}

TEST(PackerBatch, StepWithoutABatchFile_MakesOne) {
    EngineFixture world;
    Packer packer(world);
    const RunResult result = packer.Call(L"a.pkg", L"b", L"", true, false);
    EXPECT_EQ(Joined(result.lines), Joined({}));
    EXPECT_NE(packer.Batch().find("Package32 -9 -S \"a.pkg\" \"b\""), std::string::npos);
}

}  // namespace
}  // namespace vw::test
