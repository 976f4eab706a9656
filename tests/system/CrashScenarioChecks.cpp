#include <algorithm>

#include "fsutil/WorkingName.h"
#include "platform/Utf8.h"
#include "tests/support/DestinationChecker.h"
#include "tests/system/CrashScenario.h"

namespace vw::test {

namespace {

/// What is at `name` and below it, in the form of CrashScenario::Content; empty for nothing.
Tree PartOf(const Tree& vault, const std::wstring& name) {
    Tree part;
    const std::wstring below = name + L"\\";
    for (const auto& [path, node] : vault) {
        if (path == name) part[L""] = node;
        if (path.starts_with(below)) part[path.substr(below.size())] = node;
    }
    return part;
}

std::wstring TopOf(const std::wstring& path) { return path.substr(0, path.find(L'\\')); }

// The separators of dates are the user's own.
std::string WithoutSeparators(std::string comment) {
    constexpr std::size_t kDate = 32;
    for (const std::size_t at : {2U, 5U, 10U, 13U, 16U}) {
        if (kDate + at < comment.size()) comment[kDate + at] = '?';
    }
    return comment;
}

bool SameComment(const Tree& vault, const std::wstring& name, const std::string& expected) {
    const auto found = vault.find(name);
    return found != vault.end() && !found->second.isFolder &&
           WithoutSeparators(found->second.bytes) == WithoutSeparators(expected);
}

/// The tree with the folders that a path lies in.
void AddWithParents(Tree& tree, const std::wstring& path, const TreeNode& node) {
    for (std::size_t end = path.find(L'\\'); end != std::wstring::npos;
         end = path.find(L'\\', end + 1)) {
        tree[path.substr(0, end)].isFolder = true;
    }
    tree[path] = node;
}

}  // namespace

std::vector<std::wstring> CrashScenario::AfterKill() {
    std::vector<std::wstring> faults;
    const Tree vault = ReadTree(Vault());
    killedState_ = state_;
    CheckNames(vault, faults);
    for (Item& item : items_) CheckCopies(vault, item, faults);
    CheckDestination(faults);
    return faults;
}

// Of the copies before, all must still be there in their order; the oldest may have been driven
// out, once the new copy is whole. They have moved up by at most one number.
void CrashScenario::CheckCopies(const Tree& vault, Item& item,
                                std::vector<std::wstring>& faults) const {
    const std::vector<int> before = StatesBefore();
    const int newest = NewestState(item);
    item.isPartial = false;
    std::map<int, int> numberOfState;
    int last = 0;
    for (int number = 1; number <= kCopies; ++number) {
        const std::wstring name = CopyName(item, number);
        const Tree copy = PartOf(vault, name);
        if (copy.empty()) continue;
        int state = StateOf(item, copy);
        const bool mayLack = number == 1 && (mayBePartial_ || item.lacksFiles);
        if (state == 0 && mayLack && IsPartOfNewest(item, copy)) {
            item.isPartial = true;
            state = newest;
        }
        if (state == 0) {
            faults.push_back(L"not whole: " + name);
        } else if (numberOfState.contains(state)) {
            faults.push_back(L"twice: " + name);
        } else if (last != 0 && state >= last) {
            faults.push_back(L"not older than the copy before it: " + name);
        }
        numberOfState[state] = number;
        last = state;
    }
    const bool isDue = IsDue(item);
    const bool isReady = isDue && ReadyCopyStands(vault, item);
    item.newStands = isReady || (isDue && numberOfState.contains(newest));
    for (std::size_t i = 0; i < before.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        const auto found = numberOfState.find(before[i]);
        const bool mayGo = item.changes && item.newStands && i + 1 == before.size();
        if (found == numberOfState.end()) {
            if (!mayGo) faults.push_back(L"gone: " + CopyName(item, number));
        } else if (found->second != number && !(item.newStands && found->second == number + 1)) {
            faults.push_back(L"moved: " + CopyName(item, number) + L" is number " +
                             std::to_wstring(found->second));
        }
    }
    if (isDue && numberOfState.contains(newest) && numberOfState.at(newest) != 1) {
        faults.push_back(L"the new copy is not the first: " + CopyName(item, 1));
    }
    const auto first = std::find_if(numberOfState.begin(), numberOfState.end(),
                                    [](const auto& entry) { return entry.second == 1; });
    CheckComment(vault, item, first == numberOfState.end() ? 0 : first->first, faults);
}

// `newest`: the state of copy 1, 0 when there is none.
void CrashScenario::CheckComment(const Tree& vault, const Item& item, int newest,
                                 std::vector<std::wstring>& faults) const {
    const std::wstring name = CopyName(item, 1) + L".vwc";
    if (newest != 0) {
        // A copy without some of its files is marked.
        std::string expected = Comment(item, newest);
        if (item.isPartial) expected += kIncompleteMark;
        // The mark goes last, when the copy is whole already.
        const bool isCompleted =
            item.lacksFiles && SameComment(vault, name, expected + kIncompleteMark);
        if (!isCompleted && !SameComment(vault, name, expected)) {
            faults.push_back(L"not the comment of its copy: " + name);
        }
        return;
    }
    if (!vault.contains(name)) return;
    const std::vector<int> before = StatesBefore();
    const bool isOld = !before.empty() && SameComment(vault, name, Comment(item, before.front()));
    if (!isOld && !SameComment(vault, name, Comment(item, NewestState(item)))) {
        faults.push_back(L"a comment that fits no copy: " + name);
    }
}

bool CrashScenario::IsWorkingEntry(const std::wstring& name) {
    return name.find(L".vwnew-") != std::wstring::npos ||
           name.find(L".vwready-") != std::wstring::npos ||
           name.find(L".vwpart-") != std::wstring::npos ||
           name.find(L".vwcut-") != std::wstring::npos ||
           name.find(L".vwold-") != std::wstring::npos ||
           name.find(kLockFileName) != std::wstring::npos;
}

bool CrashScenario::ReadyCopyStands(const Tree& vault, const Item& item) const {
    return std::any_of(vault.begin(), vault.end(), [&](const auto& entry) {
        const std::wstring& name = entry.first;
        return name.find(L'\\') == std::wstring::npos &&
               name.find(L".vwready-") != std::wstring::npos &&
               PartOf(vault, name) == Content(item, NewestState(item));
    });
}

void CrashScenario::CheckNames(const Tree& vault, std::vector<std::wstring>& faults) const {
    std::vector<std::wstring> known;
    for (const Item& item : items_) {
        for (int number = 1; number <= kCopies; ++number) {
            known.push_back(TopOf(CopyName(item, number)));
        }
        known.push_back(TopOf(CopyName(item, 1) + L".vwc"));
    }
    for (const auto& [path, node] : vault) {
        if (path.find(L'\\') != std::wstring::npos) continue;
        if (IsWorkingEntry(path)) {
            const bool isReady = path.find(L".vwready-") != std::wstring::npos;
            if (isReady && !path.ends_with(L".vwc") &&
                std::none_of(items_.begin(), items_.end(),
                             [this, ready = PartOf(vault, path)](const Item& item) {
                                 return ready == Content(item, NewestState(item));
                             })) {
                faults.push_back(L"ready but not whole: " + path);
            }
        } else if (std::find(known.begin(), known.end(), path) == known.end()) {
            faults.push_back(L"unexplained: " + path);
        }
    }
}

// The checker of destinations is independent of this model.
void CrashScenario::CheckDestination(std::vector<std::wstring>& faults) const {
    DestinationChecker checker(Vault());
    for (const Item& item : items_) {
        for (int state = 1; state <= NewestState(item); ++state) {
            Tree content = Content(item, state);
            if (IsFolder(item)) content.erase(L"");
            checker.LearnState(folder_ + L"\\" + item.line, std::move(content),
                               MakeDate({2024, 1, state, 12, 0, 0}));
        }
        if (item.isPartial) checker.AllowPartialOlderCopies();
    }
    const std::string violations = checker.Violations();
    if (!violations.empty()) faults.push_back(FromUtf8(violations));
}

std::vector<std::wstring> CrashScenario::AfterNextRun() const {
    std::vector<std::wstring> faults;
    CheckDestination(faults);
    Tree vault = ReadTree(Vault());
    Tree expected;
    for (const Item& item : items_) {
        std::vector<int> states;
        const int newest = NewestState(item);
        if (IsDue(item)) states.push_back(newest);
        if (item.changes && item.newStands && killedState_ != newest) {
            states.push_back(killedState_);
        }
        for (const int state : StatesBefore()) states.push_back(state);
        states.resize(std::min<std::size_t>(states.size(), kCopies));

        for (std::size_t i = 0; i < states.size(); ++i) {
            const std::wstring name = CopyName(item, static_cast<int>(i) + 1);
            // The next run completes it, unless its item has changed since.
            const bool isPartial = item.isPartial && states[i] == killedState_ && i > 0;
            for (const auto& [below, node] : Content(item, states[i])) {
                std::wstring path = name;
                if (!below.empty()) path.append(L"\\").append(below);
                if (isPartial && !vault.contains(path)) continue;
                AddWithParents(expected, path, node);
            }
        }
        const std::wstring comment = CopyName(item, 1) + L".vwc";
        if (!SameComment(vault, comment, Comment(item, states.front()))) {
            faults.push_back(L"not the comment of its copy: " + comment);
        }
        vault.erase(comment);
    }
    for (const auto& [path, node] : expected) {
        const auto found = vault.find(path);
        if (found == vault.end()) {
            faults.push_back(L"missing: " + path);
        } else if (found->second != node) {
            faults.push_back(L"other bytes or date: " + path);
        }
    }
    for (const auto& [path, node] : vault) {
        if (!expected.contains(path)) faults.push_back(L"left over: " + path);
    }
    return faults;
}

}  // namespace vw::test
