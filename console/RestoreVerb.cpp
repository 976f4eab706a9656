#include <algorithm>
#include <optional>
#include <vector>

#include "console/Console.h"
#include "console/ConsoleList.h"
#include "console/JsonLine.h"
#include "console/MomentText.h"
#include "console/SilentHost.h"
#include "console/StoredCopies.h"
#include "console/Verbs.h"
#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "engine/TargetState.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeOperations.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/SafetyCopies.h"
#include "restore/StoredCopyPath.h"

namespace vw {
namespace {

using MFileDosShell::CFileLocation;
using MFileDosShell::CFileName;

constexpr int kLastRotating = 20;

class Restorer {
  public:
    Restorer(Console& console, CPackage& engine, const RestoreArguments& arguments)
        : console_(console),
          engine_(engine),
          folder_(console.FullPath(arguments.folder)),
          overwrite_(arguments.overwrite) {}

    /// Puts one copy into the folder, while no backup can move it.
    void Restore(const std::wstring& copy) {
        const auto store = StoreOf(copy);
        if (!store) ThrowWith(error_number::kBadName, L"This is the name of no copy", copy);
        if (!console_.system.files.Stat(copy)) Throw(error_number::kFileNotFound, copy);
        const int before = console_.Errors();
        bool entered = false;
        try {
            entered = engine_.InDestination(*store, [&] { RestoreUnderLock(copy, *store); });
        } catch (const EndOfRun&) {
            Throw(error_number::kPathNotFound, *store);
        }
        if (!entered) {
            Throw(console_.state.cancel.IsRequested() ? error_number::kCancelled
                                                      : error_number::kDestinationBusy,
                  *store);
        }
        if (console_.Errors() == before) Show(copy);
    }

  private:
    void RestoreUnderLock(const std::wstring& copy, const std::wstring& store) {
        FileSystem& files = console_.system.files;
        // A run that was waited for may have moved it.
        if (!files.Stat(copy)) Throw(error_number::kFileNotFound, copy);
        const std::wstring target = TargetOf(copy);
        if (IsInStoredCopy(files, folder_, ItemNameOf(copy), store)) {
            ThrowWith(error_number::kAccessError, L"This folder belongs to a stored copy", target);
        }
        const bool exists = files.Stat(target).has_value();
        if (exists && !overwrite_) {
            ThrowWith(error_number::kAlreadyExists, L"It exists already", target);
        }
        const TargetState before =
            exists ? TargetState(files, console_.system.pump, target) : TargetState();
        CreateFolders(files, folder_);
        if (exists) Keep(target, copy, store);
        date_ = engine_.PackageDate(copy);
        engine_.Extract(copy, target, before);
    }

    // Nobody was asked, so only a copy with the same content keeps what will be overwritten;
    // without one a safety copy is made, as the window makes it.
    void Keep(const std::wstring& target, const std::wstring& copy, const std::wstring& store) {
        const std::vector<ShownCopy> all = CopiesIn(console_, DestinationView(console_, store));
        const auto own = std::ranges::find(all, copy, &ShownCopy::path);
        if (own == all.end()) Throw(error_number::kFileNotFound, copy);
        SafetySeries series{store, own->location, {}};
        for (const ShownCopy& one : all) {
            if (one.item != own->item || one.location != own->location) continue;
            series.copies.push_back({one.path, one.number});
        }
        SafetyCopies copies(console_.system, console_.state, engine_);
        switch (copies.Keep(target, SafetyCopies::Proof::Content, series,
                            L"All numbers of safety copies are in use")) {
            case SafetyCopies::Outcome::Kept:
                return;
            case SafetyCopies::Outcome::Cancelled:
                Throw(error_number::kCancelled, target);
            case SafetyCopies::Outcome::Failed:
                Throw(error_number::kAccessError, target);
        }
    }

    [[nodiscard]] std::wstring TargetOf(const std::wstring& copy) const {
        return JoinPath(folder_, ItemNameOf(copy));
    }

    void Show(const std::wstring& copy) {
        const std::wstring target = TargetOf(copy);
        const auto comment = CommentOf(console_, copy);
        const bool isOwnDate = !comment || !comment->date;
        const bool isIncomplete = comment && comment->isIncomplete;
        console_.output.Line(L"restored: " + copy + L" -> " + target + L" (" + MomentText(date_) +
                             (isOwnDate ? L", the date of its files" : L"") +
                             (isIncomplete ? L", the copy is incomplete)" : L")"));
        console_.output.Json(JsonLine("restored")
                                 .Text("copy", copy)
                                 .Text("path", target)
                                 .Text("date", MomentText(date_))
                                 .Bool("dateOfFiles", isOwnDate)
                                 .Bool("incomplete", isIncomplete));
    }

    Console& console_;
    CPackage& engine_;
    std::wstring folder_;
    bool overwrite_;
    Date date_ = kNoDate;
};

// The newest of the rotating copies of an item up to a date. Which series is the item's is said by
// the comment of its copy 1.
std::wstring CopyAsOf(Console& console, CPackage& engine, const ConsoleItem& item, Date asOf) {
    const DestinationView view(console, item.destination);
    std::wstring found;
    Date newest = kNoDate;
    for (const ShownCopy& copy : CopiesIn(console, view)) {
        if (!EqualNoCase(copy.item, CFileName(item.path)) || copy.number > kLastRotating) continue;
        const auto comment =
            copy.commentOf.empty() ? std::nullopt : CommentOf(console, copy.commentOf);
        const bool isOther = comment && !EqualNoCase(comment->place, CFileLocation(item.path));
        if (isOther) continue;
        const Date date = engine.PackageDate(copy.path);
        if (date > asOf || (!found.empty() && date <= newest)) continue;
        found = copy.path;
        newest = date;
    }
    if (found.empty()) {
        ThrowWith(error_number::kFileNotFound, L"No copy is of that date or older", item.line);
    }
    return found;
}

}  // namespace

int Restore(Console& console, const RestoreArguments& arguments) {
    SilentHost host(console);
    ConsoleProgram program;
    CPackage engine(console.system, console.state, host, program);
    Restorer restorer(console, engine, arguments);
    if (!arguments.asOf) {
        restorer.Restore(console.FullPath(arguments.source));
        return 0;
    }
    const ConsoleList list = ReadConsoleList(console, arguments.source);
    for (const ConsoleItem& item : list.items) {
        Console::StopIfRequested();
        console.Try([&] { restorer.Restore(CopyAsOf(console, engine, item, *arguments.asOf)); });
    }
    return 0;
}

}  // namespace vw
