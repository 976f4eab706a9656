#include "platform/ErrorTrap.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "platform/ErrorReports.h"
#include "platform/ExitStatus.h"
#include "platform/ProgramState.h"
#include "tests/support/FakeMessageBoxes.h"

namespace vw {
namespace {

constexpr Procedure kProcedure{L"BackupAll", L"Class Module", L"CPackage"};

class CollectingSink final : public ErrorSink {
  public:
    void Report(const Procedure& where, const RuntimeError& error) override {
        text = ErrorText(where, error);
        number = error.Number();
        line = error.Line();
        ++count;
    }

    std::wstring text;
    int number = 0;
    std::uint_least32_t line = 1;
    int count = 0;
};

TEST(ErrorTrapTest, ErrorText_NamesNumberLineProcedureMeaningAndPath) {
    const RuntimeError error(76, L"Path not found", L"E:\\Store", 12);
    EXPECT_EQ(ErrorText(kProcedure, error),
              L"Error 76 in line 12\r\nin procedure BackupAll of Class Module CPackage\r\n\r\n"
              L"Path not found\r\nE:\\Store");
}

TEST(ErrorTrapTest, ErrorText_NoMeaningOrPath_HasTwoLines) {
    EXPECT_EQ(ErrorText(kProcedure, RuntimeError(1000, {}, {}, 3)),
              L"Error 1000 in line 3\r\nin procedure BackupAll of Class Module CPackage");
}

TEST(ErrorTrapTest, Error_EndsTheBody_IsReportedOnce) {
    CollectingSink sink;
    bool reachedEnd = false;
    EXPECT_FALSE(ErrorTrap(sink, kProcedure.kind, kProcedure.container)(kProcedure.name, [&] {
        ErrorTrap(sink, kProcedure.kind, kProcedure.container)(kProcedure.name,
                                                               [] { Throw(70, L"C:\\a"); });
        Throw(53, L"C:\\b");
        reachedEnd = true;
    }));
    EXPECT_FALSE(reachedEnd);
    EXPECT_EQ(sink.count, 2);
    EXPECT_EQ(sink.number, 53);
}

TEST(ErrorTrapTest, ReportsTheLineOfTheThrow) {
    CollectingSink sink;
    const int line = __LINE__ + 1;
    ErrorTrap(sink, kProcedure.kind, kProcedure.container)(kProcedure.name, [] { Throw(70); });
    EXPECT_TRUE(sink.text.starts_with(L"Error 70 in line " + std::to_wstring(line))) << line;
}

TEST(ErrorTrapTest, ReportsMemoryShortageAs7AndOtherExceptionsAs5) {
    CollectingSink sink;
    ErrorTrap(sink, kProcedure.kind, kProcedure.container)(kProcedure.name,
                                                           [] { throw std::bad_alloc(); });
    EXPECT_EQ(sink.number, 7);
    EXPECT_EQ(sink.line, 0U) << "no line of the program threw it";
    sink.line = 1;
    ErrorTrap(sink, kProcedure.kind, kProcedure.container)(kProcedure.name,
                                                           [] { throw std::logic_error("x"); });
    EXPECT_EQ(sink.number, 5);
    EXPECT_EQ(sink.line, 0U);
}

TEST(ErrorTrapTest, ExceptionThatIsNoError_IsNotCaught) {
    struct End {};
    CollectingSink sink;
    EXPECT_THROW(ErrorTrap(sink, kProcedure.kind, kProcedure.container)(kProcedure.name,
                                                                        [] { throw End(); }),
                 End);
    EXPECT_EQ(sink.count, 0);
}

TEST(ErrorReportsTest, SetsTheExitCodeToTheFirstError) {
    test::FakeMessageBoxes boxes;
    ExitStatus exitStatus;
    const ProgramState state;
    ErrorReports reports(boxes, exitStatus, state);
    boxes.Expect(L"Error 70 in line 1\r\nin procedure BackupAll of Class Module CPackage");
    boxes.Expect(L"Error 53 in line 2\r\nin procedure BackupAll of Class Module CPackage");
    reports.Report(kProcedure, RuntimeError(70, {}, {}, 1));
    reports.Report(kProcedure, RuntimeError(53, {}, {}, 2));
    EXPECT_EQ(exitStatus.Code(), 70);
}

TEST(ErrorReportsTest, Limit_LaterErrors_GetNoBoxButCount) {
    test::FakeMessageBoxes boxes;
    ExitStatus exitStatus;
    const ProgramState state;
    ErrorReports reports(boxes, exitStatus, state);
    int noted = 0;
    reports.SetNote([&](std::wstring_view) { ++noted; });
    for (int i = 0; i < 3; ++i) boxes.Expect(L"Error 70");
    BoxLimit limit(reports, 3);
    for (int i = 0; i < 25; ++i) reports.Report(kProcedure, RuntimeError(70, {}, {}, 1));
    EXPECT_EQ(limit.End(), 25);
    EXPECT_EQ(noted, 25);
    boxes.Expect(L"Error 53");
    reports.Report(kProcedure, RuntimeError(53, {}, {}, 1));
}

TEST(ErrorReportsTest, Limit_WithinAnother_HasNoEffect) {
    test::FakeMessageBoxes boxes;
    ExitStatus exitStatus;
    const ProgramState state;
    ErrorReports reports(boxes, exitStatus, state);
    BoxLimit outer(reports, 2);
    boxes.Expect(L"Error 70");
    boxes.Expect(L"Error 70");
    {
        BoxLimit inner(reports, 0);
        for (int i = 0; i < 3; ++i) reports.Report(kProcedure, RuntimeError(70, {}, {}, 1));
        EXPECT_EQ(inner.End(), 0) << "the outer one reports them";
    }
    EXPECT_EQ(outer.End(), 3);
}

TEST(ErrorReportsTest, NextLimit_CountsAnew) {
    test::FakeMessageBoxes boxes;
    ExitStatus exitStatus;
    const ProgramState state;
    ErrorReports reports(boxes, exitStatus, state);
    for (int i = 0; i < 2; ++i) {
        boxes.Expect(L"Error 70");
        BoxLimit limit(reports, 1);
        for (int j = 0; j < 3; ++j) reports.Report(kProcedure, RuntimeError(70, {}, {}, 1));
        EXPECT_EQ(limit.End(), 3);
    }
}

// The boxes of a silent run close themselves, and each text goes to standard error.
TEST(ErrorReportsTest, Limit_SilentRun_HidesNoError) {
    test::FakeMessageBoxes boxes;
    ExitStatus exitStatus;
    ProgramState state;
    state.silentRun = true;
    ErrorReports reports(boxes, exitStatus, state);
    const BoxLimit limit(reports, 1);
    for (int i = 0; i < 3; ++i) {
        boxes.Expect(L"Error 70");
        reports.Report(kProcedure, RuntimeError(70, {}, {}, 1));
    }
}

}  // namespace
}  // namespace vw
