// The two lists of the restore view belong together, whatever the user clicks on while a command
// runs.

#include "tests/app/ApplicationFixture.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

class RestoreView : public App {
  protected:
    RestoreView() {
        WriteDefaultList({letter, note});
        Start();
        Choose(ID_mnuBackup);
    }
    /// A click of the user.
    void Click(std::wstring_view item) {
        LVITEMW change{};
        change.stateMask = LVIS_SELECTED;
        change.state = LVIS_SELECTED;
        SendMessageW(Main().Control(L"lsvRestore1"), LVM_SETITEMSTATE,
                     static_cast<WPARAM>(Stored().Rows().Find(L"Name", item)),
                     reinterpret_cast<LPARAM>(&change));
    }
    ListView& Stored() { return Main().List(L"lsvRestore1"); }
    [[nodiscard]] std::wstring CopyShown() {
        return Main().List(L"lsvRestore2").Rows().SubItem(0, L"BackupName");
    }

    const std::wstring note = tree.File(L"Home\\Note.txt", "note");
};

TEST_F(RestoreView, ClickDuringACommand_IsFollowedAtItsEnd) {
    Click(L"Note");
    world.pump.Restart();
    bool clicked = false;
    world.pump.AtEachYield([&] {
        if (clicked) return;
        clicked = true;
        Click(L"Note");
    });
    Click(L"Letter");
    EXPECT_TRUE(clicked) << "while the copies of the letter were listed";
    EXPECT_EQ(Stored().Rows().SubItem(Stored().Selected(), L"Name"), L"Note");
    EXPECT_EQ(CopyShown(), drive.Backup() + L"\\Note«0001».txt");
}

}  // namespace
}  // namespace vw::test
