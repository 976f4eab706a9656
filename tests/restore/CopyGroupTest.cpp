#include "restore/CopyGroup.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vw {
namespace {

const std::wstring kFolder = L"E:\\Backup\\";

std::vector<CopyGroup> Group(const std::vector<std::wstring>& copies,
                             const std::vector<std::wstring>& comments = {},
                             bool areFolders = false) {
    std::vector<CopyEntry> entries;
    entries.reserve(copies.size());
    for (const std::wstring& name : copies) {
        entries.push_back({.path = kFolder + name, .isFolder = areFolders});
    }
    std::vector<std::wstring> paths;
    paths.reserve(comments.size());
    for (const std::wstring& name : comments) paths.push_back(kFolder + name);
    return GroupCopies(entries, paths);
}

TEST(CopyGroup, MixedCopies_HaveOneGroupPerItem) {
    const auto series = Group({L"Report\u00AB0001\u00BB.doc", L"Report\u00AB0001\u00BB.txt",
                               L"REPORT\u00AB0002\u00BB.doc", L"Report\u00AB0101\u00BB.doc"});
    ASSERT_EQ(series.size(), 3U);
    EXPECT_EQ(series[0].origin, L"Report.doc");
    EXPECT_EQ(series[0].location, 0);
    ASSERT_EQ(series[0].copies.size(), 2U);
    EXPECT_EQ(series[0].copies[1].path, kFolder + L"REPORT\u00AB0002\u00BB.doc");
    EXPECT_EQ(series[1].origin, L"Report.txt");
    EXPECT_EQ(series[2].location, 1);
}

TEST(CopyGroup, CommentsOfItsCopies_AreNoted) {
    const auto series = Group({L"a\u00AB0001\u00BB.txt", L"a\u00AB0002\u00BB.txt"},
                              {L"A\u00AB0001\u00BB.TXT.VWC", L"b\u00AB0001\u00BB.txt.vwc"});
    ASSERT_EQ(series.size(), 1U);
    EXPECT_TRUE(series[0].hasComment);
    EXPECT_TRUE(series[0].copies[0].hasComment);
    EXPECT_FALSE(series[0].copies[1].hasComment);
}

TEST(CopyGroup, MayHoldOthers_FolderWithoutComment_ReturnsTrue) {
    const std::vector<std::wstring> dotted{L"Docs\u00AB0002\u00BB.smith"};
    EXPECT_TRUE(Group(dotted, {}, true)[0].MayHoldOthers());
    EXPECT_FALSE(Group(dotted, {}, false)[0].MayHoldOthers()) << "files";
    EXPECT_FALSE(Group({L"Docs\u00AB0002\u00BB"}, {}, true)[0].MayHoldOthers()) << "no ending";
    // Also when the copy that it belongs to is gone.
    EXPECT_FALSE(Group(dotted, {L"Docs\u00AB0001\u00BB.smith.vwc"}, true)[0].MayHoldOthers());
    EXPECT_TRUE(Group(dotted, {L"Docs\u00AB0101\u00BB.smith.vwc"}, true)[0].MayHoldOthers());
}

}  // namespace
}  // namespace vw
