// The cleaning of all temporary folders: which ones, in which order, and what stops it.

#include <gmock/gmock.h>

#include "fsutil/Scripting.h"
#include "fsutil/TempCleaning.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "tests/fsutil/FakeScriptShell.h"
#include "tests/support/DiskTest.h"

namespace vw::test {
namespace {

/// The real disk, but the folder of Windows and the temporary folder are folders of the test: those
/// of the machine must not be cleaned.
class OwnWindows final : public ForwardingFileSystem {
  public:
    OwnWindows(FileSystem& inner, std::wstring windows, std::wstring temporary)
        : ForwardingFileSystem(inner),
          windows_(std::move(windows)),
          temporary_(std::move(temporary)) {
        wchar_t path[MAX_PATH + 1]{};
        GetWindowsDirectoryW(path, MAX_PATH);
        real_ = path;
    }

    std::optional<FileInfo> Stat(std::wstring_view path) override {
        return ForwardingFileSystem::Stat(Own(path));
    }
    void List(std::wstring_view folder, const EntryVisitor& visitor) override {
        ForwardingFileSystem::List(Own(folder), visitor);
    }
    void RemoveFile(std::wstring_view path) override {
        ForwardingFileSystem::RemoveFile(Own(path));
    }
    void RemoveFolder(std::wstring_view path) override {
        ForwardingFileSystem::RemoveFolder(Own(path));
    }
    std::wstring TempFolder() override { return temporary_; }

  private:
    [[nodiscard]] std::wstring Own(std::wstring_view path) const {
        if (!EqualNoCase(path.substr(0, real_.size()), real_)) return std::wstring(path);
        return windows_ + std::wstring(path.substr(real_.size()));
    }

    std::wstring real_;
    std::wstring windows_;
    std::wstring temporary_;
};

class CallbackHost final : public ProgressReporter {
  public:
    void Report(std::wstring_view, bool) override {}
    void Msg(std::wstring_view, std::wstring_view) override {
        if (onMsg) onMsg();
    }
    void BusyHide(bool pause) override { hides.push_back(pause); }

    std::function<void()> onMsg;
    std::vector<bool> hides;
};

class TempFolders : public DiskTest {
  protected:
    TempFolders() {
        for (const auto* folder : {L"Temporary", L"Windows\\Temp", L"Windows\\prefetch"}) {
            tree.Folder(folder);
        }
    }

    void Clean() {
        System system = world.With(disk);
        MMyScripting::ScriptShell shell;
        MFileDosShell::DellTemp(system, state, shell, true, host);
    }
    [[nodiscard]] bool IsThere(std::wstring_view relative) const {
        return Exists(tree.Path(relative));
    }

