// Long work: what it reports where, and what keeps going meanwhile.

#include <gmock/gmock.h>

#include "app/KeepAwake.h"
#include "tests/app/ApplicationFixture.h"
#include "tests/support/CapturedStreams.h"
#include "tests/support/ImportHook.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class WorkTest : public App {
  protected:
    /// Backs the list up and does this once meanwhile, when the dialog is open.
    void InARun(const std::function<void()>& act) {
        bool isDone = false;
        world.pump.AtEachYield([this, &act, &isDone] {
            if (isDone || !Busy().IsVisible()) return;
            isDone = true;
            act();
        });
        Choose(ID_mnuBackup);
        world.pump.AtEachYield({});
        EXPECT_TRUE(isDone);
    }
    /// Does this while a file of an item is copied.
    void WhileCopying(std::function<void()> act) {
        world.files.OnOperation([act = std::move(act)](const FileOperation& operation) {
            if (operation.call == FileCall::Copy) act();
        });
    }
    [[nodiscard]] Form& Busy() { return Windows().frmBusyDialog.Window(); }
    [[nodiscard]] std::wstring Status() { return Main().Text(L"sbrStatus"); }
    /// The report of the last run.
    [[nodiscard]] std::wstring LastReport() {
        Windows().frmBusyDialog.ShowLastReport();
        std::wstring text = Busy().Text(L"txtReport");
        Busy().Unload();
        return text;
    }
    Work& LongWork() { return application.LongWork(); }

    CapturedStreams streams;
};

TEST_F(WorkTest, ErrorDuringARun_IsInTheReportAndCounted) {
    WriteDefaultList({letter});
    Start();
    WhileCopying([this] { LongWork().NoteError(L"the disk is dusty"); });
    Choose(ID_mnuBackup);
    EXPECT_THAT(Status(), HasSubstr(L"1 failed"));
    EXPECT_THAT(LastReport(), HasSubstr(L"\r\nthe disk is dusty\r\n"));
}

TEST_F(WorkTest, ErrorOutsideOfARun_IsInNoReport) {
    WriteDefaultList({letter});
    Start();
    Choose(ID_mnuBackup);
    LongWork().NoteError(L"the disk is dusty");
    EXPECT_FALSE(Busy().IsVisible());
    EXPECT_THAT(LastReport(), Not(HasSubstr(L"the disk is dusty")));
}

TEST_F(WorkTest, ErrorWithoutDetails_AddsNoLine) {
    WriteDefaultList({letter});
    Start();
    WhileCopying([this] { LongWork().NoteError({}); });
    Choose(ID_mnuBackup);
    EXPECT_THAT(Status(), HasSubstr(L"1 failed"));
    EXPECT_THAT(LastReport(), Not(HasSubstr(L"\r\n\r\n")));
}

decltype(ShowWindow)* showWindow = nullptr;
std::function<void()> whileShowing;

BOOL WINAPI ShowAndAct(HWND window, int how) {
    if (const auto act = std::exchange(whileShowing, {})) act();
    return showWindow(window, how);
}

TEST_F(WorkTest, ErrorOfTheReport_IsInNoReport) {
    WriteDefaultList({letter});
    Start();
    InARun([this] {
        Busy().Hide();
        whileShowing = [this] { LongWork().NoteError(L"the window is gone"); };
        const ImportHook show("ShowWindow", &ShowAndAct);
        showWindow = show.Original<decltype(ShowWindow)>();
        LongWork().NoteError(L"the disk is dusty");
        EXPECT_FALSE(whileShowing);
    });
    const std::wstring report = LastReport();
    EXPECT_THAT(report, HasSubstr(L"the disk is dusty"));
    EXPECT_THAT(report, Not(HasSubstr(L"the window is gone")));
}

TEST_F(WorkTest, ManyErrorsWithoutADialog_TheirNumberIsShown) {
    WriteDefaultList({});
    Start();
    world.boxes.Expect(L"There were 5 errors");
    LongWork().Run([this] {
        const ErrorTrap trap(world.errors, L"Module", L"MTest");
        for (int i = 0; i < 5; ++i) trap(L"Test", [] { Throw(error_number::kPermissionDenied); });
    });
    EXPECT_THAT(world.errors.Take(), SizeIs(3));
}

TEST_F(WorkTest, ErrorOfASilentRun_OpensNoDialog) {
    WriteDefaultList({letter});
    bool isLoaded = true;
    WhileCopying([&] {
        LongWork().NoteError(L"the disk is dusty");
        isLoaded = Busy().IsLoaded();
    });
    EXPECT_THROW(Start(L"/B"), ProgramEnded);
    EXPECT_FALSE(isLoaded);
}

TEST_F(WorkTest, Failure_IsInTheReportAndNotOnTheStreams) {
    WriteDefaultList({letter});
    Start();
    InARun([this] { LongWork().Failure(L"the drive is slow"); });
    EXPECT_THAT(LastReport(), HasSubstr(L"the drive is slow"));
    EXPECT_THAT(streams.Errors(), IsEmpty());
}

