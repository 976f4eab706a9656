#include <aclapi.h>
#include <gtest/gtest.h>
#include <sddl.h>

#include <string>

#include "platform/Win32FileSystem.h"
#include "tests/support/TempTree.h"

namespace vw {
namespace {

/// The access rights of a file as text (SDDL).
std::wstring RightsOf(const std::wstring& path) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, nullptr, nullptr, &descriptor) != ERROR_SUCCESS) {
        return L"none";
    }
    wchar_t* text = nullptr;
    ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1,
                                                         DACL_SECURITY_INFORMATION, &text, nullptr);
    std::wstring rights = text == nullptr ? L"" : text;
    LocalFree(text);
    LocalFree(descriptor);
    return rights;
}

bool SetRights(const std::wstring& path, const wchar_t* rights) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor,
                                                             nullptr) == 0) {
        return false;
    }
    const BOOL set = SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor);
    LocalFree(descriptor);
    return set != 0;
}

TEST(AccessRights, Copy_FromAFile_GivesItsRights) {
    const test::TempTree tree;
    const std::wstring from = tree.File(L"from.txt");
    const std::wstring to = tree.File(L"to.txt");
    ASSERT_TRUE(SetRights(from, L"D:P(A;;FA;;;BA)(A;;FA;;;SY)(A;;FA;;;WD)"));
    const std::wstring wanted = RightsOf(from);
    if (wanted == RightsOf(to)) {
        ASSERT_TRUE(SetRights(to, L"D:P(A;;FR;;;WD)(A;;FA;;;BA)"));
    }
    ASSERT_NE(RightsOf(to), wanted);
    std::string usual;
    Win32FileSystem().CopyAccessRights(from, to, usual);
    EXPECT_EQ(RightsOf(to), wanted);
}

TEST(AccessRights, Copy_ToSeveralNewFiles_GivesEachTheRightsOfItsFile) {
    const test::TempTree tree;
    const std::wstring open = tree.File(L"open.txt");
    const std::wstring closed = tree.File(L"closed.txt");
    ASSERT_TRUE(SetRights(open, L"D:P(A;;FA;;;BA)(A;;FA;;;SY)(A;;FA;;;WD)"));
    ASSERT_TRUE(SetRights(closed, L"D:P(A;;FR;;;WD)(A;;FA;;;BA)"));
    ASSERT_NE(RightsOf(open), RightsOf(closed));
    std::string usual;
    int number = 0;
    for (const std::wstring& from : {open, closed, open, closed}) {
        const std::wstring to = tree.File(L"new" + std::to_wstring(++number) + L".txt");
        Win32FileSystem().CopyAccessRights(from, to, usual);
        EXPECT_EQ(RightsOf(to), RightsOf(from)) << number;
    }
}

TEST(AccessRights, Copy_FromAMissingFile_ChangesNothing) {
    const test::TempTree tree;
    const std::wstring to = tree.File(L"to.txt");
    const std::wstring before = RightsOf(to);
    std::string usual;
    Win32FileSystem().CopyAccessRights(tree.Path(L"none"), to, usual);
    EXPECT_EQ(RightsOf(to), before);
}

}  // namespace
}  // namespace vw
