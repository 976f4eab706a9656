#include "progress/SilentReport.h"

#include <gmock/gmock.h>

#include "platform/StandardStreams.h"
#include "tests/support/CapturedStreams.h"

namespace vw::test {
namespace {

using testing::ElementsAre;

TEST(SilentReportTest, MessagesAndLines_AreOnStandardOutput) {
    const CapturedStreams captured;
    StandardStreams streams;
    SilentReport report(streams);
    report.Msg(L"Backing:", L"C:\\a.txt");
    report.Report(L"a line", true);
    report.BusyHide(true);
    EXPECT_THAT(captured.Output(), ElementsAre(L"Backing:: C:\\a.txt - ", L"a line"));
    EXPECT_THAT(captured.Errors(), testing::IsEmpty());
}

}  // namespace
}  // namespace vw::test
