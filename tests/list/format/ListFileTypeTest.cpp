#include "list/format/ListFileType.h"

#include <gtest/gtest.h>

namespace vw::test {
namespace {

TEST(ListFileType, Names_AreThoseOfTheRegistry) {
    EXPECT_EQ(list_file_type::kExtension, L".VWL");
    EXPECT_EQ(list_file_type::kTypeName, L"VaultwrightFilesList");
    EXPECT_EQ(list_file_type::kIconFile, L"\\vwl.ICO");
    EXPECT_EQ(list_file_type::kBackupCommand, L" /B %1");
}

}  // namespace
}  // namespace vw::test
