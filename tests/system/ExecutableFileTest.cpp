// The program file as users get it: what its headers and resources say of it.

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/Utf8.h"
#include "platform/WindowsHeader.h"
#include "tests/system/ProgramCopy.h"
#include "ui/VersionNumbers.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::HasSubstr;
using testing::IsSupersetOf;

constexpr std::size_t kMostBytes = 3'000'000;

class ProgramFile : public testing::Test {
  protected:
    ProgramFile() {
        IMAGE_DOS_HEADER start{};
        Read(0, start);
        Read(static_cast<std::size_t>(start.e_lfanew), headers);
        EXPECT_EQ(headers.Signature, DWORD{IMAGE_NT_SIGNATURE});
        std::size_t offset = static_cast<std::size_t>(start.e_lfanew) +
                             offsetof(IMAGE_NT_HEADERS64, OptionalHeader) +
                             headers.FileHeader.SizeOfOptionalHeader;
        for (int i = 0; i < headers.FileHeader.NumberOfSections; ++i) {
            IMAGE_SECTION_HEADER section{};
            Read(offset, section);
            offset += sizeof section;
            const auto* name = reinterpret_cast<const char*>(section.Name);
            sections[std::string(name, strnlen(name, sizeof section.Name))] = section;
        }
    }

    template <class Record>
    void Read(std::size_t offset, Record& record) const {
        ASSERT_LE(offset + sizeof record, bytes.size());
        std::memcpy(&record, bytes.data() + offset, sizeof record);
    }

    [[nodiscard]] const IMAGE_DATA_DIRECTORY& Directory(int index) const {
        return headers.OptionalHeader.DataDirectory[index];
    }

    /// Where in the file lies what is loaded to this place.
    [[nodiscard]] std::size_t OffsetOf(DWORD place) const {
        for (const auto& [name, section] : sections) {
            if (place >= section.VirtualAddress &&
                place - section.VirtualAddress < section.SizeOfRawData) {
                return section.PointerToRawData + (place - section.VirtualAddress);
            }
        }
        ADD_FAILURE() << "outside of the sections";
        return 0;
    }

    const std::string bytes = ReadBytes(BuiltProgram());
    IMAGE_NT_HEADERS64 headers{};
    std::map<std::string, IMAGE_SECTION_HEADER> sections;
};

/// What users get. A build for finding faults is larger and names the place of its sources.
class ShippedProgramFile : public ProgramFile {
  protected:
    void SetUp() override {
#ifndef NDEBUG
        GTEST_SKIP() << "not the build that users get";
#endif
    }
};

TEST_F(ProgramFile, Header_IsThatOfA64BitWindowsProgram) {
    EXPECT_EQ(headers.FileHeader.Machine, IMAGE_FILE_MACHINE_AMD64);
    EXPECT_EQ(headers.OptionalHeader.Magic, IMAGE_NT_OPTIONAL_HDR64_MAGIC);
    EXPECT_EQ(headers.OptionalHeader.Subsystem, IMAGE_SUBSYSTEM_WINDOWS_GUI);
}

TEST_F(ShippedProgramFile, Size_IsSmall) { EXPECT_LT(bytes.size(), kMostBytes); }

