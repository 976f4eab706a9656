#include "console/DestinationCheck.h"
#include "engine/CopyLabel.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "console/Console.h"
#include "console/Findings.h"
#include "console/StoredCopies.h"
#include "console/TreeComparison.h"
#include "engine/CommentLine.h"
#include "engine/CopyName.h"
#include "fsutil/NewestDate.h"
#include "fsutil/PathText.h"
#include "fsutil/WorkingName.h"
#include "platform/ProcessTag.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/NestedItems.h"

namespace vw {
namespace {

constexpr int kFirstSafetyNumber = 21;

std::wstring_view WithoutCommentExtension(std::wstring_view name) {
    if (name.ends_with(kCommentExtension)) name.remove_suffix(kCommentExtension.size());
    return name;
}

// The newest file of a folder copy may be missing in it: those below the sub-folders of a rule
// count for the date and are not copied. A file in it that is newer was never part of it.
void CheckComment(Console& console, const CopyEntry& copy, Findings& findings) {
    const auto comment = CommentOf(console, copy.path);
    const auto facts = console.system.files.Stat(copy.path);
    if (!comment || !facts) return;
    if (comment->isIncomplete) {
        findings.Add(L"incomplete", copy.path, L"");
        return;
    }
    const auto date = comment->date;
    const NewestDates own =
        NewestFileDates(console.system.files, copy.path, [] { Console::StopIfRequested(); });
    const bool fits = date && (IsSameDate(*date, own.newest) ||
                               IsSameDate(*date, own.newestByPresentRules.value_or(own.newest)) ||
                               (facts->isFolder && !own.IsAfter(*date)));
    if (!fits) findings.Add(L"comment", copy.path, L"its date is not that of the copy");
}

void CheckSeries(Console& console, const CopyGroup& series,
                 const std::set<std::wstring>& checkedCopies, Findings& findings) {
    const std::vector<NestedItem> nested =
        FindNestedItems(console.system.files, console.system.pump, series);
    for (const CopyEntry& copy : series.copies) {
        const int number = CFileBackNumber(MFileDosShell::CFileName(copy.path));
        if (number >= kFirstSafetyNumber) findings.Note(L"safety", copy.path, L"");
        if (checkedCopies.contains(UpperCase(copy.path))) continue;
        if (copy.hasComment) {
            console.Try([&] { CheckComment(console, copy, findings); });
        } else if (number == 1 &&
                   !(copy.isFolder && HoldsAny(console.system.files, copy.path, nested))) {
            findings.Add(L"no-comment", copy.path, L"the copy has no comment");
        }
    }
}

void CheckEntry(const DestinationView& view, const std::wstring& name, Findings& findings) {
    const std::wstring path = JoinPath(view.Folder(), name);
    const std::wstring_view copy = WithoutCommentExtension(name);
    if (IsCopyName(name) || name.starts_with(kLockFileName)) return;
    if (IsCommentName(name)) {
        const bool isThere = std::ranges::any_of(
            view.Entries(), [&](const auto& entry) { return EqualNoCase(entry.name, copy); });
        if (!isThere) findings.Add(L"comment-alone", path, L"there is no such copy");
    } else if (const auto working = ParseWorkingName(copy)) {
        const bool isLeft = IsGone(working->owner);
        findings.Note(isLeft ? L"left-over" : L"working", path,
                      isLeft ? L"of a run that was ended; the next one completes or removes it"
                             : L"of a run that is going on");
    } else {
        findings.Add(L"foreign", path, L"no copy and no comment");
    }
}

}  // namespace

void CheckDestination(Console& console, const DestinationView& view,
                      const std::set<std::wstring>& checkedCopies, Findings& findings) {
    for (const CopyGroup& series : view.Series()) {
        console.Try([&] { CheckSeries(console, series, checkedCopies, findings); });
    }
    for (const DestinationEntry& entry : view.Entries()) CheckEntry(view, entry.name, findings);
}

}  // namespace vw
