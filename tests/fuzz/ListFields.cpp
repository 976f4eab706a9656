// Whatever a list file holds, it is read to its end, field by field, and no key line becomes an
// item.
#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "list/format/ListText.h"
#include "platform/TextCase.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Guarantee;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    const vw::AnsiCodec& ansi = vw::fuzz::AnyCodePage(input);
    const bool isUtf8 = input.Byte() % 2 == 0;
    std::string bytes(input.Rest());
    if (isUtf8) {
        bytes.insert(0, "\xEF\xBB\xBF");
    }
    const std::wstring text =
        vw::fuzz::WithWords(vw::DecodeList(bytes, ansi), {L"BackupTo:", L"BACKAGES: ", L"\r\n"});

    vw::FieldReader reader(text);
    std::size_t fieldCount = 0;
    std::size_t characterCount = 0;
    while (!reader.AtEnd()) {
        const std::wstring field = reader.Next();
        Guarantee(++fieldCount <= text.size(), "every field takes a character of the text");
        characterCount += field.size();
        Guarantee(field.find(L'\x1A') == std::wstring::npos, "the text ends at Ctrl-Z");

        const vw::ListLine line = vw::ReadListLine(field);
        switch (line.kind) {
            case vw::ListLineKind::Empty:
                Guarantee(field.empty(), "only an empty field says nothing");
                break;
            case vw::ListLineKind::Destination:
                Guarantee(vw::CompleteDestination(line.value).size() >= 3,
                          "a complete destination");
                [[fallthrough]];
            case vw::ListLineKind::CopiesCount:
                Guarantee(field.ends_with(line.value), "a value ends its field");
                Guarantee(line.value.size() <= field.size() - 9, "key and colon are no value");
                break;
            case vw::ListLineKind::Item:
                Guarantee(line.value == field, "an item is its whole field");
                Guarantee(!vw::EqualNoCase(field.substr(0, 9), L"BackupTo:"), "no key is an item");
                Guarantee(!vw::EqualNoCase(field.substr(0, 9), L"Backages:"), "no key is an item");
                (void)vw::ItemKindOf(field);
                break;
        }
    }
    Guarantee(characterCount <= text.size(), "fields hold nothing but the text");
    Guarantee(reader.Next().empty(), "behind the end all fields are empty");
    return 0;
}