    OwnWindows disk{world.files, tree.Path(L"Windows"), tree.Path(L"Temporary")};
    ProgramState state;
    CallbackHost host;
};

TEST_F(TempFolders, Clean_AllFolders_AreEmptiedAndStay) {
    for (const auto* folder : {L"Temporary\\", L"Windows\\Temp\\", L"Windows\\prefetch\\"}) {
        tree.File(folder + std::wstring(L"a.dat"));
        tree.File(folder + std::wstring(L"Sub\\b.dat"));
    }
    tree.File(L"Windows\\keep.dat");
    Clean();
    for (const auto* folder : {L"Temporary", L"Windows\\Temp", L"Windows\\prefetch"}) {
        EXPECT_TRUE(ReadTree(tree.Path(folder)).empty()) << folder;
        EXPECT_TRUE(IsThere(folder));
    }
    EXPECT_TRUE(IsThere(L"Windows\\keep.dat"));
}

TEST_F(TempFolders, Clean_EarlierRunWasCancelled_CleansAll) {
    tree.File(L"Temporary\\a.dat");
    tree.File(L"Windows\\left.TMP");
    state.cancel.Request();
    Clean();
    EXPECT_FALSE(IsThere(L"Temporary\\a.dat"));
    EXPECT_FALSE(IsThere(L"Windows\\left.TMP"));
}

TEST_F(TempFolders, Clean_CancelledInTheFirstFolder_LeavesTheOthers) {
    tree.File(L"Temporary\\a.dat");
    tree.File(L"Windows\\Temp\\b.dat");
    tree.File(L"Windows\\prefetch\\c.dat");
    tree.File(L"Windows\\left.TMP");
    host.onMsg = [this] { state.cancel.Request(); };
    Clean();
    EXPECT_FALSE(IsThere(L"Temporary\\a.dat"));
    EXPECT_TRUE(IsThere(L"Windows\\Temp\\b.dat"));
    EXPECT_TRUE(IsThere(L"Windows\\prefetch\\c.dat"));
    EXPECT_TRUE(IsThere(L"Windows\\left.TMP"));
}

TEST_F(TempFolders, Clean_CancelledBetweenFolders_DoesNotListTheNext) {
    tree.File(L"Temporary\\a.dat");
    host.onMsg = [this] { state.cancel.Request(); };
    Clean();
    for (const FileOperation& operation : world.files.Operations()) {
        EXPECT_FALSE(operation.call == FileCall::List && operation.path.ends_with(L"Windows\\Temp"))
            << Describe(operation);
    }
}

TEST_F(TempFolders, Clean_TmpFileOfWindowsReadOnly_IsDeleted) {
    tree.File(L"Windows\\left.tmp");
    tree.SetAttributes(L"Windows\\left.tmp", FILE_ATTRIBUTE_READONLY);
    Clean();
    EXPECT_FALSE(IsThere(L"Windows\\left.tmp"));
}

TEST_F(TempFolders, Clean_TmpFileOfWindowsInUse_IsSkipped) {
    for (const auto* name : {L"Windows\\a.tmp", L"Windows\\b.tmp", L"Windows\\c.tmp"}) {
        tree.File(name);
    }
    {
        const FileHandle held = OpenAlone(tree.Path(L"Windows\\b.tmp"));
        Clean();
    }
    EXPECT_FALSE(IsThere(L"Windows\\a.tmp"));
    EXPECT_TRUE(IsThere(L"Windows\\b.tmp"));
    EXPECT_FALSE(IsThere(L"Windows\\c.tmp"));
}

TEST_F(TempFolders, Clean_TmpFilesOfWindows_YieldsAfterEach) {
    tree.File(L"Windows\\a.tmp");
    tree.File(L"Windows\\b.tmp");
    Clean();
    EXPECT_EQ(world.pump.Yields(), 2);
}

TEST_F(TempFolders, Clean_CancelledAtATmpFile_LeavesTheRest) {
    tree.File(L"Windows\\a.tmp");
    tree.File(L"Windows\\b.tmp");
    world.pump.AtEachYield([this] { state.cancel.Request(); });
    Clean();
    EXPECT_NE(IsThere(L"Windows\\a.tmp"), IsThere(L"Windows\\b.tmp"));
}

TEST_F(TempFolders, Clean_HidesTheDialogAfterAPause) {
    Clean();
    EXPECT_EQ(host.hides, std::vector<bool>{true});
}

TEST_F(TempFolders, Clean_KeepsVbFilesOfTheFolders) {
    tree.File(L"Temporary\\VB1.tmp");
    tree.File(L"Temporary\\a.tmp");
    Clean();
    EXPECT_TRUE(IsThere(L"Temporary\\VB1.tmp"));
    EXPECT_FALSE(IsThere(L"Temporary\\a.tmp"));
}

TEST_F(TempFolders, Clean_FolderMissing_IsReportedAndTheOthersAreCleaned) {
    tree.File(L"Windows\\prefetch\\a.dat");
    RemoveDirectoryW(tree.Path(L"Windows\\Temp").c_str());
    Clean();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kPathNotFound);
    EXPECT_EQ(error.procedure, L"DellTemp");
    EXPECT_FALSE(IsThere(L"Windows\\prefetch\\a.dat"));
}

TEST_F(TempFolders, Clean_TemporaryFolderHoldsTheUsersOwn_IsRefused) {
    for (std::wstring* own : {&state.applicationFolder, &state.currentListPath}) {
        *own = tree.File(L"Temporary\\Own\\a.dat");
        Clean();
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
        EXPECT_TRUE(IsThere(L"Temporary\\Own\\a.dat"));
        own->clear();
    }
}

TEST_F(TempFolders, Clean_TemporaryFolderHoldsTheDocuments_IsRefused) {
    tree.File(L"Temporary\\Documents\\a.dat");
    const FakeScriptShell fake([this](int number) {
        return number == 16 ? tree.Path(L"Temporary\\Documents") : L"X:\\other";
    });
    Clean();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_TRUE(IsThere(L"Temporary\\Documents\\a.dat"));
}

class DelInFolder : public TempFolders {
  protected:
    void Empty(bool skip = true) {
        MFileDosShell::DelInFolder(world.system, state, tree.Path(L"Temporary"), L"yes", skip,
                                   host);
    }
};

TEST_F(DelInFolder, Files_YieldsAfterEach) {
    for (const auto* name : {L"Temporary\\a", L"Temporary\\b", L"Temporary\\c"}) tree.File(name);
    Empty();
    EXPECT_EQ(world.pump.Yields(), 3);
}

TEST_F(DelInFolder, SubFolderDeletedWhole_YieldsAfterEachEntryAndIt) {
    tree.File(L"Temporary\\Sub\\a");
    tree.File(L"Temporary\\Sub\\b");
    Empty();
    EXPECT_EQ(world.pump.Yields(), 4);
}

TEST_F(DelInFolder, SubFolderThatStays_YieldsAfterIt) {
    tree.Folder(L"Temporary\\Sub");
    world.files.FailFrom(1, error_number::kPermissionDenied, OnlyCalls({FileCall::RemoveFolder}));
    Empty();
    EXPECT_EQ(world.pump.Yields(), 1);
}

TEST_F(DelInFolder, SubFolderDeletedInParts_KeepsItsVbFiles) {
    tree.File(L"Temporary\\Sub\\VB1.tmp");
    tree.File(L"Temporary\\Sub\\a.tmp");
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::RemoveFile}));
    Empty();
    EXPECT_TRUE(IsThere(L"Temporary\\Sub\\VB1.tmp"));
    EXPECT_FALSE(IsThere(L"Temporary\\Sub\\a.tmp"));
}

