#include "list/editing/RecentFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/ExitStatus.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "tests/support/RecordedErrors.h"
#include "tests/support/ScratchRegistry.h"

namespace vw::test {
namespace {

const std::wstring kBaseName = L"VaultwrightTests-Recent";
const std::wstring kKey = L"Software\\Tallowmere.Net\\" + kBaseName;

/// Writes down what the commands ask of the window.
class RecordingHost {
  public:
    explicit RecordingHost(const ProgramState& state) : state_(state) {}

    std::vector<std::wstring> calls;
    RecentFileMenu menu;
    bool openingFails = false;

    void Ready(bool flag) { calls.emplace_back(flag ? L"Ready(true)" : L"Ready(false)"); }
    void FileOpen(std::wstring_view path) {
        if (openingFails) Throw(error_number::kPathNotFound, path);
        calls.push_back(L"FileOpen " + std::wstring(path));
    }
    void OpenDefaultList() { calls.emplace_back(L"OpenDefaultList"); }
    void SetCaption() { calls.push_back(L"SetCaption " + state_.currentListPath); }
    void ShowRecentFiles(const RecentFileMenu& shown) {
        calls.emplace_back(L"ShowRecentFiles");
        menu = shown;
    }
    [[nodiscard]] RecentFileActions Actions() {
        return {.ready = [this](bool flag) { Ready(flag); },
                .open = [this](std::wstring_view path) { FileOpen(path); },
                .openDefault = [this] { OpenDefaultList(); },
                .showCaption = [this] { SetCaption(); },
                .showMenu = [this](const RecentFileMenu& shown) { ShowRecentFiles(shown); }};
    }

  private:
    const ProgramState& state_;
};

class RecentFiles : public testing::Test {
  protected:
    ScratchKey key{HKEY_CURRENT_USER, kKey};
    ExitStatus exitStatus;
    RecordedErrors errors{exitStatus};
    MRecentFiles::SettingsStore settings{errors, kBaseName};
    ProgramState state;
    RecordingHost host{state};
    MRecentFiles::RecentFiles recent{errors, settings, state, host.Actions()};

    void SetUp() override {
        state.applicationFolder = L"C:\\Vault";
        state.currentListPath = L"D:\\Lists\\work.vwl";
    }
    void Store(const std::vector<std::wstring>& paths) {
        for (std::size_t i = 0; i < paths.size(); ++i) {
            settings.SaveSetting(L"RecentFile" + std::to_wstring(i + 1), paths[i]);
        }
    }
    [[nodiscard]] std::vector<std::wstring> Stored() const {
        std::vector<std::wstring> paths;
        for (int i = 1; i <= 4; ++i) {
            paths.push_back(settings.GetSetting(L"RecentFile" + std::to_wstring(i), L"absent"));
        }
        return paths;
    }
};

using Paths = std::vector<std::wstring>;

TEST_F(RecentFiles, NoneStored_AreEmpty) {
    for (int i = 1; i <= 4; ++i) EXPECT_EQ(recent.RecentFile(i), L"");
}

TEST_F(RecentFiles, ReadsEachUnderItsNumber) {
    Store({L"a", L"b", L"c", L"d"});
    EXPECT_EQ(recent.RecentFile(1), L"a");
    EXPECT_EQ(recent.RecentFile(4), L"d");
    EXPECT_EQ(recent.RecentFile(5), L"");
}

TEST_F(RecentFiles, ThirdOfFourReopened_MovesToTheTop) {
    Store({L"1", L"2", L"3", L"4"});
    recent.RecentFile(1, L"3");
    EXPECT_EQ(Stored(), (Paths{L"3", L"1", L"2", L"4"}));
}

TEST_F(RecentFiles, NewOne_RemovesTheFourth) {
    Store({L"1", L"2", L"3", L"4"});
    recent.RecentFile(1, L"new");
    EXPECT_EQ(Stored(), (Paths{L"new", L"1", L"2", L"3"}));
}

TEST_F(RecentFiles, DefaultListInUse_StoresNothing) {
    Store({L"1", L"2"});
    state.currentListPath = L"c:\\VAULT\\fileslist.VWL";
    recent.RecentFile(1, L"D:\\Lists\\other.vwl");
    EXPECT_EQ(Stored(), (Paths{L"1", L"2", L"absent", L"absent"}));
    EXPECT_TRUE(host.calls.empty());
}

// What counts is the list in use, not the path.
TEST_F(RecentFiles, OtherListInUse_StoresTheDefaultListToo) {
    recent.RecentFile(1, L"C:\\Vault\\FilesList.vwl");
    EXPECT_EQ(recent.RecentFile(1), L"C:\\Vault\\FilesList.vwl");
}

TEST_F(RecentFiles, OtherIndexThan1_ThrowsError4000) {
    for (const int index : {0, 2, 4, -1}) {
        try {
            recent.RecentFile(index, L"C:\\a.vwl");
            FAIL() << "taken: " << index;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), 4000);
            EXPECT_EQ(error.Description(), L"Index <> 1");
        }
    }
    EXPECT_FALSE(KeyExists(HKEY_CURRENT_USER, kKey));
    EXPECT_TRUE(errors.All().empty());
}

