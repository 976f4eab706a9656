// A folder of copies may hold any names: labels and numbers come back, every copy belongs to its
// own item, and an item is listed once.
#include <set>

#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/TextCase.h"
#include "platform/Val.h"
#include "restore/CopiesIndex.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Promise;

namespace {

void Labels(int number) {
    Promise(vw::NumberOfLabel(vw::CopyLabel(number)) == number, "a label tells its number");
    const int next = vw::NextSafetyNumber(number);
    Promise(next > number && next > 20, "a safety copy takes the place of no copy");
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
    // Behind the marks stands what began with the last point of the item's name, if it had one.
    const std::size_t point = name.rfind(L'.');
    const bool hasExtension = point != name.npos;
    return name.find_first_of(L"\\/:*?\"<>|") == name.npos &&
           (hasExtension ? point == close + 1 : close + 1 == name.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    Labels(input.Byte() % 100);

    vw::ItemsSeen seen;
    std::set<std::wstring> listed;
    while (!input.IsEmpty()) {
        std::wstring name = input.Text();
        if (input.Byte() % 2 != 0) {
            name += L"\u00AB" + vw::TwoDigits(input.Byte() % 100) +
                    vw::TwoDigits(input.Byte() % 100) + L"\u00BB" + input.Text();
        }
        (void)vw::NumberOfLabel(name);
        (void)vw::CopyFolderOf(name);
        if (!vw::IsCopyName(name)) continue;
        const std::wstring origin = vw::CFileOrigin(name);
        const int location = vw::LocationOf(name);
        const bool isNew = seen.IsNew(origin, location);
        Promise(!seen.IsNew(origin, location), "an item is new once");
        const bool first =
            listed.insert(vw::UpperCase(origin) + L"\n" + std::to_wstring(location)).second;
        Promise(isNew == first, "an item has one row");
        if (IsOwnName(name)) {
            const vw::CopiesOfItem copies(origin, location);
            Promise(copies.Contains(name), "a copy is found through its item");
            Promise(!vw::CopiesOfItem(origin, (location + 1) % 100).Contains(name),
                    "a copy is not that of another location");
        }
    }
    return 0;
}
