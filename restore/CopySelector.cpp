#include "restore/CopySelector.h"

#include "engine/CPackage.h"
#include "engine/CopyComment.h"
#include "fsutil/FileQueries.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreTexts.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"

namespace vw {

CopySelector::CopySelector(System& system, Form& main, CopiesBrowser& browser,
                           EngineProvider engine)
    : system_(system), main_(main), browser_(browser), engine_(std::move(engine)) {}

std::optional<CopySelection> CopySelector::Read(bool needsCopy) {
    if (!browser_.FollowSelection()) return std::nullopt;
    auto selection = browser_.Selection();
    if (!selection || (needsCopy && selection->copy.path.empty())) {
        system_.boxes.Show({.text = main_.Text(control::lblNoRestore), .rightToLeft = true});
        return std::nullopt;
    }
    if (!browser_.IsStillShown(selection->folder)) {
        ThrowWith(error_number::kFileNotFound, In(restore_text::kFolderChanged),
                  needsCopy ? selection->copy.path : selection->folder);
    }
    return selection;
}

// A run of another process may have moved the copies since they were listed: under the name of the
// one that the user saw another one would be. The comment of an item's copies moves with them, so
// it counts where there is one.
bool CopySelector::IsUnchanged(const CopySelection& selection, const ListedCopy& copy) {
    const auto facts = system_.files.Stat(copy.path);
    if (!facts || facts->isFolder != copy.isFolder) return false;
    if (!facts->isFolder && static_cast<std::int64_t>(facts->size) != copy.size) return false;
    if (MFileDosShell::PathDate(system_, engine_(), copy.path) != copy.date) return false;
    const auto names = [this](const std::wstring& commentOf, const std::wstring& place) {
        if (commentOf.empty() || place.empty()) return true;
        const auto comment = ReadCopyComment(system_, commentOf);
        return !comment || EqualNoCase(comment->place, place);
    };
    return names(selection.item.commentOf, selection.item.place) && names(copy.path, copy.place);
}

void CopySelector::RequireUnchanged(const CopySelection& selection, const ListedCopy& copy) {
    if (!browser_.IsStillShown(selection.folder)) {
        ThrowWith(error_number::kFileNotFound, In(restore_text::kFolderChanged), copy.path);
    }
    if (IsUnchanged(selection, copy)) return;
    browser_.ListAnew();
    ThrowWith(error_number::kFileNotFound, In(restore_text::kCopyChanged), copy.path);
}

void CopySelector::ShowMessage(const Texts& text) {
    system_.boxes.Show({.text = In(text), .rightToLeft = main_.InLanguage() == Language::Arabic});
}

std::wstring CopySelector::In(const Texts& text) const {
    return std::wstring(text.In(main_.InLanguage()));
}

}  // namespace vw
