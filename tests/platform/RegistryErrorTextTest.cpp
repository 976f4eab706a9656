#include <ostream>

#include "tests/platform/ApiFixture.h"

namespace vw::test {
namespace {

struct Sentence {
    LSTATUS code;
    std::wstring_view text;
};

// For the messages of failed tests.
std::ostream& operator<<(std::ostream& stream, const Sentence& sentence) {
    return stream << sentence.code;
}

class RegistryErrorTexts : public ApiTest, public testing::WithParamInterface<Sentence> {};

TEST_P(RegistryErrorTexts, EachCode_HasItsExactText) {
    EXPECT_EQ(api.RegGeErrorText(GetParam().code), GetParam().text);
}

// One sentence on one line, so that the table can be searched.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Registry, RegistryErrorTexts, testing::Values(
    Sentence{1009, L"The configuration registry database is corrupt."},
    Sentence{1010, L"The configuration registry key is invalid."},
    Sentence{1011, L"The configuration registry key could not be opened."},
    Sentence{1012, L"The configuration registry key could not be read."},
    Sentence{1013, L"The configuration registry key could not be written."},
    Sentence{1014, L"One of the files in the Registry database had to be recovered by use of a log or alternate copy. The recovery was successful."},
    Sentence{1015, L"The Registry is corrupt. The structure of one of the files that contains Registry data is corrupt, or the system's image of the file in memory is corrupt, or the file could not be recovered because the alternate copy or log was absent or corrupt."},
    Sentence{1016, L"An I/O operation initiated by the Registry failed unrecoverably. The Registry could not read in, or write out, or flush, one of the files that contain the system's image of the Registry."},
    Sentence{1017, L"The system has attempted to load or restore a file into the Registry, but the specified file is not in a Registry file format."},
    Sentence{1018, L"Illegal operation attempted on a Registry key which has been marked for deletion."},
    Sentence{1019, L"System could not allocate the required space in a Registry log."},
    Sentence{1020, L"Cannot create a symbolic link in a Registry key that already has subkeys or values."},
    Sentence{1021, L"Cannot create a stable subkey under a volatile parent key."},
    Sentence{1369, L"The transaction state of a Registry subtree is incompatible with the requested operation."}));
// clang-format on

class RegistryErrorText : public ApiTest {};

TEST_F(RegistryErrorText, OtherCodes_HaveNoText) {
    for (const LSTATUS code : {0, 1022, 1008, 1368, 1370, 5, -1}) {
        EXPECT_EQ(api.RegGeErrorText(code), L"") << code;
    }
    int known = 0;
    for (LSTATUS code = 0; code < 2000; ++code) {
        if (!api.RegGeErrorText(code).empty()) ++known;
    }
    EXPECT_EQ(known, 14);
}

}  // namespace
}  // namespace vw::test
