#include "list/format/ListText.h"

#include <algorithm>

#include "list/format/ListLine.h"
#include "platform/Utf8.h"

namespace vw {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::wstring KeyLine(std::wstring_view key, std::wstring_view value) {
    std::wstring line(key);
    line += L": ";
    line += value;
    return line;
}

}  // namespace

std::wstring DecodeList(std::string_view bytes, const AnsiCodec& ansi) {
    if (bytes.starts_with(kUtf8Mark)) {
        return FromUtf8(bytes.substr(kUtf8Mark.size()));
    }
    return ansi.Decode(bytes);
}

std::string EncodeList(std::wstring_view destination, std::int16_t copiesCount,
                       std::span<const std::wstring> items, const AnsiCodec& ansi) {
    std::wstring text;
    bool ansiHoldsAll = true;
    // Without the mark, a computer with another code page would read other names.
    const auto isSevenBit = [](wchar_t unit) { return unit < 0x80; };
    const auto append = [&](std::wstring_view line) {
        ansiHoldsAll = ansiHoldsAll && ansi.Holds(line) &&
                       (!ansi.IsUnicode() || std::all_of(line.begin(), line.end(), isSevenBit));
        text += line;
        text += L"\r\n";
    };

    append(KeyLine(kBackupToKey, destination));
    append(KeyLine(kBackagesKey, std::to_wstring(copiesCount)));
    std::for_each(items.begin(), items.end(), append);

    if (ansiHoldsAll) {
        return ansi.Encode(text);
    }
    return std::string(kUtf8Mark) + ToUtf8(text);
}

}  // namespace vw