TEST_F(DelInFolder, SubFolderDeletedInPartsWithoutSkip_DeletesItsVbFiles) {
    tree.File(L"Temporary\\Sub\\VB1.tmp");
    tree.File(L"Temporary\\Sub\\a.tmp");
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::RemoveFile}));
    Empty(false);
    EXPECT_FALSE(IsThere(L"Temporary\\Sub\\VB1.tmp"));
}

TEST_F(DelInFolder, CancelledAfterASubFolder_LeavesTheOthers) {
    tree.File(L"Temporary\\A\\x");
    tree.File(L"Temporary\\B\\x");
    world.pump.AtEachYield([this] { state.cancel.Request(); });
    Empty();
    EXPECT_NE(IsThere(L"Temporary\\A"), IsThere(L"Temporary\\B"));
}

TEST_F(DelInFolder, SubFolderThatStaysCannotBeAsked_EndsTheFolder) {
    tree.File(L"Temporary\\A\\x");
    tree.File(L"Temporary\\B\\x");
    world.files.FailFrom(1, error_number::kPermissionDenied, [](const FileOperation& operation) {
        return operation.call == FileCall::RemoveFile ||
               (operation.call == FileCall::Stat &&
                (operation.path.ends_with(L"\\A") || operation.path.ends_with(L"\\B")));
    });
    Empty();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
}

TEST_F(DelInFolder, LinkThatStays_IsNotEntered) {
    const std::wstring canary = tree.File(L"Safe\\canary.txt", "alive");
    if (!tree.Link(L"Temporary\\Link", tree.Path(L"Safe"))) GTEST_SKIP();
    world.files.FailFrom(1, error_number::kPermissionDenied, [](const FileOperation& operation) {
        return operation.path.ends_with(L"\\Link") && operation.call != FileCall::Stat;
    });
    Empty();
    EXPECT_EQ(ReadBytes(canary), "alive");
}

TEST_F(DelInFolder, SubFolderVanishesDuringDeletion_IsSkipped) {
    const std::wstring sub = tree.Folder(L"Temporary\\Sub");
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::RemoveFolder}));
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Stat && operation.path == sub)
            RemoveDirectoryW(sub.c_str());
    });
    Empty();
    EXPECT_FALSE(Exists(sub));
}

TEST_F(DelInFolder, SubFolderStaysInParts_OthersAreDeleted) {
    for (const auto* name : {L"A\\x", L"B\\x", L"C\\x", L"B\\D\\x", L"B\\E\\x"}) {
        tree.File(L"Temporary\\" + std::wstring(name));
    }
    const std::wstring kept = tree.File(L"Temporary\\B\\D\\kept");
    world.files.FailFrom(1, error_number::kPermissionDenied,
                         [&](const FileOperation& operation) { return operation.path == kept; });
    Empty();
    EXPECT_EQ(ReadTree(tree.Path(L"Temporary")).size(), 3U) << "a file and the folders around it";
}

}  // namespace
}  // namespace vw::test
