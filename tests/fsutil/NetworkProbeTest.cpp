#include "fsutil/NetworkProbe.h"

#include <gmock/gmock.h>

#include "platform/RuntimeError.h"
#include "tests/support/DeadServer.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

using testing::IsEmpty;

class NetworkProbeTest : public testing::Test {
  protected:
    TestEnvironment world;
    DeadServer server{world.disk};
    System system = world.With(server);
    NetworkProbe probe{system};
};

TEST_F(NetworkProbeTest, Ask_ServerIsGone_ReturnsAndProcessesMessagesMeanwhile) {
    probe.Ask({L"Q:\\Docs\\a.txt", L"C:\\windows"});
    EXPECT_FALSE(probe.MayAnswer(L"q:\\Other\\b.txt"));
    EXPECT_TRUE(probe.MayAnswer(L"C:\\windows\\b.txt"));
    EXPECT_THAT(server.askedByWindow, IsEmpty());
    EXPECT_GT(world.pump.Yields(), 1);
    EXPECT_NO_THROW(probe.Require(L"C:\\windows"));
    const RuntimeError error = ErrorOf([&] { probe.Require(L"Q:\\Docs\\a.txt"); });
    EXPECT_EQ(error.Number(), error_number::kAccessError);
    EXPECT_EQ(error.Path(), L"Q:\\Docs\\a.txt");
}

TEST_F(NetworkProbeTest, ServerIsBack_MayAnswer) {
    probe.Ask({L"Q:\\"});
    EXPECT_FALSE(probe.MayAnswer(L"Q:\\"));
    server.Answer();
    while (!probe.MayAnswer(L"Q:\\")) Sleep(1);
    EXPECT_NO_THROW(probe.Require(L"Q:\\"));
}

TEST_F(NetworkProbeTest, PathsOfOneShare_AreOneQuestion) {
    probe.Ask(
        {L"\\\\NAS\\share\\a", L"\\\\NAS\\share\\b\\", L"\\\\NAS\\SHARE\\c", L"\\\\NAS\\x\\d"});
    EXPECT_EQ(server.questions, 2);
    EXPECT_FALSE(probe.MayAnswer(L"\\\\nas\\Share\\new"));
}

TEST_F(NetworkProbeTest, NothingAsked_EverythingMayAnswer) {
    EXPECT_TRUE(probe.MayAnswer(L"Q:\\a"));
    probe.Ask({L"", L"relative.txt", L"C:\\a", L"\\\\"});
    EXPECT_TRUE(probe.MayAnswer(L"relative.txt"));
    EXPECT_EQ(server.questions, 0);
    probe.Ask({L"Q:\\"});
    probe.Ask({L"C:\\"});
    EXPECT_TRUE(probe.MayAnswer(L"Q:\\a")) << "the earlier question is forgotten";
}

TEST_F(NetworkProbeTest, KindOfDriveIsUnknown_AsksNothing) {
    world.files.FailFrom(1, error_number::kNotReady, OnlyCalls({FileCall::DriveTypeOf}));
    NetworkProbe own(world.system);
    own.Ask({L"C:\\a"});
    EXPECT_TRUE(own.MayAnswer(L"C:\\a"));
    EXPECT_EQ(world.files.Operations().size(), 1U) << "the drive was asked for its kind alone";
}

TEST_F(NetworkProbeTest, DriveWithoutAPath_IsTheDrive) {
    probe.Ask({L"Q:"});
    const int yields = world.pump.Yields();
    EXPECT_FALSE(probe.MayAnswer(L"Q:"));
    // The server answers after a minute, which a wait at each question would reach.
    for (int i = 0; i < 1000; ++i) ASSERT_FALSE(probe.MayAnswer(L"Q:\\x")) << "only Ask waits";
    EXPECT_EQ(world.pump.Yields(), yields);
}

}  // namespace
}  // namespace vw::test
