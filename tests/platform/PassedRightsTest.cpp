// Which access rights are passed on, for lists that a disk of a test does not give to its files.

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>

#include "platform/AccessRights.h"
#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"
// The declarations of access lists need those of the system first.
#include <aclapi.h>
#include <sddl.h>

namespace vw::test {
namespace {

/// The list of a file as text (SDDL); without one it may not be read.
std::optional<std::wstring> listOfFrom;
std::optional<std::wstring> listOfTo;
/// How the rights were set, if they were.
std::optional<SECURITY_INFORMATION> setAs;
WORD bytesSet = 0;

BOOL WINAPI GiveList(LPCWSTR path, SECURITY_INFORMATION asked, PSECURITY_DESCRIPTOR buffer,
                     DWORD size, LPDWORD needed) {
    EXPECT_EQ(asked, SECURITY_INFORMATION{DACL_SECURITY_INFORMATION});
    const bool isFrom = std::wstring_view(path).ends_with(L"from");
    const std::optional<std::wstring>& text = isFrom ? listOfFrom : listOfTo;
    PSECURITY_DESCRIPTOR list = nullptr;
    ULONG length = 0;
    if (!text || ConvertStringSecurityDescriptorToSecurityDescriptorW(
                     text->c_str(), SDDL_REVISION_1, &list, &length) == 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    *needed = length;
    const bool fits = length <= size;
    if (fits) std::memcpy(buffer, list, length);
    LocalFree(list);
    if (!fits) SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return fits ? TRUE : FALSE;
}

DWORD WINAPI NoteRights(LPWSTR path, SE_OBJECT_TYPE, SECURITY_INFORMATION how, PSID, PSID,
                        PACL list, PACL) {
    EXPECT_TRUE(std::wstring_view(path).ends_with(L"to"));
    setAs = how;
    bytesSet = list->AclSize;
    return ERROR_SUCCESS;
}

constexpr SECURITY_INFORMATION kProtected =
    DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION;
constexpr SECURITY_INFORMATION kUnprotected =
    DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION;
constexpr const wchar_t* kInherited = L"D:AI(A;ID;FA;;;BA)(A;ID;FA;;;SY)";

class PassedRights : public testing::Test {
  protected:
    PassedRights() {
        listOfTo = kInherited;
        setAs.reset();
        bytesSet = 0;
    }
    /// How the rights of a file with this list were set for the new one.
    std::optional<SECURITY_INFORMATION> Pass(const std::wstring& list) {
        listOfFrom = list;
        setAs.reset();
        PassAccessRightsOn(L"C:\\from", L"C:\\to", usual);
        return setAs;
    }

    std::string usual;
    const ImportHook give{"GetFileSecurityW", &GiveList};
    const ImportHook note{"SetNamedSecurityInfoW", &NoteRights};
};

TEST_F(PassedRights, InheritedAlone_AreLeftToTheFolder) {
    EXPECT_EQ(Pass(L"D:AI(A;ID;FA;;;WD)"), std::nullopt);
    EXPECT_EQ(Pass(L"D:AI(A;ID;FA;;;WD)(A;ID;FR;;;BA)"), std::nullopt);
}

TEST_F(PassedRights, OwnEntry_IsPassedOnBesideTheInheritedOnes) {
    EXPECT_EQ(Pass(L"D:AI(A;;FR;;;WD)"), kUnprotected);
    EXPECT_EQ(Pass(L"D:AI(A;ID;FA;;;BA)(A;;FR;;;WD)"), kUnprotected);
}

TEST_F(PassedRights, ProtectedList_IsPassedOnAsOne) {
    EXPECT_EQ(Pass(L"D:P(A;;FR;;;WD)"), kProtected);
    EXPECT_EQ(Pass(L"D:PAI(A;ID;FR;;;WD)"), kProtected);
    EXPECT_EQ(Pass(L"D:P"), kProtected) << "nobody may use the file";
}

TEST_F(PassedRights, ListThatNewFilesHave_IsNotSetOnceMore) {
    listOfTo = L"D:P(A;;FR;;;WD)";
    EXPECT_EQ(Pass(L"D:P(A;;FR;;;WD)"), std::nullopt);
    EXPECT_EQ(Pass(L"D:AI(A;;FR;;;WD)"), kUnprotected) << "the same entries, inherited ones beside";
}

TEST_F(PassedRights, LongList_IsPassedOnWhole) {
    std::wstring list = L"D:P";
    for (int entry = 0; entry < 60; ++entry) {
        list += L"(A;;FR;;;S-1-5-21-1-2-3-" + std::to_wstring(1000 + entry) + L")";
    }
    EXPECT_EQ(Pass(list), kProtected);
    EXPECT_GT(bytesSet, 60 * 20);
}

TEST_F(PassedRights, ListThatMayNotBeRead_ChangesNothing) {
    listOfFrom.reset();
    PassAccessRightsOn(L"C:\\from", L"C:\\to", usual);
    EXPECT_EQ(setAs, std::nullopt);
}

TEST_F(PassedRights, FileWithoutAList_ChangesNothing) {
    EXPECT_EQ(Pass(L"D:NO_ACCESS_CONTROL"), std::nullopt);
    EXPECT_EQ(Pass(L"O:BA"), std::nullopt);
}

}  // namespace
}  // namespace vw::test
