// Runs without windows: what they show all the same, and when.

#include "tests/app/ApplicationFixture.h"

namespace vw::test {
namespace {

// What a silent run has of windows, looked at whenever it could process messages.
class SilentRun : public App {
  protected:
    void BackUp(std::uint64_t milliseconds) {
        world.pump.Restart();
        world.pump.AtYield(3, [this, milliseconds] { world.clock.Advance(milliseconds); });
        world.pump.AtEachYield([this] {
            if (world.pump.Yields() <= 1) return;
            icon = icon || Windows().frmTrayIcon.Window().IsLoaded();
            dialog = dialog || Windows().frmBusyDialog.Window().IsLoaded();
            shown = shown || Windows().frmBusyDialog.Window().IsVisible();
        });
        EXPECT_THROW(Start(L"/B"), ProgramEnded);
    }
    bool icon = false;
    bool dialog = false;
    bool shown = false;
};

TEST_F(SilentRun, OpensAListAndShowsNoWindow) {
    WriteDefaultList({letter});
    tree.File(drive.Backup() + L"\\Other«0001».txt");
    int listed = 0;
    world.pump.AtEachYield([&] {
        if (world.pump.Yields() > 1 && Main().IsLoaded()) {
            listed += Main().List(L"lsvRestore1").Rows().Count();
        }
    });
    EXPECT_THROW(Start(L"/S"), ProgramEnded);
    EXPECT_TRUE(state.silentRun);
    EXPECT_EQ(listed, 0) << "nobody sees the list of copies";
    EXPECT_FALSE(Exists(drive.Backup() + L"\\Letter«0001».txt"));
}

TEST_F(SilentRun, ListsTheCopiesOfAnItemAndShowsNoWindow) {
    WriteDefaultList({letter});
    bool visible = false;
    world.pump.AtEachYield([&] {
        if (world.pump.Yields() > 1) visible = visible || Main().IsVisible();
    });
    EXPECT_THROW(Start(L"/R " + letter), ProgramEnded);
    EXPECT_FALSE(visible) << "nobody is to see a window of a silent run";
}

TEST_F(SilentRun, ShorterThanASecond_MakesNoWindow) {
    WriteDefaultList({tree.Path(L"Home\\")});
    BackUp(999);
    EXPECT_TRUE(Exists(drive.Backup() + L"\\Home«0001»\\Letter.txt"));
    EXPECT_FALSE(icon || dialog);
}

TEST_F(SilentRun, OneSecondOrLonger_HasItsIconAndAHiddenDialog) {
    WriteDefaultList({tree.Path(L"Home\\")});
    BackUp(1000);
    EXPECT_TRUE(icon);
    EXPECT_TRUE(dialog);
    EXPECT_FALSE(shown);
}

TEST_F(SilentRun, AfterASecond_HasItsIcon) {
    WriteDefaultList({});
    world.pump.AtYield(3, [this] {
        EXPECT_FALSE(HasMessages());
        world.clock.Advance(999);
        EXPECT_FALSE(HasMessages());
        world.clock.Advance(1);
        EXPECT_TRUE(HasMessages());
        icon = Windows().frmTrayIcon.Window().IsLoaded();
    });
    EXPECT_THROW(Start(L"/B"), ProgramEnded);
    EXPECT_TRUE(icon);
}

TEST_F(SilentRun, BoxIsShown_HasItsIcon) {
    WriteDefaultList({});
    world.pump.AtYield(3, [this] {
        application.OnSilentBox();
        icon = Windows().frmTrayIcon.Window().IsLoaded();
    });
    EXPECT_THROW(Start(L"/B"), ProgramEnded);
    EXPECT_TRUE(icon);
}

}  // namespace
}  // namespace vw::test
