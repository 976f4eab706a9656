#include "engine/CopyComment.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/RuntimeError.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

class CopyCommentTest : public testing::Test {
  protected:
    [[nodiscard]] std::optional<CopyComment> Read(DamagedDate damaged = DamagedDate::Raise) {
        return ReadCopyComment(world.system, tree.Path(L"a«0001».txt"), damaged);
    }
    void Comment(const std::string& text) const { tree.File(L"a«0001».txt.vwc", text); }

    const TempTree tree;
    TestEnvironment world;
};

TEST_F(CopyCommentTest, NoComment_IsNone) { EXPECT_FALSE(Read()); }

TEST_F(CopyCommentTest, FolderInItsPlace_IsNone) {
    tree.Folder(L"a«0001».txt.vwc");
    EXPECT_FALSE(Read());
}

TEST_F(CopyCommentTest, CannotBeRead_Throws) {
    Comment("Backed Files Date Last Modified:05/03/2005-14:07:09\r\n");
    world.files.FailNth(1, error_number::kPermissionDenied, [](const FileOperation& operation) {
        return operation.call == FileCall::Read;
    });
    EXPECT_THROW(static_cast<void>(Read()), RuntimeError);
}

TEST_F(CopyCommentTest, DateAndPlace_AreReadFromIt) {
    Comment("Backed Files Date Last Modified:05/03/2005-14:07:09+Original Location:C:\\Docs\r\n");
    const auto comment = Read();
    ASSERT_TRUE(comment);
    EXPECT_EQ(comment->date, MakeDate({2005, 3, 5, 14, 7, 9}));
    EXPECT_EQ(comment->place, L"C:\\Docs");
}

TEST_F(CopyCommentTest, ImpossibleDate_ThrowsOrIsLeftOut) {
    Comment("Backed Files Date Last Modified:99/99/9999-99:99:99+Original Location:C:\\Docs\r\n");
    EXPECT_THROW(static_cast<void>(Read(DamagedDate::Raise)), RuntimeError);
    const auto comment = Read(DamagedDate::LeaveOut);
    ASSERT_TRUE(comment);
    EXPECT_EQ(comment->date, std::nullopt);
    EXPECT_EQ(comment->place, L"C:\\Docs");
}

}  // namespace
}  // namespace vw::test
