#include <array>

#include "platform/CCommonAPI.h"

namespace vw {
namespace {

struct ErrorSentence {
    LSTATUS code;
    std::wstring_view text;
};

// The sentences are what programs and support pages are searched for: not a letter changes.
constexpr std::array kErrorSentences{
    ErrorSentence{1009, L"The configuration registry database is corrupt."},
    ErrorSentence{1010, L"The configuration registry key is invalid."},
    ErrorSentence{1011, L"The configuration registry key could not be opened."},
    ErrorSentence{1012, L"The configuration registry key could not be read."},
    ErrorSentence{1013, L"The configuration registry key could not be written."},
    ErrorSentence{1014,
                  L"One of the files in the Registry database had to be recovered by use of a "
                  L"log or alternate copy. The recovery was successful."},
    ErrorSentence{1015,
                  L"The Registry is corrupt. The structure of one of the files that contains "
                  L"Registry data is corrupt, or the system's image of the file in memory is "
                  L"corrupt, or the file could not be recovered because the alternate copy or "
                  L"log was absent or corrupt."},
    ErrorSentence{1016,
                  L"An I/O operation initiated by the Registry failed unrecoverably. The "
                  L"Registry could not read in, or write out, or flush, one of the files that "
                  L"contain the system's image of the Registry."},
    ErrorSentence{1017,
                  L"The system has attempted to load or restore a file into the Registry, but "
                  L"the specified file is not in a Registry file format."},
    ErrorSentence{1018,
                  L"Illegal operation attempted on a Registry key which has been marked for "
                  L"deletion."},
    ErrorSentence{1019, L"System could not allocate the required space in a Registry log."},
    ErrorSentence{1020,
                  L"Cannot create a symbolic link in a Registry key that already has subkeys or "
                  L"values."},
    ErrorSentence{1021, L"Cannot create a stable subkey under a volatile parent key."},
    ErrorSentence{1369,
                  L"The transaction state of a Registry subtree is incompatible with the "
                  L"requested operation."},
};

}  // namespace

std::wstring CCommonAPI::RegGeErrorText(LSTATUS code) {
    return trap_.Or(std::wstring(), L"RegGeErrorText", [&]() -> std::wstring {
        for (const ErrorSentence& sentence : kErrorSentences) {
            if (sentence.code == code) return std::wstring(sentence.text);
        }
        return {};
    });
}

}  // namespace vw
