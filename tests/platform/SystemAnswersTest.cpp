// Answers of the system that no disk of a test gives.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/RuntimeError.h"
#include "platform/Win32FileSystem.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

std::wstring tempPath;
DWORD tempLength = 0;

DWORD WINAPI AnswerTempPath(DWORD size, LPWSTR buffer) {
    if (tempPath.size() < size) std::copy(tempPath.begin(), tempPath.end(), buffer);
    SetLastError(ERROR_NOT_READY);
    return tempLength;
}

class TemporaryFolder : public testing::Test {
  protected:
    static std::wstring Of(const std::wstring& path) {
        tempPath = path;
        tempLength = static_cast<DWORD>(path.size());
        return Win32FileSystem().TempFolder();
    }

    const ImportHook answer{"GetTempPathW", &AnswerTempPath};
};

TEST_F(TemporaryFolder, Root_KeepsItsSeparator) {
    EXPECT_EQ(Of(L"C:\\"), L"C:\\");
    EXPECT_EQ(Of(L"C:\\\\"), L"C:\\");
    EXPECT_EQ(Of(L"C:\\T\\"), L"C:\\T");
}

TEST_F(TemporaryFolder, SystemHasNone_Throws) {
    tempLength = 0;
    EXPECT_EQ(NumberOf([] { return Win32FileSystem().TempFolder(); }), error_number::kNotReady);
}

TEST_F(TemporaryFolder, LongerThanAnyPath_Throws) {
    tempLength = 1000;
    EXPECT_EQ(NumberOf([] { return Win32FileSystem().TempFolder(); }), error_number::kNotReady);
}

DWORD WINAPI AnswerLongestTempPath(DWORD size, LPWSTR buffer) {
    const std::wstring longest = L"C:\\" + std::wstring(MAX_PATH - 4, L't') + L'\\';
    if (size <= longest.size()) return static_cast<DWORD>(longest.size()) + 1;
    longest.copy(buffer, longest.size());
    return static_cast<DWORD>(longest.size());
}

TEST(TemporaryFolderOfTheUser, LongestPath_IsTaken) {
    const ImportHook answer("GetTempPathW", &AnswerLongestTempPath);
    EXPECT_EQ(Win32FileSystem().TempFolder().size(), std::size_t{MAX_PATH} - 1);
}

BOOL WINAPI FindAnything(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID facts) {
    *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(facts) = {};
    return TRUE;
}

HANDLE WINAPI FindNoEntry(LPCWSTR, LPWIN32_FIND_DATAW) {
    ADD_FAILURE() << "a folder's listing may be older than its file";
    return INVALID_HANDLE_VALUE;
}

TEST(FactsOfAFile, Listing_IsNotAsked) {
    const TempTree tree;
    const std::wstring file = tree.File(L"a.txt", "12345");
    const ImportHook find("FindFirstFileW", &FindNoEntry);
    EXPECT_EQ(Win32FileSystem().Stat(file)->size, 5U);
}

