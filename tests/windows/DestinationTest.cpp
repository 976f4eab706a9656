// The box of drives in the real window.

#include <gmock/gmock.h>

#include "tests/windows/EditingWindows.h"

namespace vw::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr const wchar_t* kAbsentDrive = L"A:";

class Destination : public EditingWindows {
  protected:
    /// Turns the wheel over a control, a notch at a time.
    static void TurnWheel(HWND control, int notches) {
        RECT area{};
        GetWindowRect(control, &area);
        for (int i = 0; i < notches; ++i) {
            PostMessageW(control, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA),
                         MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2));
        }
    }
};

TEST_F(Destination, WheelAndArrowKeys_ClosedBox_ChangeNothing) {
    WriteDefaultList({letter});
    const std::string before = ReadBytes(program.DefaultList());
    DrivenProgram window(program.With(L""));
    const auto setting = program.Setting(L"BackupTo");
    const HWND box = window.Control(ID_cmbDestination);
    TurnWheel(box, 3);
    for (const WPARAM key : {VK_UP, VK_UP, VK_ESCAPE}) PostMessageW(box, WM_KEYDOWN, key, 0);
    window.WaitUntilReady();
    EXPECT_EQ(window.TextOf(ID_cmbDestination), Drive());
    EXPECT_EQ(ReadBytes(program.DefaultList()), before);
    EXPECT_EQ(program.Setting(L"BackupTo"), setting);
    window.Close();
}

TEST_F(Destination, Enter_OpenBox_IsSavedAtOnce) {
    program.List(L"Program\\FilesList.vwl", {L"BackupTo: C:\\Backup", L"Backages: 3", letter});
    DrivenProgram window(program.With(L""));
    const HWND box = window.Control(ID_cmbDestination);
    PostMessageW(box, WM_CHAR, Drive().front(), 0);
    window.WaitUntil([&] { return SendMessageW(box, CB_GETDROPPEDSTATE, 0, 0) != 0; }, "closed");
    EXPECT_THAT(ReadBytes(program.DefaultList()), HasSubstr("C:\\Backup"));
    PostMessageW(box, WM_KEYDOWN, VK_RETURN, 0);
    window.WaitUntil([&] { return ReadBytes(program.DefaultList()) == FileOf({letter}); },
                     "not saved");
    window.WaitUntilReady();
    EXPECT_EQ(program.Setting(L"BackupTo"), Vault());
    window.Close();
}

TEST_F(Destination, DriveThatIsNotReady_KeepsTheFormerOne) {
    WriteDefaultList({letter});
    const std::string before = ReadBytes(program.DefaultList());
    DrivenProgram window(program.With(L""));
    window.ChooseDrive(kAbsentDrive);
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    EXPECT_EQ(window.TextOf(ID_cmbDestination), Drive());
    EXPECT_EQ(window.TextOf(ID_sbrStatus),
              L"Drive A: is not ready. The copies still go to " + Vault() + L".");
    EXPECT_EQ(ReadBytes(program.DefaultList()), before);
    EXPECT_NE(program.Setting(L"BackupTo"), L"A:\\Backup");
    window.Close();
    EXPECT_EQ(ReadBytes(program.DefaultList()), before);
}

TEST_F(Destination, ListOfAnAbsentDrive_IsNamedByTheBox) {
    program.List(L"Program\\FilesList.vwl", {L"BackupTo: Q:\\Backup", L"Backages: 3", letter});
    const std::string before = ReadBytes(program.DefaultList());
    DrivenProgram window(program.With(L""));
    EXPECT_EQ(window.TextOf(ID_cmbDestination), L"Q:");
    window.List(ID_lsvBackupList).Click(0);
    window.WaitUntilReady();
    EXPECT_EQ(window.TextOf(ID_cmbDestination), L"Q:");
    // Neither the drive that is chosen nor that of the list is there.
    window.ChooseDrive(kAbsentDrive);
    EXPECT_EQ(window.TextOf(ID_cmbDestination), L"C:");
    EXPECT_EQ(ReadBytes(program.DefaultList()), before);
    window.Close();
    EXPECT_EQ(ReadBytes(program.DefaultList()), before);
}

}  // namespace
}  // namespace vw::test
