#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"

namespace vw::test {
namespace {

constexpr const char* kNoLinks = "this system makes no links here";

/// Work in one copy. Since then its sub-folder has moved to Elsewhere, and a link shows it in its
/// old place: no copy has what is in it now.
class RestoreLinks : public RestoreEnvironment {
  protected:
    RestoreLinks() {
        tree.File(L"Work\\Sub\\b.txt", "stored", {2024, 1, 1, 9, 0, 0});
        tree.File(L"Work\\Sub\\Deep\\c.txt", "stored", {2024, 1, 1, 9, 0, 0});
        tree.File(L"Work\\Zlast\\d.txt", "stored", {2024, 1, 1, 9, 0, 0});
        tree.File(L"Work\\a.txt", "stored", {2024, 1, 2, 9, 0, 0});
        BackUp(work + L"\\");
        tree.Remove(L"Work\\Sub");
        tree.File(L"Elsewhere\\b.txt", "nowhere else", {2024, 1, 9, 9, 0, 0});
        atFirst = ReadTree(tree.Folder(L"Elsewhere"));
    }

    void RestoreWork() {
        browser.ListRestoreFiles();
        browser.RestoredPath(work + L"\\");
        world.boxes.Expect(kQuestion + work, BoxAnswer::Yes);
        commands.mnuRestoreClick();
    }

    const std::wstring work = tree.Folder(L"Work");
    Tree atFirst;
};

TEST_F(RestoreLinks, LinkBelowTheItem_IsNotFollowed) {
    if (!tree.Link(L"Work\\Sub", L"Elsewhere")) GTEST_SKIP() << kNoLinks;
    tree.Remove(L"Work\\Zlast");
    RestoreWork();
    EXPECT_EQ(ReadTree(tree.Path(L"Elsewhere")), atFirst);
    const ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, error_number::kAlreadyExists);
    EXPECT_EQ(told.path, work + L"\\Sub");
    EXPECT_EQ(std::count_if(report.begin(), report.end(),
                            [&](const std::wstring& line) {
                                return line.find(work + L"\\Sub") != std::wstring::npos;
                            }),
              1);
    // It costs the others nothing.
    EXPECT_EQ(ReadBytes(work + L"\\Zlast\\d.txt"), "stored");
}

TEST_F(RestoreLinks, LinkBelowTheItem_SafetyCopyNeeded_IsNotFollowed) {
    if (!tree.Link(L"Work\\Sub", L"Elsewhere")) GTEST_SKIP() << kNoLinks;
    tree.File(L"Work\\a.txt", "unsaved", {2024, 1, 8, 9, 0, 0});
    RestoreWork();
    EXPECT_EQ(ReadTree(tree.Path(L"Elsewhere")), atFirst);
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kAlreadyExists);
    EXPECT_EQ(ReadBytes(vault + L"\\Work«0021»\\a.txt"), "unsaved");
    EXPECT_EQ(ReadBytes(work + L"\\a.txt"), "stored");
}

// What the user chose is what the link shows, and its safety copy has all of that.
TEST_F(RestoreLinks, LinkAsItem_IsFollowed) {
    tree.Remove(L"Work");
    if (!tree.Link(L"Work", L"Elsewhere")) GTEST_SKIP() << kNoLinks;
    tree.File(L"Elsewhere\\a.txt", "unsaved", {2024, 1, 8, 9, 0, 0});
    RestoreWork();
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\a.txt")), "stored");
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\Sub\\Deep\\c.txt")), "stored");
    EXPECT_EQ(ReadBytes(tree.Path(L"Elsewhere\\b.txt")), "nowhere else");
    EXPECT_EQ(ReadBytes(vault + L"\\Work«0021»\\a.txt"), "unsaved");
    EXPECT_EQ(ReadBytes(vault + L"\\Work«0021»\\b.txt"), "nowhere else");
}

}  // namespace
}  // namespace vw::test
