// What a silent run writes to standard output and standard error.

#include <gmock/gmock.h>

#include "engine/RunTexts.h"
#include "list/editing/RowWarnings.h"
#include "tests/app/ApplicationFixture.h"
#include "tests/support/CapturedStreams.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SilentOutput : public App {
  protected:
    void BackUp() {
        EXPECT_THROW(Start(L"/B"), ProgramEnded);
        report.Flush();  // which is the work of the end of the process
    }
    /// Ends the program as soon as the letter has its copy.
    void EndBehindTheFirstCopy() {
        world.pump.AtEachYield([this] {
            if (Exists(drive.Backup() + L"\\Letter«0001».txt")) application.frmUnload();
        });
    }
    static std::wstring Warning(RowWarning warning) {
        return std::wstring(WarningText(warning, Language::English));
    }

    CapturedStreams streams;
};

TEST_F(SilentOutput, ItemWithAWarning_ReportBeginsWithIt) {
    const std::wstring item = tree.File(L"O'Brien\\a.txt");
    WriteDefaultList({letter, item});
    BackUp();
    const auto lines = streams.Output();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0], Warning(RowWarning::ApostropheFolder));
    EXPECT_EQ(lines[1], item);
    EXPECT_THAT(lines, Not(Contains(Warning(RowWarning::FutureDate))));
}

TEST_F(SilentOutput, LineWithComma_WarnsWhenItIsAFile) {
    const std::wstring file = tree.File(L"one, two.txt");
    WriteDefaultList({file});
    BackUp();
    EXPECT_THAT(streams.Output(), Contains(Warning(RowWarning::ReadAsTwo)));
}

TEST_F(SilentOutput, LineOfTwoItems_NoWarning) {
    WriteDefaultList({letter + L"," + tree.File(L"Home\\Other.txt")});
    BackUp();
    EXPECT_THAT(streams.Output(), Not(Contains(Warning(RowWarning::ReadAsTwo))));
}

TEST_F(SilentOutput, MissingAndRefusedItems_AreErrors) {
    const std::wstring gone = tree.Path(L"Gone.txt");
    const std::wstring refused = tree.File(drive.Backup() + L"\\Letter.txt");
    WriteDefaultList({letter, gone, refused});
    BackUp();
    EXPECT_THAT(streams.Errors(),
                ElementsAre(RunLine(run_text::kMissing, Language::English, gone),
                            RunLine(run_text::kRefused, Language::English, refused)));
}

TEST_F(SilentOutput, WindowRun_WritesNothing) {
    WriteDefaultList({letter, drive.Backup() + L"\\Letter.txt"});
    tree.File(drive.Backup() + L"\\Letter.txt");
    Start();
    Choose(ID_mnuBackup);
    EXPECT_THROW(Close(), ProgramEnded);
    EXPECT_THAT(streams.Errors(), IsEmpty());
    EXPECT_THAT(streams.Output(), IsEmpty());
}

TEST_F(SilentOutput, EndedDuringTheRun_SaysThatItWasCancelled) {
    WriteDefaultList({letter, tree.Path(L"Home\\")});
    EndBehindTheFirstCopy();
    BackUp();
    EXPECT_THAT(streams.Errors(), ElementsAre(L"The run was cancelled"));
    EXPECT_THAT(streams.Output().back(), HasSubstr(L", 1 cancelled"));
    EXPECT_TRUE(state.cancel.IsRequested());
}

TEST_F(SilentOutput, EndedBeforeTheFirstItem_NothingWasCancelled) {
    WriteDefaultList({letter});
    int reads = 0;
    world.files.OnOperation([&](const FileOperation& operation) {
        const bool isList = operation.path == state.currentListPath;
        if (operation.call == FileCall::Read && isList && ++reads == 2) application.frmUnload();
    });
    BackUp();
    EXPECT_EQ(reads, 2);
    EXPECT_THAT(streams.Output().back(), EndsWith(L": 0 copied, 0 unchanged, 0 failed"));
}

TEST_F(SilentOutput, EndedBeforeTheOnlyItem_CountsAsCancelled) {
    world.files.OnOperation([&](const FileOperation&) {
        if (state.isWorking) application.frmUnload();
    });
    EXPECT_THROW(Start(L"/B " + letter), ProgramEnded);
    report.Flush();
    EXPECT_THAT(streams.Output().back(), EndsWith(L", 1 cancelled"));
}

TEST_F(SilentOutput, EndedDuringTheRun_Arabic_SaysSoInArabic) {
    settings.SaveSetting(setting::kArabic, L"1");
    WriteDefaultList({letter, tree.Path(L"Home\\")});
    EndBehindTheFirstCopy();
    BackUp();
    EXPECT_THAT(streams.Errors(), ElementsAre(L"أُلغيت العملية"));
}

TEST_F(SilentOutput, WindowClosedDuringTheRun_WritesNothing) {
    WriteDefaultList({letter, tree.Path(L"Home\\")});
    Start();
    EndBehindTheFirstCopy();
    EXPECT_THROW(Choose(ID_mnuBackup), ProgramEnded);
    EXPECT_THAT(streams.Errors(), IsEmpty());
}

TEST_F(SilentOutput, ListCannotBeRead_ReportEndsWithTheCounts) {
    WriteDefaultList({letter});
    world.files.FailFrom(
        1, error_number::kPermissionDenied, [this](const FileOperation& operation) {
            return operation.call == FileCall::Read && operation.path == state.currentListPath;
        });
    BackUp();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_THAT(streams.Output().back(), EndsWith(L": 0 copied, 0 unchanged, 0 failed"));
}

TEST_F(SilentOutput, DestinationIsGoneBehindTheIcon_NothingWasCancelled) {
    tree.File(state.DefaultListPath(), world.ansi.Encode(L"BackupTo: " + tree.Path(L"No vault") +
                                                         L"\r\n" + letter + L"\r\n"));
    world.boxes.AnswerAll(BoxAnswer::Ok);
    world.pump.AtYield(3, [this] { application.OnSilentBox(); });
    BackUp();
    static_cast<void>(world.errors.Take());
    EXPECT_THAT(streams.Errors(), testing::IsEmpty());
    EXPECT_THAT(streams.Output().back(), EndsWith(L" failed"));
    EXPECT_EQ(world.exitStatus.Code(), error_number::kPathNotFound);
}

TEST_F(SilentOutput, DestinationIsGone_ReportEndsWithTheCounts) {
    tree.File(state.DefaultListPath(), world.ansi.Encode(L"BackupTo: " + tree.Path(L"No vault") +
                                                         L"\r\n" + letter + L"\r\n"));
    world.boxes.AnswerAll(BoxAnswer::Ok);
    BackUp();
    static_cast<void>(world.errors.Take());
    EXPECT_THAT(streams.Output().back(), HasSubstr(L": 0 copied, 0 unchanged, "));
}

TEST_F(SilentOutput, ItemFromTheFuture_IsReportedWithItsPath) {
    const std::wstring later = tree.File(L"Home\\Later.txt", "x", {2150, 1, 1, 12, 0, 0});
    WriteDefaultList({letter, later});
    BackUp();
    const auto lines = streams.Output();
    const auto warning = std::find(lines.begin(), lines.end(), Warning(RowWarning::FutureDate));
    ASSERT_LT(lines.end() - warning, static_cast<std::ptrdiff_t>(lines.size()));
    ASSERT_GT(lines.end() - warning, 1);
    EXPECT_EQ(warning[1], later);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), *warning), 1);
}

}  // namespace
}  // namespace vw::test
