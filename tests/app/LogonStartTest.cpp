#include "app/LogonStart.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/CCommonAPI.h"
#include "platform/ProgramState.h"
#include "tests/support/ScratchRegistry.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

const std::wstring kBaseName = L"VaultwrightTests-Logon";
const std::wstring kRunKey = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";

struct RecordedMark {
    std::vector<bool> marks;
    int explained = 0;
};

/// A drive of a chosen kind; remembers which one was asked about.
class DriveOfKind final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    DriveType kind = DriveType::Fixed;
    std::vector<std::wstring> asked;

    DriveType DriveTypeOf(std::wstring_view path) override {
        asked.emplace_back(path);
        return kind;
    }
};

/// A registry that a user without an administrator's rights has.
class ReadOnlyRegistry final : public RawRegistry {
  public:
    LSTATUS CreateKey(HKEY, const std::string&, RegistryKey&) override {
        return ERROR_ACCESS_DENIED;
    }
    LSTATUS QueryValue(HKEY, const std::string&, char*, DWORD&) override {
        return ERROR_ACCESS_DENIED;
    }
    LSTATUS SetValue(HKEY, const std::string&, DWORD, std::string_view) override {
        return ERROR_ACCESS_DENIED;
    }
    LSTATUS DeleteValue(HKEY, const std::string&) override { return ERROR_ACCESS_DENIED; }
    LSTATUS DeleteTree(HKEY, const std::string&) override { return ERROR_ACCESS_DENIED; }
};

class LogonStarts : public testing::Test {
  protected:
    ScratchKey key{HKEY_CURRENT_USER, L"Software\\Tallowmere.Net\\" + kBaseName};
    SavedValue entry{HKEY_LOCAL_MACHINE, kRunKey, kBaseName};
    TestEnvironment world;
    DriveOfKind drives{world.files};
    System system = world.With(drives);
    MRecentFiles::SettingsStore settings{world.errors, kBaseName};
    ProgramState state;
    SystemRegistry registry;
    CCommonAPI api{registry, world.ansi, world.boxes, world.errors};
    RecordedMark mark;
    LogonStart::OnChange onChange = [this](bool isOn, bool isNew) {
        mark.marks.push_back(isOn);
        if (isNew) ++mark.explained;
    };
    LogonStart logon{system, api, settings, state, onChange};

    void SetUp() override {
        state.applicationFolder = L"C:\\My Vault";
        state.executableBaseName = kBaseName;
        state.currentListPath = L"c:\\my vault\\FILESLIST.vwl";
    }
    [[nodiscard]] static std::optional<StoredValue> Entry() {
        return ReadValue(HKEY_LOCAL_MACHINE, kRunKey, kBaseName);
    }
    [[nodiscard]] std::wstring Setting() const {
        return settings.GetSetting(L"Startup", L"absent");
    }
};

TEST_F(LogonStarts, NoEntry_IsOff) { EXPECT_FALSE(logon.ApplicationSartup()); }

TEST_F(LogonStarts, EntryOfTheProgramsName_IsOn) {
    entry.Set(L"anything");
    EXPECT_TRUE(logon.ApplicationSartup());
    state.executableBaseName = kBaseName + L"2";
    EXPECT_FALSE(logon.ApplicationSartup());
}

TEST_F(LogonStarts, SwitchOn_WritesTheCommandWithoutQuotationMarks) {
    logon.ApplicationSartup(true);
    EXPECT_EQ(Entry(), TextValue(L"C:\\My Vault\\" + kBaseName + L".exe /S"));
    EXPECT_EQ(Setting(), L"-1");
    EXPECT_EQ(mark.marks, std::vector<bool>{true});
    EXPECT_EQ(mark.explained, 1);
    EXPECT_TRUE(logon.ApplicationSartup());
    EXPECT_EQ(drives.asked, std::vector<std::wstring>{L"C:\\"});
}

TEST_F(LogonStarts, SwitchOff_RemovesTheEntry) {
    logon.ApplicationSartup(true);
    logon.ApplicationSartup(false);
    EXPECT_EQ(Entry(), std::nullopt);
    EXPECT_EQ(Setting(), L"0");
    EXPECT_EQ(mark.marks, (std::vector<bool>{true, false}));
    EXPECT_EQ(mark.explained, 1) << "only when it is switched on";
    EXPECT_FALSE(logon.ApplicationSartup());
}

TEST_F(LogonStarts, OtherList_ChangesNothing) {
    state.currentListPath = L"D:\\Lists\\work.vwl";
    logon.ApplicationSartup(true);
    EXPECT_EQ(Entry(), std::nullopt);
    EXPECT_EQ(Setting(), L"absent");
    EXPECT_TRUE(mark.marks.empty());
    EXPECT_TRUE(drives.asked.empty());
}