TEST_F(RecentFiles, IsRecentFile_IgnoresLetterCase) {
    Store({L"C:\\a.vwl", L"C:\\b.vwl", L"C:\\c.vwl", L"C:\\d.vwl"});
    EXPECT_EQ(recent.IsRecentFile(L"C:\\a.vwl"), 1);
    EXPECT_EQ(recent.IsRecentFile(L"c:\\D.VWL"), 4);
    EXPECT_EQ(recent.IsRecentFile(L"C:\\e.vwl"), 0);
}

TEST_F(RecentFiles, ShowsNamesWithoutFolderAndExtension) {
    Store({L"D:\\Lists\\My work.v1.vwl", L"D:\\Lists.old\\noPoint", L"D:\\A&B.vwl", L"D:\\4.vwl"});
    recent.UpdateRecentFiles();
    const RecentFileMenu expected{{{L"My work.v1", true}, {L"noPoint", true}, {L"A&B", true}}};
    EXPECT_EQ(host.menu, expected);
    EXPECT_EQ(host.calls, Paths{L"ShowRecentFiles"});
}

TEST_F(RecentFiles, HidesEntriesWithAnEmptyName) {
    Store({L"D:\\a.vwl", L"", L"D:\\.vwl", L"D:\\d.vwl"});
    recent.UpdateRecentFiles();
    const RecentFileMenu expected{{{L"a", true}, {L"", false}, {L"", false}}};
    EXPECT_EQ(host.menu, expected);
}

TEST_F(RecentFiles, RefreshesTheMenuWhenOneIsAdded) {
    recent.RecentFile(1, L"D:\\a.vwl");
    EXPECT_EQ(host.calls, Paths{L"ShowRecentFiles"});
    EXPECT_EQ(host.menu[0], (RecentFileEntry{L"a", true}));
    EXPECT_FALSE(host.menu[1].visible);
}

TEST_F(RecentFiles, MenuClick_DisablesTheWindowWhileTheListOpens) {
    Store({L"D:\\a.vwl", L"D:\\b.vwl"});
    recent.mnuRecentFileClick(2);
    EXPECT_EQ(host.calls, (Paths{L"Ready(false)", L"FileOpen D:\\b.vwl", L"Ready(true)"}));
    EXPECT_EQ(state.currentListPath, L"D:\\Lists\\work.vwl");
}

TEST_F(RecentFiles, FirstMenuEntry_OpensTheDefaultList) {
    recent.mnuRecentFileClick(0);
    EXPECT_EQ(host.calls, (Paths{L"OpenDefaultList", L"SetCaption " + state.currentListPath}));
}

TEST_F(RecentFiles, FailedOpening_IsReported_WindowStaysBusy) {
    host.openingFails = true;
    recent.mnuRecentFileClick(1);
    const ToldError error = errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kPathNotFound);
    EXPECT_EQ(error.procedure, L"mnuRecentFileClick");
    EXPECT_EQ(error.kind, L"Module");
    EXPECT_EQ(error.container, L"MRecentFiles");
    EXPECT_EQ(host.calls, Paths{L"Ready(false)"});
}

TEST_F(RecentFiles, FailedStore_IsReportedByTheSettings) {
    MRecentFiles::SettingsStore refused(errors, std::wstring(300, L'x'));
    MRecentFiles::RecentFiles refusedRecent(errors, refused, state, host.Actions());
    refusedRecent.RecentFile(1, L"D:\\a.vwl");
    const std::vector<ToldError> told = errors.Take();
    ASSERT_FALSE(told.empty());
    for (const ToldError& error : told) {
        EXPECT_EQ(error.number, error_number::kInvalidCall);
        EXPECT_EQ(error.procedure, L"SaveSetting");
    }
    EXPECT_EQ(host.calls, Paths{L"ShowRecentFiles"});
}

}  // namespace
}  // namespace vw::test
