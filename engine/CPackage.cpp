#include "engine/CPackage.h"

#include <utility>

#include "engine/CopyName.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "fsutil/Waking.h"
#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "platform/EventPump.h"
#include "platform/ExitStatus.h"
#include "platform/MsgBox.h"
#include "platform/ProgramControl.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "platform/UserLocale.h"

namespace vw {

CPackage::CPackage(System& system, ProgramState& state, ProgressReporter& progress,
                   ProgramControl& program)
    : system_(system),
      state_(state),
      progress_(progress),
      program_(program),
      separators_{OneCharacterSeparator(UserDateSeparator(), L'/'),
                  OneCharacterSeparator(UserTimeSeparator(), L':')},
      duringCopy_([this] { progress_.DuringCopy(); }),
      patience_(system, state.cancelRequested) {}

void CPackage::GetBackupTo() {
    trap_(L"GetBackupTo", [&] {
        const std::wstring text = ReadCurrentList();
        FieldReader fields(text);
        while (!fields.AtEnd()) {
            const ListLine line = ReadListLine(fields.Next());
            if (line.kind != ListLineKind::Destination) continue;
            state_.BackupTo = CompleteDestination(line.value);
            ErrorOnBackupFolderNotExists();
        }
    });
}

void CPackage::ErrorOnBackupFolderNotExists() {
    trap_(L"ErrorOnBackupFolderNotExists", [&] {
        const auto isThere = [this] {
            const auto facts = system_.files.Look(TargetFolder());
            return facts && facts->isFolder;
        };
        if (IsThereAfterWaking(system_, state_.cancelRequested, isThere)) return;
        system_.exitStatus.Note(error_number::kPathNotFound);
        system_.boxes.MsgBox({.text = L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\n" + Target(),
                              .icon = BoxIcon::Exclamation,
                              .rightToLeft = true});
        program_.EndAtOnce();
    });
}

std::int16_t CPackage::LocationID(std::wstring_view path) {
    const ErrorTrap trap(system_.errors, L"Module", L"MVaultwright");
    return trap.Or(std::int16_t{-1}, L"LocationID", [&] { return FindLocation(path); });
}

bool CPackage::CopyStands(std::wstring_view copyPath) {
    if (destination_ && !destination_->MayHold(copyPath)) return false;
    return system_.files.Look(copyPath).has_value();
}

std::optional<FileFacts> CPackage::Stat(std::wstring_view path) { return system_.files.Look(path); }

void CPackage::MoveEntry(std::wstring_view from, std::wstring_view to, std::uint64_t patience) {
    patience_.Perform([&] { system_.files.Move(from, to); }, {}, patience);
    destination_->Left(from);
    destination_->Added(to);
}

void CPackage::Tell(const RunText& text, std::wstring_view path) {
    progress_.Notice(text.With(state_.arabic, path));
}

}  // namespace vw