TEST_F(WorkTest, FailureOfASilentRun_IsOnBothStreams) {
    WriteDefaultList({letter});
    world.pump.AtYield(3, [this] { LongWork().Failure(L"the drive is slow"); });
    EXPECT_THROW(Start(L"/B"), ProgramEnded);
    EXPECT_THAT(streams.Errors(), ElementsAre(L"the drive is slow"));
    EXPECT_THAT(streams.Output(), testing::Contains(L"the drive is slow"));
}

TEST_F(WorkTest, DuringCopy_MessagesAreProcessedEveryFiftyMilliseconds) {
    WriteDefaultList({letter});
    Start();
    const auto yields = [this](unsigned later) {
        world.clock.Advance(later);
        world.pump.Restart();
        LongWork().DuringCopy();
        return world.pump.Yields();
    };
    EXPECT_EQ(yields(50), 1);
    EXPECT_EQ(yields(49), 0);
    EXPECT_EQ(yields(1), 1);
}

TEST_F(WorkTest, DuringCopy_DialogIsPainted) {
    WriteDefaultList({letter});
    Start();
    InARun([this] {
        InvalidateRect(Busy().Handle(), nullptr, TRUE);
        world.clock.Advance(50);
        LongWork().DuringCopy();
        EXPECT_FALSE(GetUpdateRect(Busy().Handle(), nullptr, FALSE));
    });
}

TEST_F(WorkTest, IsShown_OnlyWhileTheDialogIsOpen) {
    WriteDefaultList({letter});
    Start();
    EXPECT_FALSE(LongWork().IsShown());
    InARun([this] { EXPECT_TRUE(LongWork().IsShown()); });
    EXPECT_FALSE(LongWork().IsShown());
}

TEST_F(WorkTest, State_SaysThatWorkIsGoingOn) {
    WriteDefaultList({letter});
    Start();
    EXPECT_FALSE(state.isWorking);
    InARun([this] { EXPECT_TRUE(state.isWorking); });
    EXPECT_FALSE(state.isWorking);
}

// A run shows few boxes. What goes wrong later has one of its own again.
TEST_F(WorkTest, RunThatCannotBegin_LaterErrorsHaveTheirBoxes) {
    WriteDefaultList({letter});
    Start();
    world.files.FailFrom(1, error_number::kPermissionDenied, OnlyCalls({FileCall::Read}));
    Choose(ID_mnuBackup);
    EXPECT_THAT(world.errors.Take(), SizeIs(1));
    for (int i = 0; i < 5; ++i) Windows().list.GetList();
    EXPECT_THAT(world.errors.Take(), SizeIs(5));
    world.files.Heal();
}

TEST_F(WorkTest, ReportThatIsKept_IsWaitedForOnce) {
    WriteDefaultList({letter});
    Start();
    const auto before = world.pump.Waited();
    InARun([this] { Busy().Check(L"chkDontHide", true); });
    EXPECT_EQ(world.pump.Waited() - before, 2000U);
    Busy().Unload();
}

TEST_F(WorkTest, ItemChangedMeanwhile_ItsRowIsWarnedOfAfterTheRun) {
    WriteDefaultList({letter});
    Start();
    ASSERT_THAT(Windows().list.Rows().Warnings(), IsEmpty());
    tree.File(L"Home\\Letter.txt", "Dear Madam", {2150, 1, 1, 12, 0, 0});
    Choose(ID_mnuBackup);
    EXPECT_THAT(Windows().list.Rows().Warnings(), SizeIs(2));
}

/// What the system is asked for to keep the computer awake.
struct PowerRequest {
    bool isMade = false;
    ULONG flags = 0;
    std::wstring reason;
    std::vector<std::pair<HANDLE, POWER_REQUEST_TYPE>> set;
};

PowerRequest power;

HANDLE WINAPI MakeRequest(PREASON_CONTEXT context) {
    power.isMade = true;
    power.flags = context->Flags;
    if (context->Reason.SimpleReasonString != nullptr) {
        power.reason = context->Reason.SimpleReasonString;
    }
    return CreateEventW(nullptr, TRUE, FALSE, nullptr);
}

HANDLE WINAPI RefuseRequest(PREASON_CONTEXT) { return INVALID_HANDLE_VALUE; }

BOOL WINAPI NoteRequest(HANDLE request, POWER_REQUEST_TYPE type) {
    power.set.emplace_back(request, type);
    return TRUE;
}

TEST(KeepAwakeTest, Notebook_RequestsExecutionAndSaysWhy) {
    const ImportHook make("PowerCreateRequest", &MakeRequest);
    const ImportHook note("PowerSetRequest", &NoteRequest);
    power = {};
    const KeepAwake awake;
    EXPECT_TRUE(power.isMade);
    EXPECT_EQ(power.flags, static_cast<ULONG>(POWER_REQUEST_CONTEXT_SIMPLE_STRING));
    EXPECT_THAT(power.reason, HasSubstr(L"backed up"));
    ASSERT_THAT(power.set, SizeIs(1));
    EXPECT_EQ(power.set.front().second, PowerRequestExecutionRequired);
}

TEST(KeepAwakeTest, RequestIsRefused_IsNotSet) {
    const ImportHook make("PowerCreateRequest", &RefuseRequest);
    const ImportHook note("PowerSetRequest", &NoteRequest);
    power = {};
    const KeepAwake awake;
    EXPECT_THAT(power.set, IsEmpty());
}

}  // namespace
}  // namespace vw::test
