#include "engine/CPackage.h"

#include <limits>
#include <utility>

#include "engine/CopyName.h"
#include "engine/EngineProcedure.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "platform/EventPump.h"
#include "platform/ExitStatus.h"
#include "platform/MsgBox.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "platform/UserLocale.h"

namespace vw {

CPackage::CPackage(System& system, ProgramState& state, RunHost& host)
    : system_(system),
      state_(state),
      host_(host),
      separators_{OneCharacterSeparator(UserDateSeparator(), L'/'),
                  OneCharacterSeparator(UserTimeSeparator(), L':')},
      duringCopy_([this] { host_.DuringCopy(); }),
      patience_(system, state.cancelRequested) {}

void CPackage::GetBackupTo() {
    Trapped(system_.errors, EngineProcedure(L"GetBackupTo"), [&] {
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
    Trapped(system_.errors, EngineProcedure(L"ErrorOnBackupFolderNotExists"), [&] {
        const auto facts = system_.files.Look(TargetFolder());
        if (facts && facts->isFolder) return;
        system_.exitStatus.Note(error_number::kPathNotFound);
        system_.boxes.MsgBox({.text = L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\n" + Target(),
                              .icon = BoxIcon::Exclamation,
                              .rightToLeft = true});
        host_.EndAtOnce();
    });
}

std::int16_t CPackage::LocationID(std::wstring_view path) {
    std::int16_t location = -1;
    Trapped(system_.errors, {L"LocationID", L"Module", L"MVaultwright"},
            [&] { location = FindLocation(path); });
    return location;
}

std::int16_t CPackage::FindLocation(std::wstring_view path) {
    const std::wstring folder = MFileDosShell::CFileLocation(path);
    const bool isFile = ItemKindOf(path) == ItemKind::File;
    for (int number = 0; number <= std::numeric_limits<std::int16_t>::max(); ++number) {
        system_.pump.DoEventsIfDue();
        const std::wstring copy = CFilePackageName(path, 1, number, Target());
        // A copy that a killed run left ready keeps its place: another item may not move in.
        if (isFile && destination_ && destination_->AwaitedByOther(copy, path)) continue;
        if (destination_ && !destination_->MayHold(copy)) {
            return static_cast<std::int16_t>(number);
        }
        const auto facts = system_.files.Look(copy);
        if (!facts || facts->isFolder) return static_cast<std::int16_t>(number);
        std::wstring comment = ReadFirstComment(copy);
        // The folder of another item may lie on a drive that cannot be asked.
        if (EqualNoCase(NamedLocation(comment), folder) &&
            EqualNoCase(OriginalLocation(comment), folder)) {
            // The run asks for its date next.
            if (destination_) destination_->Remember(copy, std::move(comment));
            return static_cast<std::int16_t>(number);
        }
    }
    Raise(error_number::kOverflow, path);
}

bool CPackage::CopyStands(std::wstring_view copyPath) {
    if (destination_ && !destination_->MayHold(copyPath)) return false;
    return system_.files.Look(copyPath).has_value();
}

void CPackage::MoveEntry(std::wstring_view from, std::wstring_view to, std::uint64_t patience) {
    patience_.Perform([&] { system_.files.Move(from, to); }, {}, patience);
    destination_->Left(from);
    destination_->Added(to);
}

void CPackage::Tell(const RunText& text, std::wstring_view path) {
    host_.Notice(text.With(state_.arabic, path));
}

}  // namespace vw
