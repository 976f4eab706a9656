#include <optional>

#include "console/Console.h"
#include "console/ConsoleList.h"
#include "console/JsonLine.h"
#include "console/MomentText.h"
#include "console/SilentHost.h"
#include "console/StoredCopies.h"
#include "console/Verbs.h"
#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWalk.h"
#include "fsutil/TreeWork.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/CopiesIndex.h"

namespace vw {
namespace {

using MFileDosShell::CFileLocation;
using MFileDosShell::CFileName;

constexpr int kLastRotating = 20;

class Restorer {
  public:
    Restorer(Console& console, CPackage& engine, const RestoreArguments& arguments)
        : console_(console), engine_(engine), folder_(console.FullPath(arguments.folder)) {}

    /// Puts one copy into the folder, while no backup can move it.
    void Restore(const std::wstring& copy) {
        const std::wstring store = CopyFolderOf(copy);
        if (!console_.system.files.Look(copy)) Raise(error_number::kFileNotFound, copy);
        const int before = console_.Errors();
        const bool entered =
            engine_.InDestination(store, [&] { RestoreUnderLock(copy, ItemNameOf(copy)); });
        if (!entered) {
            Raise(console_.state.cancelRequested ? error_number::kCancelled
                                                 : error_number::kDestinationBusy,
                  store);
        }
        if (console_.Errors() == before) Show(copy);
    }

  private:
    void RestoreUnderLock(const std::wstring& copy, const std::wstring& origin) {
        FileSystem& files = console_.system.files;
        // A run that was waited for may have moved it.
        if (!files.Look(copy)) Raise(error_number::kFileNotFound, copy);
        const std::wstring target = JoinPath(folder_, CFileName(origin));
        if (files.Look(target)) {
            RaiseWith(error_number::kAlreadyExists, L"It exists already", target);
        }
        MakeFolders(files, folder_);
        date_ = engine_.PackageDate(copy);
        engine_.Extract(copy, folder_, false);
    }

    void Show(const std::wstring& copy) {
        const std::wstring target = JoinPath(folder_, ItemNameOf(copy));
        const auto comment = ReadStoredComment(console_, copy);
        const bool isOwnDate = !comment || !DateOf(*comment);
        const bool isIncomplete = comment && comment->isIncomplete;
        console_.output.Line(L"restored: " + copy + L" -> " + target + L" (" + MomentText(date_) +
                             (isOwnDate ? L", the date of its files" : L"") +
                             (isIncomplete ? L", the copy is incomplete)" : L")"));
        console_.output.Json(JsonLine("restored")
                                 .Text("copy", copy)
                                 .Text("path", target)
                                 .Text("date", MomentText(date_))
                                 .Truth("dateOfFiles", isOwnDate)
                                 .Truth("incomplete", isIncomplete));
    }

    Console& console_;
    CPackage& engine_;
    std::wstring folder_;
    Date date_ = 0;
};

// The newest of the rotating copies of an item up to a date. Which series is the item's is said by
// the comment of its copy 1.
std::wstring CopyAsOf(Console& console, CPackage& engine, const ConsoleItem& item, Date asOf) {
    const DestinationView view(console, item.destination);
    std::wstring found;
    Date newest = 0;
    for (const ShownCopy& copy : CopiesIn(console, view)) {
        if (!EqualNoCase(copy.item, CFileName(item.path)) || copy.number > kLastRotating) continue;
        const auto comment =
            copy.commentOf.empty() ? std::nullopt : ReadStoredComment(console, copy.commentOf);
        const bool isOther = comment && !EqualNoCase(comment->location, CFileLocation(item.path));
        if (isOther) continue;
        const Date date = engine.PackageDate(copy.path);
        if (date > asOf || (!found.empty() && date <= newest)) continue;
        found = copy.path;
        newest = date;
    }
    if (found.empty()) {
        RaiseWith(error_number::kFileNotFound, L"No copy is of that date or older", item.line);
    }
    return found;
}

}  // namespace

int Restore(Console& console, const RestoreArguments& arguments) {
    SilentHost host(console);
    CPackage engine(console.system, console.state, host);
    Restorer restorer(console, engine, arguments);
    if (!arguments.asOf) {
        const std::wstring copy = console.FullPath(arguments.source);
        if (CFileOrigin(copy).empty()) {
            RaiseWith(error_number::kBadName, L"This is the name of no copy", copy);
        }
        restorer.Restore(copy);
        return 0;
    }
    const ConsoleList list = ReadConsoleList(console, arguments.source);
    for (const ConsoleItem& item : list.items) {
        Console::StopIfAsked();
        console.Try([&] { restorer.Restore(CopyAsOf(console, engine, item, *arguments.asOf)); });
    }
    return 0;
}

}  // namespace vw
