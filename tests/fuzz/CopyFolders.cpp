// A folder of copies may hold any names: labels and numbers come back, every copy belongs to its
// own item, and an item is listed once.
#include <set>
#include <utility>
#include <vector>

#include "engine/CopyLabel.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/LeadingInt.h"
#include "platform/TextCase.h"
#include "restore/CopyGroup.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Guarantee;

namespace {

void Labels(int number) {
    Guarantee(vw::NumberOfLabel(vw::CopyLabel(number)) == number, "a label tells its number");
    const int next = vw::NextSafetyNumber(number);
    Guarantee(next > number && next > 20, "a safety copy takes the place of no copy");
}

// One pair of marks and digits between them: the names that the program itself makes.
bool IsOwnName(const std::wstring& name) {
    const std::size_t open = name.find(L'\u00AB');
    const std::size_t close = name.find(L'\u00BB');
    if (open == name.npos || close != open + 5) return false;
    if (name.find(L'\u00AB', open + 1) != name.npos || name.find(L'\u00BB', close + 1) != name.npos)
        return false;
    for (std::size_t i = open + 1; i < close; ++i) {
        if (name[i] < L'0' || name[i] > L'9') return false;
    }
    // Behind the marks follows what began with the last point of the item's name, if it had one.
    const std::size_t point = name.rfind(L'.');
    const bool hasExtension = point != name.npos;
    return name.find_first_of(L"\\/:*?\"<>|") == name.npos &&
           (hasExtension ? point == close + 1 : close + 1 == name.size());
}

void EachCopyIsInItsSeries(std::vector<vw::CopyEntry> copies,
                           const std::vector<std::wstring>& comments) {
    const std::size_t count = copies.size();
    std::size_t grouped = 0;
    std::set<std::wstring> listed;
    for (const vw::CopyGroup& series : vw::GroupCopies(std::move(copies), comments)) {
        Guarantee(!series.copies.empty(), "a series has copies");
        Guarantee(
            listed.insert(vw::UpperCase(series.origin) + L"\n" + std::to_wstring(series.location))
                .second,
            "an item has one row");
        for (const vw::CopyEntry& copy : series.copies) {
            const std::wstring name = vw::MFileDosShell::CFileName(copy.path);
            Guarantee(
                vw::UpperCase(vw::ParseCopyName(name).origin) == vw::UpperCase(series.origin) &&
                    vw::ParseCopyName(name).location == series.location,
                "a copy is in its own series");
            Guarantee(!copy.hasComment || series.hasComment, "a comment tells of its series");
        }
        grouped += series.copies.size();
        (void)series.MayHoldOthers();
    }
    Guarantee(grouped == count, "no copy is lost");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    Labels(input.Byte() % 100);

    std::vector<vw::CopyEntry> entries;
    std::vector<std::wstring> comments;
    while (!input.IsEmpty()) {
        std::wstring name = input.Text();
        if (input.Byte() % 2 != 0) {
            name += L"\u00AB" + vw::TwoDigits(input.Byte() % 100) +
                    vw::TwoDigits(input.Byte() % 100) + L"\u00BB" + input.Text();
        }
        (void)vw::NumberOfLabel(name);
        if (vw::IsCommentName(name)) comments.push_back(L"E:\\Backup\\" + name);
        if (!vw::IsCopyName(name)) continue;
        const std::wstring origin = vw::ParseCopyName(name).origin;
        const int location = vw::ParseCopyName(name).location;
        entries.push_back({.path = L"E:\\Backup\\" + name, .isFolder = input.Byte() % 2 != 0});
        if (IsOwnName(name)) {
            const vw::CopiesOfItem copies(origin, location);
            Guarantee(copies.Contains(name), "a copy is found through its item");
            Guarantee(!vw::CopiesOfItem(origin, (location + 1) % 100).Contains(name),
                      "a copy is not that of another location");
        }
    }
    EachCopyIsInItsSeries(std::move(entries), comments);
    return 0;
}