TEST_F(ProgramFile, Data_AreNotExecutable) {
    EXPECT_TRUE(headers.OptionalHeader.DllCharacteristics & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    for (const auto& [name, section] : sections) {
        EXPECT_FALSE((section.Characteristics & IMAGE_SCN_MEM_WRITE) != 0 &&
                     (section.Characteristics & IMAGE_SCN_MEM_EXECUTE) != 0)
            << name;
    }
}

TEST_F(ProgramFile, LoadAddress_IsRandomIn64Bits) {
    const WORD bits = headers.OptionalHeader.DllCharacteristics;
    EXPECT_TRUE(bits & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(bits & 0x20) << "high entropy";
    EXPECT_FALSE(headers.FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
    EXPECT_GT(Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size, 0U);
    EXPECT_TRUE(sections.contains(".reloc"));
    EXPECT_GT(headers.OptionalHeader.ImageBase, 0xFFFFFFFFULL) << "room for the address to vary";
}

// The compiler's guard ends the program with these words; they are linked in when functions use it.
TEST_F(ProgramFile, ContainsTheStackGuard) {
    EXPECT_THAT(bytes, HasSubstr("stack smashing detected"));
}

TEST_F(ShippedProgramFile, ContainsNoSymbolsAndNoBuildPath) {
    EXPECT_EQ(headers.FileHeader.PointerToSymbolTable, 0U);
    EXPECT_EQ(Directory(IMAGE_DIRECTORY_ENTRY_DEBUG).Size, 0U);
    for (const auto& [name, section] : sections) {
        EXPECT_FALSE(name.starts_with(".debug") || name.starts_with("/")) << name;
    }
    const std::string built = ToUtf8(BuiltProgram());
    const std::string root = built.substr(2, built.find("\\build\\") - 2);
    ASSERT_GT(root.size(), 1U);
    std::string slashes = root;
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    EXPECT_EQ(bytes.find(slashes), std::string::npos) << "the folder that it was built in";
}

// The linker's date would make each build another file.
TEST_F(ProgramFile, BuildTime_IsNotStored) { EXPECT_EQ(headers.FileHeader.TimeDateStamp, 0U); }

// Everything that it needs is part of Windows: there is nothing to install beside it.
TEST_F(ShippedProgramFile, Imports_NeedNoRuntimeBesideIt) {
    for (const char* library : {"libstdc++", "libgcc_s", "libwinpthread", "libssp"}) {
        EXPECT_EQ(bytes.find(std::string(library) + "-"), std::string::npos) << library;
    }
}

// Windows take these from their own folder always; any other library would be looked for beside the
// program first.
TEST_F(ShippedProgramFile, LoadsNothingFromItsOwnFolder) {
    const IMAGE_DATA_DIRECTORY imports = Directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
    std::set<std::string> libraries;
    for (std::size_t place = OffsetOf(imports.VirtualAddress);;
         place += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
        IMAGE_IMPORT_DESCRIPTOR library{};
        Read(place, library);
        if (library.Name == 0) break;
        std::string name = bytes.c_str() + OffsetOf(library.Name);
        for (char& letter : name) letter = static_cast<char>(std::tolower(letter));
        libraries.insert(name);
    }
    EXPECT_THAT(libraries, testing::Contains("kernel32.dll"));
    for (const char* known :
         {"advapi32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "shlwapi.dll", "user32.dll"}) {
        libraries.erase(known);
    }
    EXPECT_THAT(libraries, testing::IsEmpty());
    EXPECT_THAT(bytes, HasSubstr("SetDefaultDllDirectories")) << "for those that are loaded late";
}

/// The program file, opened for its resources.
class ProgramResources : public testing::Test {
  protected:
    ~ProgramResources() override { FreeLibrary(module); }

    [[nodiscard]] std::string Resource(const wchar_t* name, const wchar_t* type) const {
        const HRSRC found = FindResourceW(module, name, type);
        if (found == nullptr) return {};
        const auto* data = static_cast<const char*>(LockResource(LoadResource(module, found)));
        return {data, SizeofResource(module, found)};
    }

    [[nodiscard]] std::vector<int> IconSizes(int name) const {
        const std::string group = Resource(MAKEINTRESOURCEW(name), MAKEINTRESOURCEW(14));
        std::vector<int> sizes;
        for (std::size_t entry = 6; entry + 14 <= group.size(); entry += 14) {
            const int width = static_cast<unsigned char>(group[entry]);
            sizes.push_back(width == 0 ? 256 : width);
        }
        return sizes;
    }

    const HMODULE module =
        LoadLibraryExW(BuiltProgram().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
};

TEST_F(ProgramResources, Version_IsComplete) {
    const std::wstring path = BuiltProgram();
    DWORD ignored = 0;
    std::vector<char> record(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_FALSE(record.empty());
    ASSERT_TRUE(
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(record.size()), record.data()));
    const std::map<std::wstring, std::wstring> expected = {
        {L"CompanyName", L"Tallowmere.Net"},
        {L"FileDescription", L"Vaultwright"},
        {L"FileVersion", FromUtf8(VW_VERSION_TEXT)},
        {L"InternalName", L"Vaultwright"},
        {L"OriginalFilename", L"Vaultwright.exe"},
        {L"ProductName", L"Vaultwright"},
        {L"ProductVersion", FromUtf8(VW_VERSION_TEXT)},
    };
    for (const auto& [name, text] : expected) {
        void* found = nullptr;
        UINT length = 0;
        ASSERT_TRUE(VerQueryValueW(record.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(),
                                   &found, &length))
            << ToUtf8(name);
        EXPECT_EQ(static_cast<const wchar_t*>(found), text) << ToUtf8(name);
    }
    void* found = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(record.data(), L"\\", &found, &length));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    constexpr WORD kNumbers[] = {VW_VERSION_NUMBERS};
    EXPECT_EQ(fixed->dwFileVersionMS, DWORD{MAKELONG(kNumbers[1], kNumbers[0])});
    EXPECT_EQ(fixed->dwFileVersionLS, DWORD{MAKELONG(kNumbers[3], kNumbers[2])});
    EXPECT_EQ(fixed->dwFileFlags & VS_FF_DEBUG, 0UL);
}

TEST_F(ProgramResources, Manifest_RequestsNoRightsAndCurrentControls) {
    const std::string manifest = Resource(MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
    for (const char* part :
         {R"(level="asInvoker")", "Microsoft.Windows.Common-Controls", "PerMonitorV2",
          "longPathAware", R"(name="Tallowmere.Vaultwright" version=")" VW_VERSION_TEXT}) {
        EXPECT_THAT(manifest, HasSubstr(part));
    }
}

TEST_F(ProgramResources, Icons_HaveSizesForAllDensities) {
    std::vector<int> icons;
    // The system says what its parameters are. NOLINTNEXTLINE(readability-non-const-parameter)
    const auto collect = [](HMODULE, LPCWSTR, LPWSTR name, LONG_PTR into) -> BOOL {
        reinterpret_cast<std::vector<int>*>(into)->push_back(LOWORD(name));
        return TRUE;
    };
    ASSERT_TRUE(EnumResourceNamesW(module, MAKEINTRESOURCEW(14), collect,
                                   reinterpret_cast<LONG_PTR>(&icons)));
    EXPECT_THAT(icons, IsSupersetOf({IDI_Program, IDI_Document, IDI_Folder, IDI_File, IDI_Rule}));
    EXPECT_THAT(icons, IsSupersetOf({IDI_Tray_0, IDI_Tray_1, IDI_Tray_2, IDI_Tray_3}));
    // Toolbars and rows at 100 and 200 %; the largest is what any other size is made of. At 125 and
    // 175 % a toolbar needs 25 and 35 pixels, a row 20 and 28.
    for (const int icon : icons) EXPECT_THAT(IconSizes(icon), IsSupersetOf({16, 20, 24, 40, 256}));
    for (const int icon : {IDI_Program, IDI_Document, IDI_Folder, IDI_File, IDI_Rule, IDI_Tray_0}) {
        EXPECT_THAT(IconSizes(icon), IsSupersetOf({28, 32, 48, 64})) << icon;
    }
    for (const int icon : {IDI_FileOpen, IDI_EditAddFile, IDI_ActionBackup, IDI_ActionRestore}) {
        EXPECT_THAT(IconSizes(icon), IsSupersetOf({25, 30, 35})) << icon;
    }
}

}  // namespace
}  // namespace vw::test
