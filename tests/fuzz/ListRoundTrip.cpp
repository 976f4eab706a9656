// What is written into a list file comes back from it: destination, count and every item that the
// format can hold.
#include <vector>

#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "list/format/ListText.h"
#include "platform/LeadingInt.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Guarantee;

namespace {

/// What no path holds, or what the format is known to lose: separators, Ctrl-Z, blanks and a quote
/// at the beginning.
std::wstring Holdable(std::wstring path) {
    std::erase_if(path, [](wchar_t character) {
        return std::wstring_view(L",\r\n\x1A\"").find(character) != std::wstring_view::npos;
    });
    path.erase(0, path.find_first_not_of(L" \t"));
    return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    const vw::AnsiCodec& ansi = vw::fuzz::AnyCodePage(input);
    const auto copiesCount = static_cast<std::int16_t>(input.Number(2));
    const std::wstring destination = Holdable(input.Text());
    std::vector<std::wstring> items;
    while (!input.IsEmpty()) {
        std::wstring item = Holdable(input.Text());
        if (vw::ReadListLine(item).kind == vw::ListLineKind::Item) {
            items.push_back(std::move(item));
        }
    }

    const std::string bytes = vw::EncodeList(destination, copiesCount, items, ansi);
    const std::wstring text = vw::DecodeList(bytes, ansi);
    vw::FieldReader reader(text);

    const vw::ListLine first = vw::ReadListLine(reader.Next());
    Guarantee(first.kind == vw::ListLineKind::Destination, "the destination comes first");
    Guarantee(first.value == destination, "the destination comes back");
    const vw::ListLine second = vw::ReadListLine(reader.Next());
    Guarantee(second.kind == vw::ListLineKind::CopiesCount, "the count comes second");
    Guarantee(vw::ParseLeadingInt(second.value) == copiesCount, "the count comes back");
    for (const std::wstring& item : items) {
        Guarantee(reader.Next() == item, "every item comes back");
    }
    Guarantee(reader.AtEnd(), "nothing else is in the file");

    Guarantee(vw::EncodeList(destination, copiesCount, items, ansi) == bytes,
              "the same bytes again");
    return 0;
}
