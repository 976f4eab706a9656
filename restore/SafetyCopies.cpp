#include "restore/SafetyCopies.h"
#include "engine/CopyLabel.h"

#include <algorithm>

#include "engine/CPackage.h"
#include "engine/CopyComment.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "restore/SameContent.h"

namespace vw {

SafetyCopies::Outcome SafetyCopies::Keep(const std::wstring& path, Proof proof,
                                         const SafetySeries& series,
                                         const std::wstring& allNumbersUsed) {
    const bool isStored = IsStored(path, proof, series);
    if (state_.cancel.IsRequested()) return Outcome::Cancelled;
    if (isStored) return Outcome::Kept;
    const std::wstring copyName = FreeName(path, series);
    if (copyName.empty()) ThrowWith(error_number::kOverflow, allNumbersUsed, path);
    const auto facts = system_.files.Stat(path);
    const bool isFolder = facts && facts->isFolder;
    engine_.BackupPath(path, static_cast<std::int16_t>(series.location), isFolder, isFolder,
                       copyName);
    if (!state_.cancel.IsRequested() && SameContent(system_.files, path, copyName))
        return Outcome::Kept;
    RemovePartial(copyName);
    return state_.cancel.IsRequested() ? Outcome::Cancelled : Outcome::Failed;
}

// It has the date of what it was made from, and would count as its safety copy.
void SafetyCopies::RemovePartial(const std::wstring& copyName) {
    ErrorTrap(system_.errors, L"Form", L"frmMain")(L"DoRestore", [&] {
        if (system_.files.Stat(copyName)) engine_.DeleteCopy(copyName);
        const std::wstring comment = CPackage::PackageCommentFile(copyName);
        if (system_.files.Stat(comment)) system_.files.RemoveFile(comment);
    });
}

// The number behind the highest one; when there is none any more, the lowest free one. What is
// there under a name that is due is a safety copy of another item: the user typed its name, or
// restores elsewhere. It is not touched. Empty when every number is used.
std::wstring SafetyCopies::FreeName(const std::wstring& path, const SafetySeries& series) const {
    int highest = 0;
    for (const SafetySeries::Copy& copy : series.copies) highest = std::max(highest, copy.number);
    const auto findFrom = [&](int first) -> std::wstring {
        for (int number = first; number <= kHighestSafetyNumber; ++number) {
            std::wstring copyName = CFilePackageName(path, number, series.location, series.folder);
            if (!system_.files.Stat(copyName)) return copyName;
        }
        return {};
    };
    std::wstring copyName = findFrom(NextSafetyNumber(highest));
    return copyName.empty() ? findFrom(kLowestSafetyNumber) : copyName;
}

bool SafetyCopies::IsStored(const std::wstring& path, Proof proof, const SafetySeries& series) {
    const auto facts = system_.files.Stat(path);
    const Date date = MFileDosShell::NewestDateOf(system_, engine_, path);
    for (const SafetySeries::Copy& copy : series.copies) {
        if (state_.cancel.IsRequested()) return false;
        if (MFileDosShell::NewestDateOf(system_, engine_, copy.path) != date) continue;
        const auto copyFacts = system_.files.Stat(copy.path);
        const bool areFiles = facts && !facts->isFolder && copyFacts && !copyFacts->isFolder;
        if (proof == Proof::Date && areFiles && copy.number < kLowestSafetyNumber) {
            const auto comment = ReadCopyComment(system_, copy.path);
            if (!comment || !comment->isIncomplete) return true;
        }
        if (HasContentOf(system_.files, path, copy.path,
                         [this] { system_.pump.ProcessMessagesIfDue(); })) {
            return true;
        }
    }
    return false;
}

}  // namespace vw
