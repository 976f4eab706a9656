// Copy names are taken apart without a failure, whatever they are, and names of the working area
// are never mistaken for copies.
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "fsutil/WorkingName.h"
#include "platform/Wildcards.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Guarantee;

namespace {

void ReadAnyName(const std::wstring& name) {
    const int number = vw::CFileBackNumber(name);
    Guarantee(number >= 0 && number <= 99, "a copy number has two digits");
    const std::size_t length = vw::CFileSP(name).size();
    Guarantee(length == 0 || length == 2, "a location number has two characters");
    const std::wstring origin = vw::CFileOrigin(name);
    Guarantee(name.find(L'\u00AB') != std::wstring::npos || origin.empty(), "no mark, no origin");
}

void NameAndReadBack(const std::wstring& item, int location, int number) {
    const std::wstring copy = vw::CFilePackageName(item, number, location, L"E:\\Store");
    const std::wstring any = vw::CFilePackageName(item, vw::kAnyCopyNumber, location, L"E:\\Store");
    Guarantee(vw::MatchesWildcard(copy, vw::kCopyNamePattern), "a copy is known by its name");
    // Guillemets of the item's own name cannot be distinguished from those of the copy.
    const bool isPlain = item.find_first_of(L"\u00AB\u00BB") == std::wstring::npos;
    if (isPlain) {
        // "#" and "[" match other characters in a pattern.
        Guarantee(item.find_first_of(L"#[") != std::wstring::npos || vw::MatchesWildcard(copy, any),
                  "all copies match the name of any");
        Guarantee(vw::CFileBackNumber(copy) == number, "the copy number comes back");
        Guarantee(std::stoi(vw::CFileSP(copy)) == location, "the location number comes back");
        Guarantee(vw::CFileOrigin(copy) == L"E:\\Store\\" +
                                               vw::MFileDosShell::CFileFirstName(item) +
                                               vw::MFileDosShell::CFileExt(item),
                  "the origin comes back");
    }
}

void WorkingNames(vw::fuzz::Input& input, const std::wstring& text) {
    vw::WorkingName name;
    name.state = static_cast<vw::WorkingState>(input.Byte() % 3);
    name.item = input.Number(8);
    name.copy = input.Number(8);
    name.date = vw::kFirstDate + std::chrono::seconds{input.Number(5)};
    name.date = name.date > vw::kLastDate ? vw::kNoDate : name.date;
    name.owner = {static_cast<std::uint32_t>(input.Number(4)),
                  static_cast<std::uint32_t>(input.Number(4)), input.Number(8)};
    const std::wstring entry = vw::FormatWorkingName(name, text);
    Guarantee(entry.size() <= 200, "a working name is short");
    Guarantee(!vw::MatchesWildcard(entry, L"*\u00AB*"), "a working name is no copy's");
    Guarantee(vw::ParseWorkingName(entry) == name, "a working name comes back");

    // One changed character: what is still taken for a working name is one in every part.
    std::wstring changed = entry;
    changed[input.Number(2) % changed.size()] = static_cast<wchar_t>(input.Number(2));
    if (const auto parsed = vw::ParseWorkingName(changed)) {
        const std::size_t tail = changed.rfind(L".vw");
        Guarantee(vw::FormatWorkingName(*parsed, changed.substr(0, tail)) == changed,
                  "only names of our own making are taken for working names");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    const int location = input.Byte() % 100;
    const int number = 1 + input.Byte() % 99;
    const std::wstring text = input.Text();

    ReadAnyName(text);
    NameAndReadBack(text, location, number);
    (void)vw::ParseWorkingName(text);
    (void)vw::NameKey(text);
    WorkingNames(input, text);
    return 0;
}
