// Folder names come back from their encoded form, which has 7-bit characters only; any other text
// is decoded without a failure.
#include <algorithm>

#include "engine/NameEncoding.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Guarantee;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    const vw::AnsiCodec& ansi = vw::fuzz::AnyCodePage(input);
    const std::wstring text = input.RestAsText();

    const std::wstring decoded = vw::EnglishNameOrigin(text, ansi);
    Guarantee(decoded.size() <= text.size(), "decoding makes nothing longer");

    const std::wstring encoded = vw::EnglishNameFrom(text, ansi);
    Guarantee(std::all_of(encoded.begin(), encoded.end(),
                          [](wchar_t character) { return character < 0x80; }),
              "an encoded name has 7-bit characters only");
    if (text.find(L'\'') == std::wstring::npos) {
        Guarantee(vw::EnglishNameOrigin(encoded, ansi) == text, "a name comes back");
    }
    return 0;
}
