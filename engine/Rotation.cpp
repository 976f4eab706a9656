#include <algorithm>
#include <utility>
#include <vector>

#include "engine/CopyName.h"
#include "engine/CopySeries.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeOperations.h"
#include "platform/RuntimeError.h"

namespace vw {

Rotation CopySeries::Rotate(std::wstring_view path, std::int16_t location, Room room) {
    Rotation rotation = Rotation::RolledBack;
    trap_(L"RenamePackages", [&] {
        if (state_.copiesCount <= 0) Throw(error_number::kZeroCopyNumber, path);
        if (session_.Enter() != Entrance::Entered) return;
        const bool wasCutOff = WasCutOff(path, location);
        if (wasCutOff) session_->Displaced().Keep(path);
        const bool completes = wasCutOff || room == Room::CompleteRotation;
        const Shift shift =
            ShiftCopies(path, location, completes ? LowestGap(path, location) : state_.copiesCount);
        rotation = shift.outcome;
        if (shift.error) throw RuntimeError(*shift.error);
        session_->Displaced().Remove(path);
    });
    return rotation;
}

// The copy that leaves its series first is removed last, so while it is there the other copies may
// not all have moved.
bool CopySeries::WasCutOff(std::wstring_view path, std::int16_t location) {
    for (int number = 2; number <= kHighestCopyNumber; ++number) {
        if (session_->Displaced().Contains(
                path, CFilePackageName(path, number, location, session_.Target()))) {
            return true;
        }
    }
    return false;
}

// Copy `last` leaves the series, the copies below it move up by one. At the first one that cannot
// be moved all go back: a locked copy must not cost the user another one at every run.
CopySeries::Shift CopySeries::ShiftCopies(std::wstring_view path, std::int16_t location, int last) {
    const auto copyName = [&](int number) {
        return CFilePackageName(path, number, location, session_.Target());
    };
    std::vector<std::pair<std::wstring, std::wstring>> moved;
    std::vector<std::wstring> targets;
    // Copies of items below a dotted folder are in folders of their own, which are removed with
    // them.
    const auto removeEmptyParents = [&](const std::wstring& copy) {
        RemoveEmptyFolders(system_.files, MFileDosShell::CFileLocation(copy), session_->Folder());
    };
    const auto move = [&](const std::wstring& from, const std::wstring& to) {
        session_.MoveEntry(from, to);
        moved.emplace_back(from, to);
    };
    std::wstring leaving;
    try {
        if (last > 0 && session_.Contains(copyName(last))) {
            leaving = session_->WorkingPath(WorkingState::Old, path, copyName(last));
            move(copyName(last), leaving);
        }
        for (int number = last - 1; number >= 1; --number) {
            const std::wstring from = copyName(number);
            if (!session_.Contains(from)) continue;
            const std::wstring to = copyName(number + 1);
            targets.push_back(to);
            CreateFolders(system_.files, MFileDosShell::CFileLocation(to));
            move(from, to);
        }
    } catch (const RuntimeError& error) {
        const Rotation outcome = MoveBack(moved) ? Rotation::RolledBack : Rotation::RollbackFailed;
        for (const std::wstring& to : targets) removeEmptyParents(to);
        return {outcome, error};
    }
    if (!leaving.empty()) Remove(leaving);
    for (const auto& [from, to] : moved) removeEmptyParents(from);
    return {};
}

bool CopySeries::MoveBack(const std::vector<std::pair<std::wstring, std::wstring>>& moved) {
    try {
        std::for_each(moved.rbegin(), moved.rend(),
                      [this](const auto& move) { session_.MoveEntry(move.second, move.first); });
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

int CopySeries::LowestGap(std::wstring_view path, std::int16_t location) {
    int number = 1;
    while (number < state_.copiesCount &&
           session_.Contains(CFilePackageName(path, number, location, session_.Target()))) {
        ++number;
    }
    return std::min<int>(number, state_.copiesCount);
}

}  // namespace vw
