// What the marks and tags of a listing mean. The disk of the tests has none of them, so they are
// given as Windows gives them.

#include <gtest/gtest.h>

#include "platform/DriveFailure.h"
#include "platform/FolderEnumeration.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

constexpr DWORD kSymbolicLink = 0xA000000C;

class SpecialFiles : public testing::Test {
  protected:
    [[nodiscard]] FileInfo FactsWith(DWORD attributes, DWORD tag = 0,
                                     const std::wstring& path = {}) const {
        WIN32_FIND_DATAW data{};
        data.dwFileAttributes = attributes;
        data.dwReserved0 = tag;
        data.nFileSizeLow = 7;
        return FactsOf(data, LocalTime(), [&] { return path; });
    }

    const TempTree tree_;
};

TEST_F(SpecialFiles, FilesWithoutOwnBytes_AreLinks) {
    // App alias, socket, pipe, character and block device.
    for (const DWORD tag : {0x8000001B, 0x80000023, 0x80000024, 0x80000025, 0x80000026}) {
        const FileInfo facts = FactsWith(FILE_ATTRIBUTE_REPARSE_POINT, tag);
        EXPECT_TRUE(facts.isLink) << std::hex << tag;
        EXPECT_FALSE(facts.isFolder);
    }
}

TEST_F(SpecialFiles, FilesStoredInAnotherWay_AreFiles) {
    // Compressed by the system, deduplicated, in a cloud folder.
    for (const DWORD tag : {0x80000017, 0x80000013, 0x9000001A, 0x9000601A}) {
        const FileInfo facts = FactsWith(FILE_ATTRIBUTE_REPARSE_POINT, tag);
        EXPECT_FALSE(facts.isLink) << std::hex << tag;
        EXPECT_EQ(facts.size, 7U);
    }
    EXPECT_FALSE(FactsWith(FILE_ATTRIBUTE_ARCHIVE, 0x8000001B).isLink) << "no tag without its mark";
}

TEST_F(SpecialFiles, LinksToFiles_ReadAsTheirTargetIfItExists) {
    const std::wstring file = tree_.File(L"a.txt", "1234", {2011, 3, 4, 5, 6, 7});
    const FileInfo shown = FactsWith(FILE_ATTRIBUTE_REPARSE_POINT, kSymbolicLink, file);
    EXPECT_FALSE(shown.isLink);
    EXPECT_EQ(shown.size, 4U);
    EXPECT_EQ(shown.lastWrite, MakeDate({2011, 3, 4, 5, 6, 7}));
    for (const wchar_t* gone : {L"gone.txt", L"Gone\\a.txt"}) {
        EXPECT_TRUE(
            FactsWith(FILE_ATTRIBUTE_REPARSE_POINT, kSymbolicLink, tree_.Path(gone)).isLink);
    }
}

HANDLE WINAPI RefuseToOpen(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

TEST_F(SpecialFiles, LinkWhoseTargetMayNotBeRead_IsAFile) {
    const ImportHook refuse("CreateFileW", &RefuseToOpen);
    const FileInfo facts = FactsWith(FILE_ATTRIBUTE_REPARSE_POINT, kSymbolicLink, tree_.Path(L"a"));
    EXPECT_FALSE(facts.isLink);
    EXPECT_EQ(facts.size, 7U) << "that of the link";
}

BOOL WINAPI FullHour(const DYNAMIC_TIME_ZONE_INFORMATION*, const SYSTEMTIME* utc,
                     LPSYSTEMTIME local) {
    *local = *utc;
    local->wMinute = 0;
    return TRUE;
}

TEST_F(SpecialFiles, Files_HaveTheirDateByBothRules) {
    WIN32_FIND_DATAW data{};
    data.ftLastWriteTime = {0, 0x01D00000};
    const LocalTime localTime(nullptr, &FullHour);
    const FileInfo facts = FactsOf(data, localTime, {});
    EXPECT_EQ(facts.lastWrite, localTime.DateOf(data.ftLastWriteTime));
    EXPECT_EQ(facts.lastWriteByPresentRules, localTime.DateByPresentRules(data.ftLastWriteTime));
    EXPECT_NE(facts.lastWrite, facts.lastWriteByPresentRules);
}

TEST_F(SpecialFiles, LargeFiles_HaveTheirWholeSize) {
    WIN32_FIND_DATAW data{};
    data.nFileSizeHigh = 1;
    data.nFileSizeLow = 2;
    EXPECT_EQ(FactsOf(data, LocalTime(), {}).size, (std::uint64_t{1} << 32) + 2);
}

TEST_F(SpecialFiles, FilesInTheCloudAlone_AreMarked) {
    // Recall on data access, recall on open, offline.
    for (const DWORD attribute : {0x00400000, 0x00040000, 0x00001000}) {
        EXPECT_TRUE(FactsWith(FILE_ATTRIBUTE_REPARSE_POINT | attribute, 0x9000001A).isOnlyInCloud);
        EXPECT_FALSE(FactsWith(FILE_ATTRIBUTE_DIRECTORY | attribute).isOnlyInCloud);
    }
    // Always kept here, may be removed here.
    EXPECT_FALSE(FactsWith(FILE_ATTRIBUTE_REPARSE_POINT | 0x00080000, 0x9000001A).isOnlyInCloud);
    EXPECT_FALSE(FactsWith(FILE_ATTRIBUTE_REPARSE_POINT | 0x00100000, 0x9000001A).isOnlyInCloud);
}

TEST_F(SpecialFiles, EncryptedFiles_AreMarked) {
    EXPECT_TRUE(FactsWith(FILE_ATTRIBUTE_ENCRYPTED).isEncrypted);
    EXPECT_FALSE(FactsWith(FILE_ATTRIBUTE_ENCRYPTED | FILE_ATTRIBUTE_DIRECTORY).isEncrypted);
    EXPECT_FALSE(FactsWith(FILE_ATTRIBUTE_ARCHIVE).isEncrypted);
}

TEST(CloudFailures, ConcernsCloud_CodesOfTheCloudOnly_ReturnsTrue) {
    const auto concerns = [](std::uint32_t code) {
        return ConcernsCloud(RuntimeError(75, L"", L"C:\\a", 1, code));
    };
    for (const std::uint32_t code : {362U, 386U, 388U, 404U, 426U}) {
        EXPECT_TRUE(concerns(code)) << code;
    }
    // No error, denied, in use, used up elsewhere, a failure of one file.
    for (const std::uint32_t code : {0U, 5U, 32U, 391U, 389U}) EXPECT_FALSE(concerns(code)) << code;
}

}  // namespace
}  // namespace vw::test
