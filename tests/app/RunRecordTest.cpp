#include "app/RunRecord.h"

#include <gtest/gtest.h>

#include "platform/DateText.h"

namespace vw {
namespace {

class RunRecordTest : public testing::Test {
  protected:
    RunRecordTest() { record.Begin(L"C:\\My.vwl", 5); }

    void Item(ItemEvent event) {
        record.OnItem(ItemEvent::Started);
        record.OnItem(event);
    }
    [[nodiscard]] std::wstring Line(Language language = Language::English) const {
        return record.ReportLine(language, kNow);
    }

    static constexpr Date kNow = kEmptyFolderDate;
    const std::wstring begin = L"C:\\My.vwl, " + DateText(kNow) + L": ";
    RunRecord record;
};

TEST_F(RunRecordTest, EachItem_IsCountedOnce) {
    Item(ItemEvent::Copying);
    Item(ItemEvent::Copied);
    Item(ItemEvent::Unchanged);
    Item(ItemEvent::Unchanged);
    Item(ItemEvent::Refused);
    record.End(false);
    EXPECT_EQ(Line(), begin + L"1 copied, 2 unchanged, 2 failed");
    EXPECT_TRUE(record.HasFailures());
}

// The run reports "no change" for an item that does not exist and never had a copy.
TEST_F(RunRecordTest, MissingItem_ReportedUnchanged_CountsAsFailed) {
    record.OnItem(ItemEvent::Started);
    record.OnItem(ItemEvent::Missing);
    record.OnItem(ItemEvent::Unchanged);
    record.End(false);
    EXPECT_EQ(Line(), begin + L"0 copied, 0 unchanged, 1 failed");
}

TEST_F(RunRecordTest, ErrorInAnItem_CopyIsMade_CountsAsFailed) {
    record.OnItem(ItemEvent::Started);
    record.NoteFailure();
    record.OnItem(ItemEvent::Copied);
    record.End(false);
    EXPECT_EQ(Line(), begin + L"0 copied, 0 unchanged, 1 failed");
}

TEST_F(RunRecordTest, Cancelled_ItemsThatWereNotReached_CountAsCancelled) {
    Item(ItemEvent::Copied);
    Item(ItemEvent::Unchanged);
    Item(ItemEvent::Refused);
    record.OnItem(ItemEvent::Started);
    record.End(true);
    EXPECT_EQ(Line(), begin + L"1 copied, 1 unchanged, 1 failed, 2 cancelled");
}

TEST_F(RunRecordTest, ErrorOutsideItems_CountsNowhere) {
    record.NoteFailure();
    Item(ItemEvent::Copied);
    record.End(false);
    EXPECT_FALSE(record.HasFailures());
}

TEST_F(RunRecordTest, Cancel_CurrentItemAndLaterOnes_CountAsCancelled) {
    Item(ItemEvent::Copied);
    Item(ItemEvent::Copied);
    record.End(true);
    EXPECT_EQ(Line(), begin + L"1 copied, 0 unchanged, 0 failed, 4 cancelled");
    EXPECT_TRUE(record.HasFailures());
}

TEST_F(RunRecordTest, Cancel_LastItem_CountsAsCancelled) {
    for (int item = 1; item <= 5; ++item) Item(ItemEvent::Copied);
    record.End(true);
    EXPECT_EQ(Line(), begin + L"4 copied, 0 unchanged, 0 failed, 1 cancelled");
}

TEST_F(RunRecordTest, NextRun_BeginsAtNothing) {
    Item(ItemEvent::Refused);
    record.End(false);
    record.Begin(L"C:\\My.vwl", 1);
    EXPECT_TRUE(record.IsOpen());
    Item(ItemEvent::Copied);
    record.End(false);
    EXPECT_FALSE(record.IsOpen());
    EXPECT_EQ(Line(), begin + L"1 copied, 0 unchanged, 0 failed");
}

TEST_F(RunRecordTest, ArabicTexts_NameTheSameCounts) {
    Item(ItemEvent::Copied);
    record.End(false);
    EXPECT_EQ(Line(Language::Arabic),
              L"C:\\My.vwl، " + DateText(kNow) + L": نُسخ: 1، لم يتغير: 0، فشل: 0");
    EXPECT_EQ(record.StatusText(Language::Arabic, kNow),
              L"آخر نسخ احتياطي " + DateText(kNow) +
                  L": نُسخ: 1، لم يتغير: 0، فشل: 0. انقر هنا أو اضغط Ctrl+R لعرض التقرير.");
}

}  // namespace
}  // namespace vw
