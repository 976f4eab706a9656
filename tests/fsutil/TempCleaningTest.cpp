#include "fsutil/TempCleaning.h"
#include "platform/ProgressReporter.h"

#include <gmock/gmock.h>

#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "tests/support/DiskTest.h"
#include "tests/support/WineBridge.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class RecordingHost final : public ProgressReporter {
  public:
    void Report(std::wstring_view, bool) override {}
    void Msg(std::wstring_view title, std::wstring_view message) override {
        messages.push_back(std::wstring(title) + L"|" + std::wstring(message));
        if (onMsg) onMsg();
    }
    void BusyHide(bool pause) override { EXPECT_TRUE(pause); }

    std::vector<std::wstring> messages;
    std::function<void()> onMsg;
};

/// A temporary folder of the test's own; the real ones are never cleaned here.
class Cleaning : public DiskTest {
  protected:
    void Clean(std::wstring_view confirmation = L"yes", bool skip = true) {
        MFileDosShell::DelInFolder(world.system, state, tree.Path(L"Temp"), confirmation, skip,
                                   host);
    }
    [[nodiscard]] Tree Left() const { return ReadTree(tree.Path(L"Temp")); }

    ProgramState state;
    RecordingHost host;
};

TEST_F(Cleaning, Folder_IsEmptied_EachFileIsReported) {
    tree.File(L"Temp\\a.tmp");
    tree.File(L"Temp\\Sub\\Deep\\b.tmp");
    tree.SetAttributes(L"Temp\\a.tmp", FILE_ATTRIBUTE_READONLY);
    Clean(L"YES");
    EXPECT_THAT(Left(), IsEmpty());
    EXPECT_TRUE(Exists(tree.Path(L"Temp")));
    EXPECT_THAT(host.messages, ElementsAre(L"Deleting|a.tmp"));
}

TEST_F(Cleaning, WordIsNotYes_DeletesNothing) {
    tree.File(L"Temp\\a.tmp");
    for (const auto* word : {L"", L"no", L"ye", L"yes "}) Clean(word);
    EXPECT_EQ(Left().size(), 1U);
    EXPECT_THAT(host.messages, IsEmpty());
}

TEST_F(Cleaning, KeepsVbFilesOfTheFolderItself) {
    tree.File(L"Temp\\VB1234.tmp");
    tree.File(L"Temp\\vb.x");
    tree.File(L"Temp\\VBnodot");
    tree.File(L"Temp\\Sub\\VB1.tmp");
    Clean();
    EXPECT_EQ(Left().size(), 2U);
    EXPECT_TRUE(Exists(tree.Path(L"Temp\\VB1234.tmp")));
    EXPECT_TRUE(Exists(tree.Path(L"Temp\\vb.x")));
    Clean(L"yes", false);
    EXPECT_THAT(Left(), IsEmpty());
}

TEST_F(Cleaning, FileInUse_IsReported_OthersAreRemoved) {
    tree.File(L"Temp\\a.tmp");
    const std::wstring used = tree.File(L"Temp\\b.tmp");
    tree.File(L"Temp\\c.tmp");
    tree.File(L"Temp\\Sub\\d.tmp");
    tree.File(L"Temp\\Sub\\e.tmp");
    const std::wstring usedBelow = tree.File(L"Temp\\Sub\\Deep\\f.tmp");
    {
        const FileHandle held = OpenAlone(used);
        const FileHandle heldBelow = OpenAlone(usedBelow);
        Clean();
    }
    EXPECT_EQ(Left().size(), 4U) << "two files and the folders around one";
    EXPECT_TRUE(Exists(used));
    EXPECT_TRUE(Exists(usedBelow));
    // In the words of the system, whatever its language.
    wchar_t words[512]{};
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                   ERROR_SHARING_VIOLATION, 0, words, 512, nullptr);
    std::wstring reason = words;
    while (reason.ends_with(L'\n') || reason.ends_with(L'\r')) reason.pop_back();
    EXPECT_THAT(host.messages, Contains(L"   |" + reason));
}

TEST_F(Cleaning, DoesNotEnterLinks) {
    const std::wstring canary = tree.File(L"Safe\\canary.txt", "alive");
    tree.Folder(L"Temp\\Sub");
    if (!tree.Link(L"Temp\\Link", tree.Path(L"Safe"))) GTEST_SKIP();
    ASSERT_TRUE(tree.Link(L"Temp\\Sub\\Link", tree.Path(L"Safe")));
    Clean();
    EXPECT_EQ(ReadBytes(canary), "alive");
    for (const auto& operation : world.files.Operations()) {
        EXPECT_EQ(operation.path.find(L"Link\\"), std::wstring::npos) << Describe(operation);
    }
}

TEST_F(Cleaning, StopsWhenCancelled) {
    for (const auto* name : {L"Temp\\a", L"Temp\\b", L"Temp\\c", L"Temp\\Sub\\d"}) tree.File(name);
    host.onMsg = [this] { state.cancel.Request(); };
    Clean();
    EXPECT_EQ(host.messages.size(), 1U);
    EXPECT_EQ(Left().size(), 4U);
}

TEST_F(Cleaning, MissingFolder_IsReportedAsAnError) {
    Clean();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kPathNotFound);
    EXPECT_EQ(error.procedure, L"DelInFolder");
}

TEST_F(Cleaning, FolderIsDenied_IsReportedAndSkipped) {
    tree.File(L"Temp\\a.tmp");
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::List}));
    Clean();
    EXPECT_THAT(host.messages, ElementsAre(testing::StartsWith(L"   |")));
    EXPECT_EQ(Left().size(), 1U);
}

}  // namespace
}  // namespace vw::test