TEST(FactsOfAFile, TextThatIsNoPath_SystemIsNotAsked) {
    const ImportHook find("GetFileAttributesExW", &FindAnything);
    Win32FileSystem files;
    EXPECT_TRUE(files.Stat(L"C:\\" + std::wstring(31'997, L'x')));
    EXPECT_FALSE(files.Stat(L"C:\\" + std::wstring(31'998, L'x')));
    for (const std::wstring_view prefix : {L"", L"C:\\", L"\\\\?\\"}) {
        for (const wchar_t unit : {L'*', L'?', L'\0'}) {
            EXPECT_FALSE(files.Stat(std::wstring(prefix) + unit));
        }
    }
}

BOOL WINAPI RefuseAttributes(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

DWORD refusal = 0;
BOOL WINAPI RefuseWithCode(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID) {
    SetLastError(refusal);
    return FALSE;
}

class RefusedAttributes : public testing::Test {
  protected:
    const TempTree tree;
    const ImportHook refuse{"GetFileAttributesExW", &RefuseAttributes};
    Win32FileSystem files;
};

TEST_F(RefusedAttributes, FileThatItsFolderLists_HasItsFacts) {
    const auto facts = files.Stat(tree.File(L"a.txt", "12345"));
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->size, 5U);
}

TEST_F(RefusedAttributes, FileThatNoFolderLists_IsPermissionDenied) {
    EXPECT_EQ(NumberOf([&] { return files.Stat(tree.Path(L"none")); }),
              error_number::kPermissionDenied);
}

// All codes that mean that nothing is there, and some that do not.
TEST(RefusedAttributesByCode, OnlyNothingOfThatName_IsNoError) {
    const TempTree tree;
    const ImportHook refuse("GetFileAttributesExW", &RefuseWithCode);
    Win32FileSystem files;
    for (const DWORD code :
         {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_INVALID_NAME, ERROR_BAD_PATHNAME,
          ERROR_INVALID_DRIVE, ERROR_NOT_READY, ERROR_BAD_NETPATH, ERROR_BAD_NET_NAME,
          ERROR_BAD_DEV_TYPE, ERROR_DIRECTORY, ERROR_FILENAME_EXCED_RANGE}) {
        refusal = code;
        EXPECT_EQ(files.Stat(tree.Path(L"none")), std::nullopt) << code;
    }
    for (const DWORD code : {ERROR_CRC, ERROR_SHARING_VIOLATION, ERROR_LOGON_FAILURE}) {
        refusal = code;
        EXPECT_NE(NumberOf([&] { return files.Stat(tree.Path(L"none")); }), 0) << code;
    }
}

DWORD WINAPI AnswerNoFinalPath(HANDLE, LPWSTR, DWORD, DWORD) { return 0; }

TEST(RealPath, DeviceWithoutFinalPaths_IsTheAbsolutePath) {
    const TempTree tree;
    const std::wstring folder = tree.Folder(L"a");
    const ImportHook answer("GetFinalPathNameByHandleW", &AnswerNoFinalPath);
    EXPECT_EQ(Win32FileSystem().RealPath(tree.Path(L"x\\..\\a")), folder);
}

std::wstring askedFolder;

BOOL WINAPI AnswerFreeSpace(LPCWSTR folder, PULARGE_INTEGER available, PULARGE_INTEGER,
                            PULARGE_INTEGER) {
    askedFolder = folder;
    available->QuadPart = 12345;
    return TRUE;
}

TEST(FreeSpace, Folder_IsAskedWithOneSeparatorAtItsEnd) {
    const ImportHook answer("GetDiskFreeSpaceExW", &AnswerFreeSpace);
    Win32FileSystem files;
    EXPECT_EQ(files.FreeSpace(L"C:\\"), 12345U);
    EXPECT_EQ(askedFolder, L"\\\\?\\C:\\");
    EXPECT_EQ(files.FreeSpace(L"C:\\a"), 12345U);
    EXPECT_EQ(askedFolder, L"\\\\?\\C:\\a\\");
}

std::wstring askedRoot;
std::wstring volumeOfThePath;
UINT driveType = 0;

BOOL WINAPI AnswerVolume(LPCWSTR, LPWSTR root, DWORD size) {
    if (volumeOfThePath.empty()) return FALSE;
    EXPECT_GT(size, volumeOfThePath.size());
    volumeOfThePath.copy(root, volumeOfThePath.size());
    return TRUE;
}

UINT WINAPI AnswerDriveType(LPCWSTR root) {
    askedRoot = root;
    return driveType;
}

class DriveTypes : public testing::Test {
  protected:
    const ImportHook volume{"GetVolumePathNameW", &AnswerVolume};
    const ImportHook type{"GetDriveTypeW", &AnswerDriveType};
    Win32FileSystem files;
};

TEST_F(DriveTypes, EachKind_IsItsOwn) {
    struct Row {
        UINT system;
        DriveType ours;
    };
    for (const Row& row :
         {Row{DRIVE_REMOVABLE, DriveType::Removable}, Row{DRIVE_FIXED, DriveType::Fixed},
          Row{DRIVE_REMOTE, DriveType::Network}, Row{DRIVE_CDROM, DriveType::Optical},
          Row{DRIVE_RAMDISK, DriveType::Memory}, Row{DRIVE_NO_ROOT_DIR, DriveType::Unknown}}) {
        driveType = row.system;
        EXPECT_EQ(files.DriveTypeOf(L"X:\\"), row.ours) << row.system;
    }
}

TEST_F(DriveTypes, Server_IsNetworkWithoutAsking) {
    driveType = DRIVE_FIXED;
    askedRoot.clear();
    EXPECT_EQ(files.DriveTypeOf(L"\\\\server\\share\\a"), DriveType::Network);
    EXPECT_EQ(askedRoot, L"");
}

TEST_F(DriveTypes, Root_IsAskedItself) {
    volumeOfThePath = L"Y:\\";
    static_cast<void>(files.DriveTypeOf(L"X:\\"));
    EXPECT_EQ(askedRoot, L"X:\\") << "its volume may be on a server that is gone";
}

// A folder can show another volume.
TEST_F(DriveTypes, Folder_VolumeIsAsked) {
    volumeOfThePath = L"X:\\a\\";
    static_cast<void>(files.DriveTypeOf(L"X:\\a"));
    EXPECT_EQ(askedRoot.c_str(), volumeOfThePath);
}

TEST_F(DriveTypes, FolderWithoutAVolume_DriveIsAsked) {
    volumeOfThePath.clear();
    static_cast<void>(files.DriveTypeOf(L"X:\\a"));
    EXPECT_EQ(askedRoot, L"X:\\");
}

DWORD numberOfTheFolder = 0;
DWORD step = 0;
BOOL WINAPI AnswerInformation(HANDLE, LPBY_HANDLE_FILE_INFORMATION information) {
    *information = {};
    information->dwFileAttributes = FILE_ATTRIBUTE_DIRECTORY;
    information->dwVolumeSerialNumber = 77;
    information->nFileIndexHigh = 1;
    information->nFileIndexLow = numberOfTheFolder;
    numberOfTheFolder += step;
    return TRUE;
}

BOOL WINAPI AnswerNoInformation(HANDLE, LPBY_HANDLE_FILE_INFORMATION) {
    SetLastError(ERROR_CRC);
    return FALSE;
}

TEST(Identify, VolumeAndFolder_AreThoseOfTheSystem) {
    const TempTree tree;
    const ImportHook answer("GetFileInformationByHandle", &AnswerInformation);
    numberOfTheFolder = 5;
    step = 0;
    const FolderIdentity steady = Win32FileSystem().Identify(tree.Path());
    EXPECT_EQ(steady.volume, 77U);
    EXPECT_EQ(steady.folder, (std::uint64_t{1} << 32) + 5);
    step = 1;
    EXPECT_EQ(Win32FileSystem().Identify(tree.Path()).folder, 0U) << "another at each opening";
}

TEST(Identify, SystemKnowsNothing_Throws) {
    const TempTree tree;
    const ImportHook answer("GetFileInformationByHandle", &AnswerNoInformation);
    EXPECT_EQ(NumberOf([&] { return Win32FileSystem().Identify(tree.Path()); }),
              error_number::kDeviceError);
}

std::wstring folderOfTheServer;
const ImportHook* creation = nullptr;

/// Opens a folder of the test in place of every one of a server.
HANDLE WINAPI OpenForServer(LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES rights,
                            DWORD how, DWORD flags, HANDLE like) {
    const bool isServer = std::wstring_view(path).starts_with(L"\\\\?\\UNC\\");
    return creation->Original<decltype(CreateFileW)>()(isServer ? folderOfTheServer.c_str() : path,
                                                       access, sharing, rights, how, flags, like);
}

TEST(FolderOfAServer, Device_IsItsShare) {
    const TempTree tree;
    folderOfTheServer = tree.Path();
    const ImportHook open("CreateFileW", &OpenForServer);
    creation = &open;
    Win32FileSystem files;
    for (const wchar_t* folder : {L"\\\\server\\share", L"\\\\server\\share\\a\\b"}) {
        EXPECT_EQ(files.Identify(folder).device, L"\\\\server\\share");
    }
}

DWORD WINAPI AnswerDevice(LPCWSTR drive, LPWSTR device, DWORD size) {
    if (std::wstring_view(drive) != L"C:") return 0;
    const std::wstring_view name = L"\\Device\\Disk 7";
    EXPECT_GT(size, name.size() + 1);
    name.copy(device, name.size());
    return static_cast<DWORD>(name.size()) + 2;
}

TEST(FolderOfADrive, Device_IsWhatTheSystemHasBehindTheLetter) {
    const ImportHook answer("QueryDosDeviceW", &AnswerDevice);
    Win32FileSystem files;
    EXPECT_EQ(files.Identify(L"C:\\").device, L"\\Device\\Disk 7");
    EXPECT_EQ(files.Identify(L"\\\\?\\C:\\").device, L"") << "no letter at its beginning";
}

}  // namespace
}  // namespace vw::test
