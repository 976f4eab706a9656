#include <algorithm>

#include "tests/system/CrashScenario.h"

namespace vw::test {

std::vector<std::wstring> CrashScenario::AfterFault(int exitCode, std::wstring_view reports) {
    SettleLocations();
    mayBePartial_ = true;
    std::vector<std::wstring> faults = AfterKill();
    mayBePartial_ = false;
    const auto done = std::count_if(items_.begin(), items_.end(), [&](const Item& item) {
        return (!IsDue(item) || item.newStands) && !item.isPartial;
    });
    // The console program writes "error: path: reason"; its error number is its exit code.
    const bool isConsole = reports.starts_with(L"error: ");
    const std::wstring before = isConsole ? L"error: " : L"\r\n";
    const std::wstring behind = isConsole ? L": " : L"\r\n";
    const auto names = [&](const std::wstring& path) {
        return reports.find(before + path) != std::wstring_view::npos;
    };
    if (exitCode == 0) {
        for (const std::wstring& fault : AfterNextRun()) {
            // What could not be cleaned away waits for the next run.
            if (fault.starts_with(L"left over: ") && IsWorkingEntry(fault)) continue;
            faults.push_back(L"although nothing was told, " + fault);
        }
        return faults;
    }
    // Without the list or the destination nothing can be done at all.
    const bool isAll = names(List() + behind) || names(Vault() + behind) ||
                       names(Vault() + L"\\" + behind) ||
                       names(Vault() + L"\\Vaultwright.vwlock" + behind);
    if (static_cast<std::size_t>(done) + 1 < items_.size() && !isAll) {
        faults.push_back(L"the fault cost " + std::to_wstring(items_.size() - done) + L" items");
    }
    if (!isConsole && reports.find(L"Error " + std::to_wstring(exitCode) + L" in line ") ==
                          std::wstring_view::npos) {
        faults.push_back(L"exit code " + std::to_wstring(exitCode) + L" but no such report");
    }
    if (!names(folder_)) {
        faults.emplace_back(L"no report names a path");
    }
    return faults;
}

// Of two files of one name, the first that is stored at all gets the first location number: when
// the copy of the first one failed, the other one has it.
void CrashScenario::SettleLocations() {
    if (history_ != History::None) return;
    Item& first = items_.front();
    Item& second = items_.back();
    const std::wstring copy = Vault() + L"\\" + CopyName(first, 1);
    if (Exists(copy) && ReadBytes(copy) == Content(second, NewestState(second)).at(L"").bytes) {
        std::swap(first.location, second.location);
    }
}

bool CrashScenario::IsDue(const Item& item) const { return item.changes || StatesBefore().empty(); }

bool CrashScenario::IsPartOfNewest(const Item& item, const Tree& content) const {
    if (!IsFolder(item)) return false;
    const Tree whole = Content(item, NewestState(item));
    return std::all_of(content.begin(), content.end(), [&](const auto& node) {
        const auto found = whole.find(node.first);
        return found != whole.end() && found->second == node.second;
    });
}

}  // namespace vw::test
