// Runs without windows: what they show all the same, and when.

#include "tests/app/ApplicationFixture.h"
#include "tests/app/ShownWindows.h"

namespace vw::test {
namespace {

HWND WINAPI RefuseWindow(DWORD, LPCWSTR, LPCWSTR, DWORD, int, int, int, int, HWND, HMENU, HINSTANCE,
                         LPVOID) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

decltype(CreateWindowExW)* makeWindow = nullptr;
/// What happens while the first window is made.
std::function<void()> whileMaking;

HWND WINAPI MakeWindow(DWORD extended, LPCWSTR name, LPCWSTR title, DWORD style, int x, int y,
                       int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                       LPVOID parameter) {
    if (const auto act = std::exchange(whileMaking, {})) act();
    return makeWindow(extended, name, title, style, x, y, width, height, parent, menu, instance,
                      parameter);
}

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
    /// Does this in a silent run, when it could process messages.
    void InARun(std::function<void()> act) {
        WriteDefaultList({});
        bool isDone = false;
        world.pump.AtYield(3, [&] {
            act();
            isDone = true;
        });
        EXPECT_THROW(Start(L"/B"), ProgramEnded);
        EXPECT_TRUE(isDone);
    }
    [[nodiscard]] bool HasIcon() { return Windows().frmTrayIcon.Window().IsLoaded(); }
    [[nodiscard]] Form& Dialog() { return Windows().frmBusyDialog.Window(); }

    bool icon = false;
    bool dialog = false;
    bool shown = false;
};

TEST_F(SilentRun, OpensAListAndShowsNoWindow) {
    WriteDefaultList({letter});
    tree.File(drive.Backup() + L"\\Other«0001».txt");
    const ShownWindows windows;
    int listed = 0;
    world.pump.AtEachYield([&] {
        if (world.pump.Yields() > 1 && Main().IsLoaded()) {
            listed += Main().List(L"lsvRestore1").Rows().Count();
        }
    });
    EXPECT_THROW(Start(L"/S"), ProgramEnded);
    EXPECT_TRUE(state.silentRun);
    EXPECT_TRUE(windows.All().empty());
    EXPECT_EQ(listed, 0) << "nobody sees the list of copies";
    EXPECT_FALSE(Exists(drive.Backup() + L"\\Letter«0001».txt"));
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

TEST_F(SilentRun, NewLineAfterASecond_HasItsIcon) {
    InARun([this] {
        world.clock.Advance(1000);
        application.LongWork().Report(L"a line", false);
        EXPECT_TRUE(HasIcon());
    });
}

TEST_F(SilentRun, NewMessageAfterASecond_HasItsIcon) {
    InARun([this] {
        world.clock.Advance(1000);
        application.LongWork().Msg(L"Copying", L"a file");
        EXPECT_TRUE(HasIcon());
    });
}

TEST_F(SilentRun, BoxIsShown_HasItsIcon) {
    InARun([this] {
        application.OnSilentBox();
        EXPECT_TRUE(HasIcon());
    });
}

TEST_F(SilentRun, IconIsThere_DialogComesBackAtOnce) {
    InARun([this] {
        application.OnSilentBox();
        Dialog().Unload();
        application.ShowWindowsIfDue();
        EXPECT_TRUE(Dialog().IsLoaded());
        EXPECT_FALSE(Dialog().IsVisible());
    });
}

TEST_F(SilentRun, BoxWhileTheIconIsMade_MakesNoWindowOfItsOwn) {
    InARun([this] {
        bool isLoaded = true;
        whileMaking = [&] {
            application.OnSilentBox();
            isLoaded = Dialog().IsLoaded();
        };
        const ImportHook make("CreateWindowExW", &MakeWindow);
        makeWindow = make.Original<decltype(CreateWindowExW)>();
        application.OnSilentBox();
        EXPECT_FALSE(isLoaded);
        EXPECT_TRUE(Dialog().IsLoaded());
    });
}

TEST_F(SilentRun, WithoutADesktop_GoesOnWithoutWindows) {
    InARun([this] {
        {
            const ImportHook none("CreateWindowExW", &RefuseWindow);
            application.OnSilentBox();
        }
        application.OnSilentBox();
        EXPECT_FALSE(HasIcon());
        EXPECT_FALSE(Dialog().IsLoaded());
    });
}

}  // namespace
}  // namespace vw::test
