// A comment file with any content gives a date or error 5, never anything else; a comment that was
// written gives its date and folder back.
#include "engine/CommentLine.h"
#include "engine/NameEncoding.h"
#include "platform/RuntimeError.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Guarantee;

namespace {

void ReadAnyComment(const std::wstring& text, const vw::AnsiCodec& ansi) {
    const std::wstring line = vw::FirstLine(text);
    Guarantee(line.find_first_of(L"\r\n") == std::wstring::npos, "a line is one line");
    if (const auto location = vw::CommentLocationField(line)) {
        (void)vw::EnglishNameOrigin(*location, ansi);
    }
    const auto field = vw::CommentDateField(line);
    if (!field) {
        return;
    }
    try {
        const vw::Date date = vw::ReadCommentDate(vw::EnglishNameOrigin(*field, ansi));
        Guarantee(date >= vw::kFirstDate && date <= vw::kLastDate, "a date of the calendar");
    } catch (const vw::RuntimeError& error) {
        Guarantee(error.Number() == vw::error_number::kInvalidCall, "a field that is no date");
    }
}

void WriteAndReadBack(vw::fuzz::Input& input, const vw::AnsiCodec& ansi) {
    const std::chrono::seconds number{input.Number(5)};
    const vw::Date date =
        vw::kFirstDate + number % (vw::kLastDate - vw::kFirstDate + std::chrono::seconds{1});
    const vw::DateSeparators separators{
        vw::OneCharacterSeparator(input.Text(), L'/'),
        vw::OneCharacterSeparator(input.Text(), L':'),
    };
    std::wstring folder = input.RestAsText();
    std::erase_if(folder, [](wchar_t character) { return character < L' ' || character == L'\''; });

    const std::wstring line = vw::CommentLine(date, separators, vw::EnglishNameFrom(folder, ansi));
    Guarantee(ansi.Holds(line), "a comment stays in the code page");
    Guarantee(vw::FirstLine(line + L"\r\n") == line, "a comment is one line");
    const auto field = vw::CommentDateField(line);
    Guarantee(field.has_value(), "a comment has a date");
    Guarantee(vw::ReadCommentDate(*field) == date, "the date comes back");
    Guarantee(vw::ReadCommentDate(vw::EnglishNameOrigin(*field, ansi)) == date,
              "the date comes back through decoding");
    const auto location = vw::CommentLocationField(line);
    Guarantee(location.has_value(), "a comment has a folder");
    Guarantee(vw::EnglishNameOrigin(*location, ansi) == folder, "the folder comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    const vw::AnsiCodec& ansi = vw::fuzz::AnyCodePage(input);
    switch (input.Byte() % 3) {
        case 0:
            ReadAnyComment(
                vw::fuzz::WithWords(input.RestAsText(), {L"backed files date last modified:",
                                                         L"Original Location:", L"05/03/2005"}),
                ansi);
            break;
        case 1:  // a comment whose date field is damaged
            ReadAnyComment(vw::CommentLine(vw::kNoDate, {}, {}).substr(0, 32) + input.RestAsText(),
                           ansi);
            break;
        default:
            WriteAndReadBack(input, ansi);
            break;
    }
    return 0;
}
