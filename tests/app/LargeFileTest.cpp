// The windows while one large file is copied. The system calls back in the middle of such a copy.

#include "tests/app/ApplicationFixture.h"
#include "tests/support/ForwardingFileSystem.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

class SlowDisk final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    void Copy(std::wstring_view from, std::wstring_view to, const CopyProgress& progress) override {
        isCopying = true;
        for (int i = 0; i < 3; ++i) {
            clock->Advance(100);
            if (progress) progress();
        }
        isCopying = false;
        Inner().Copy(from, to, progress);
    }

    TestClock* clock = nullptr;
    bool isCopying = false;
};

class LargeFile : public App {
  protected:
    LargeFile() {
        slow.clock = &world.clock;
        WriteDefaultList({letter, note});
        running.Start(L"program.exe");
        world.pump.Restart();
    }
    void BackUpAnd(const std::function<void()>& during) {
        world.pump.AtEachYield([&] {
            if (heard > 0 || !slow.isCopying) return;
            ++heard;
            during();
        });
        SendMessageW(running.Windows().frmMain.Handle(), WM_COMMAND, ID_mnuBackup, 0);
        Rethrow();
    }
    [[nodiscard]] bool HasCopy(const wchar_t* name) const {
        return Exists(drive.Backup() + L"\\" + name);
    }

    const std::wstring note = tree.File(L"Home\\Note.txt", "note");
    SlowDisk slow{world.disk};
    System system = world.With(slow);
    Application running{system, state, settings, api, report};
    int heard = 0;
};

TEST_F(LargeFile, Cancel_IsNotedAtOnceAndActsAfterTheFile) {
    BackUpAnd([this] {
        running.Windows().frmBusyDialog.Window().Unload(UnloadReason::User);
        EXPECT_TRUE(state.cancel.IsRequested());
    });
    EXPECT_EQ(heard, 1);
    EXPECT_TRUE(HasCopy(L"Letter«0001».txt")) << "the file that was being copied";
    EXPECT_FALSE(HasCopy(L"Note«0001».txt"));
}

TEST_F(LargeFile, EndOfTheSession_IsAnswered) {
    const HWND main = running.Windows().frmMain.Handle();
    EXPECT_THROW(BackUpAnd([&] {
                     EXPECT_NE(SendMessageW(main, WM_QUERYENDSESSION, 0, 0), 0);
                     SendMessageW(main, WM_ENDSESSION, TRUE, 0);
                     Rethrow();
                 }),
                 ProgramEnded);
    EXPECT_EQ(heard, 1);
}

TEST_F(App, BackupRestoreAndDeletion_KeepTheComputerAwake) {
    WriteDefaultList({letter});
    Start();
    for (const int command : {ID_mnuBackup, ID_mnuRestore, ID_mnuDelCopies}) {
        bool awake = false;
        world.pump.Restart();
        world.pump.AtEachYield([&] { awake = awake || IsKeptAwake(); });
        if (command != ID_mnuBackup) world.boxes.Expect({}, BoxAnswer::Yes);
        Choose(command);
        EXPECT_TRUE(awake) << command;
        EXPECT_FALSE(IsKeptAwake()) << command;
    }
}

}  // namespace
}  // namespace vw::test
