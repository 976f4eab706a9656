// Commands on copies that wait for a run of another process.

#include <gmock/gmock.h>

#include <optional>

#include "tests/restore/RestoreFixture.h"
#include "tests/support/OtherRun.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Waiting : public Restore {
  protected:
    Waiting() {
        report.clear();
        world.pump.AtEachYield([this] {
            if (other && !report.empty() && ++yieldsOfWaiting == 3) other->End();
        });
    }

    std::optional<OtherRun> other{vault};
    int yieldsOfWaiting = 0;
};

TEST_F(Waiting, DeleteCopy_HidesTheDialogAtItsEnd) {
    SelectCopy(L"N02");
    world.boxes.Expect(L"[N02]", BoxAnswer::Yes);
    commands.mnuDelCopyClick();
    EXPECT_THAT(report, ElementsAre(HasSubstr(L"Waiting")));
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N03"));
    EXPECT_THAT(calls, ElementsAre(L"BusyHide false"));
}

TEST_F(Waiting, DeleteAllCopies_HidesTheDialogAtItsEnd) {
    world.boxes.Expect(L"Report", BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_THAT(report, ElementsAre(HasSubstr(L"Waiting")));
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_THAT(calls, ElementsAre(L"BusyHide false"));
}

// Who closes the dialog that waits means all of them.
TEST_F(Waiting, Cancelled_KeepsEveryCopy) {
    world.pump.AtEachYield([this] {
        if (!report.empty()) state.cancel.Request();
    });
    const Tree before = ReadTree(vault);
    world.boxes.Expect(L"Report", BoxAnswer::Yes);
    commands.mnuDelCopiesClick();
    EXPECT_EQ(ReadTree(vault), before);
    EXPECT_THAT(report, ElementsAre(HasSubstr(L"Waiting"))) << "once";
    EXPECT_THAT(Labels(), ElementsAre(L"N01", L"N02", L"N03"));
}

}  // namespace
}  // namespace vw::test
