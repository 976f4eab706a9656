// How a restore ends whose busy dialog the user closed or minimised.

#include <gmock/gmock.h>

#include <functional>

#include "tests/app/ApplicationFixture.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class RestoreEnd : public App {
  protected:
    RestoreEnd() {
        tree.File(L"Home\\Work\\a.txt", "stored a", {2024, 1, 1, 0, 0, 0});
        tree.File(L"Home\\Work\\b.txt", "stored b", {2024, 1, 1, 0, 0, 0});
        WriteDefaultList({work + L"\\"});
        Start();
        Choose(ID_mnuBackup);
        tree.File(L"Home\\Work\\a.txt", "unsaved a", {2024, 2, 1, 0, 0, 0});
        tree.File(L"Home\\Work\\b.txt", "unsaved b", {2024, 2, 1, 0, 0, 0});
    }
    [[nodiscard]] Form& Busy() { return Windows().frmBusyDialog.Window(); }
    /// Restores the folder with a Yes and does something while its safety copy is being made.
    void RestoreAndMeanwhile(const std::function<void()>& meanwhile, std::wstring_view end = {}) {
        world.boxes.Expect(work, BoxAnswer::Yes);
        if (!end.empty()) world.boxes.Expect(end);
        bool isDone = false;
        world.files.OnOperation([&](const FileOperation& operation) {
            if (isDone || operation.call != FileCall::Copy) return;
            isDone = true;
            meanwhile();
        });
        Choose(ID_mnuRestore);
        world.files.Heal();
        EXPECT_TRUE(isDone);
    }
    void ExpectMainWindowIsBack() {
        EXPECT_TRUE(Main().IsVisible());
        EXPECT_TRUE(Main().IsFormEnabled());
        EXPECT_FALSE(Windows().frmTrayIcon.Window().IsLoaded());
        EXPECT_FALSE(Busy().IsLoaded());
    }

    static constexpr std::wstring_view kCancelled = L"Nothing was overwritten";
    const std::wstring work = tree.Path(L"Home\\Work");
};

TEST_F(RestoreEnd, DialogClosedDuringSafetyCopy_CancelsAndStaysClosed) {
    RestoreAndMeanwhile([this] { SendMessageW(Busy().Handle(), WM_CLOSE, 0, 0); }, kCancelled);
    ExpectMainWindowIsBack();
    EXPECT_EQ(ReadBytes(work + L"\\a.txt"), "unsaved a");
    EXPECT_FALSE(Exists(drive.Backup() + L"\\Work«0021»"));
    EXPECT_THAT(Windows().frmBusyDialog.ReportText(), Not(HasSubstr(L"copy 1")));
    // The next restore shows its dialog again, and does its work.
    RestoreAndMeanwhile([this] { EXPECT_TRUE(Busy().IsVisible()); });
    EXPECT_EQ(ReadBytes(work + L"\\a.txt"), "stored a");
}

TEST_F(RestoreEnd, DialogClosedAtAnyListingBeforeTheCopy_CancelsAndStaysClosed) {
    world.boxes.AnswerAll(BoxAnswer::Yes);
    int listing = 0;
    for (bool isReached = true; isReached;) {
        ++listing;
        int count = 0;
        bool isCopying = false;
        isReached = false;
        world.files.OnOperation([&](const FileOperation& operation) {
            EXPECT_FALSE(isReached && Busy().IsVisible()) << "it came back after " << listing;
            if (operation.call == FileCall::Copy) isCopying = true;
            if (isCopying || operation.call != FileCall::List) return;
            if (!operation.path.starts_with(work) || ++count != listing) return;
            isReached = true;
            SendMessageW(Busy().Handle(), WM_CLOSE, 0, 0);
        });
        Choose(ID_mnuRestore);
        world.files.Heal();
        EXPECT_EQ(ReadBytes(work + L"\\a.txt"), isReached ? "unsaved a" : "stored a") << listing;
        if (!isReached) break;
        EXPECT_THAT(world.boxes.Shown().back().text, HasSubstr(std::wstring(kCancelled)))
            << listing;
        ExpectMainWindowIsBack();
    }
    EXPECT_GT(listing, 3) << "what is restored over is listed to know it and to copy it";
}

TEST_F(RestoreEnd, DialogMinimised_ShowsTheMainWindow) {
    RestoreAndMeanwhile([this] {
        ShowWindow(Busy().Handle(), SW_MINIMIZE);
        EXPECT_TRUE(Windows().frmTrayIcon.Window().IsLoaded());
        EXPECT_FALSE(Main().IsVisible());
    });
    ExpectMainWindowIsBack();
    EXPECT_EQ(ReadBytes(work + L"\\a.txt"), "stored a");
}

TEST_F(RestoreEnd, DialogMinimisedAndCancelledByTheIcon_ShowsTheMainWindow) {
    RestoreAndMeanwhile(
        [this] {
            ShowWindow(Busy().Handle(), SW_MINIMIZE);
            state.cancel.Request();
        },
        kCancelled);
    ExpectMainWindowIsBack();
    EXPECT_EQ(ReadBytes(work + L"\\a.txt"), "unsaved a");
}

TEST_F(RestoreEnd, BackupMinimisedAndCancelledByTheIcon_ShowsTheMainWindow) {
    bool isDone = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (isDone || operation.call != FileCall::Copy) return;
        isDone = true;
        ShowWindow(Busy().Handle(), SW_MINIMIZE);
        state.cancel.Request();
    });
    Choose(ID_mnuBackup);
    EXPECT_TRUE(isDone);
    ExpectMainWindowIsBack();
}

TEST_F(RestoreEnd, AfterANo_DeletionKeepsTheDialogOpen) {
    world.boxes.Expect(work, BoxAnswer::No);
    Choose(ID_mnuRestore);
    EXPECT_TRUE(Busy().IsVisible());
    world.boxes.Expect(L"[N01]", BoxAnswer::Yes);
    Choose(ID_mnuDelCopy);
    EXPECT_TRUE(Busy().IsVisible());
    EXPECT_FALSE(Exists(drive.Backup() + L"\\Work«0001»"));
}

}  // namespace
}  // namespace vw::test