TEST_F(LogonStarts, AlreadyAsWanted_WritesNothing) {
    entry.Set(L"by hand");
    logon.ApplicationSartup(true);
    EXPECT_EQ(Entry(), TextValue(L"by hand"));
    entry.Remove();
    logon.ApplicationSartup(false);
    EXPECT_EQ(Setting(), L"absent");
    EXPECT_EQ(mark.marks, (std::vector<bool>{true, false})) << "the mark shows what is stored";
    EXPECT_EQ(mark.explained, 0);
}

TEST_F(LogonStarts, SwitchOn_ProgramNotOnAHardDrive_IsRefused) {
    for (const DriveType kind : {DriveType::Unknown, DriveType::Removable, DriveType::Network,
                                 DriveType::Optical, DriveType::Memory}) {
        drives.kind = kind;
        world.boxes.Expect(L"Run this Application from your hard drive");
        logon.ApplicationSartup(true);
    }
    EXPECT_EQ(Entry(), std::nullopt);
    EXPECT_EQ(Setting(), L"absent");
    EXPECT_EQ(mark.marks, std::vector<bool>(5, false));
    ASSERT_FALSE(world.boxes.Shown().empty());
    const MessageBoxRequest& box = world.boxes.Shown().front();
    EXPECT_EQ(box.text, L"Run this Application from your hard drive");
    EXPECT_EQ(box.title, kApplicationTitle);
    EXPECT_EQ(box.buttons, BoxButtons::Ok);
    EXPECT_EQ(box.icon, BoxIcon::None);
}

// The entry is written in the ANSI code page: with "?" in it, it would start nothing.
TEST_F(LogonStarts, PathOutsideTheCodePage_IsRefusedAndReported) {
    world.ansi.Use(1252);
    state.applicationFolder = L"C:\\برنامج";
    state.currentListPath = L"C:\\برنامج\\FilesList.vwl";
    world.boxes.Expect(L"cannot hold all letters of the program's path");
    logon.ApplicationSartup(true);
    EXPECT_EQ(Entry(), std::nullopt);
    EXPECT_EQ(Setting(), L"absent");
    EXPECT_EQ(mark.marks, std::vector<bool>{false});
    state.language = Language::Arabic;
    world.boxes.Expect(L"لا يمكن كتابة كل حروف مسار البرنامج");
    logon.ApplicationSartup(true);
    EXPECT_TRUE(world.boxes.Shown().back().rightToLeft);
    world.ansi.Use(1256);
    logon.ApplicationSartup(true);
    EXPECT_TRUE(Entry().has_value());
}

TEST_F(LogonStarts, SwitchOff_ProgramNotOnAHardDrive_IsRefused) {
    entry.Set(L"by hand");
    drives.kind = DriveType::Removable;
    world.boxes.Expect(L"Run this Application from your hard drive");
    logon.ApplicationSartup(false);
    EXPECT_EQ(Entry(), TextValue(L"by hand"));
}

TEST_F(LogonStarts, SwitchOn_ProgramOnAServer_IsRefused) {
    System real = world.With(world.files);
    LogonStart onRealDrives(real, api, settings, state, onChange);
    state.applicationFolder = L"\\\\server\\share\\Vault";
    state.currentListPath = state.DefaultListPath();
    world.boxes.Expect(L"Run this Application from your hard drive");
    onRealDrives.ApplicationSartup(true);
    EXPECT_EQ(Entry(), std::nullopt);
}

TEST_F(LogonStarts, SwitchOn_WithoutTheRights_LeavesTheMarkClear) {
    ReadOnlyRegistry refused;
    CCommonAPI refusedApi(refused, world.ansi, world.boxes, world.errors);
    LogonStart withoutRights(system, refusedApi, settings, state, onChange);
    withoutRights.ApplicationSartup(true);
    EXPECT_EQ(Entry(), std::nullopt);
    EXPECT_EQ(Setting(), L"-1");
    EXPECT_EQ(mark.marks, std::vector<bool>{false});
    EXPECT_EQ(mark.explained, 0);
    EXPECT_FALSE(withoutRights.ApplicationSartup());
}

TEST_F(LogonStarts, Error_IsReportedUnderItsName) {
    world.files.FailFrom(1, error_number::kNotReady);
    System failing = world.With(world.files);
    LogonStart onFailingDrive(failing, api, settings, state, onChange);
    onFailingDrive.ApplicationSartup(true);
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kNotReady);
    EXPECT_EQ(error.procedure, L"ApplicationSartup");
    EXPECT_EQ(error.kind, L"Module");
    EXPECT_EQ(error.container, L"MVaultwright");
    EXPECT_TRUE(mark.marks.empty());
}

}  // namespace
}  // namespace vw::test
