#include <algorithm>

#include "console/Console.h"
#include "console/ConsoleList.h"
#include "console/JsonLine.h"
#include "console/MomentText.h"
#include "console/SilentHost.h"
#include "console/SizeWords.h"
#include "console/StoredCopies.h"
#include "console/Verbs.h"
#include "engine/CPackage.h"
#include "engine/CopyLabel.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWalk.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

using MFileDosShell::CFileLocation;
using MFileDosShell::CFileName;

struct CopySize {
    bool isFolder = false;
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
};

CopySize SizeOf(Console& console, const std::wstring& path) {
    const auto facts = console.system.files.Stat(path);
    // It was there when the folder was listed.
    if (!facts) Throw(error_number::kFileNotFound, path);
    if (!facts->isFolder) return {.files = 1, .bytes = facts->size};
    CopySize size{.isFolder = true};
    TreeVisitor visitor;
    visitor.file = [&](const FolderEntry& file) {
        ++size.files;
        size.bytes += file.size;
    };
    visitor.yield = [] { Console::StopIfRequested(); };
    WalkTree(console.system.files, path, visitor);
    return size;
}

bool IsOf(const ShownCopy& copy, const std::wstring& place, const std::wstring& item) {
    if (item.empty()) return true;
    if (!EqualNoCase(copy.item, CFileName(item))) return false;
    const std::wstring folder = CFileLocation(item);
    return folder.empty() || EqualNoCase(folder, place);
}

void Show(Console& console, CPackage& engine, const ShownCopy& copy, const std::wstring& place) {
    const CopySize size = SizeOf(console, copy.path);
    const std::wstring date = MomentText(engine.PackageDate(copy.path));
    const std::wstring label = CopyLabel(copy.number);
    const std::wstring name = copy.item + (size.isFolder ? L"\\" : L"");
    console.output.Line(label + L"  " + date + L"  " + FilesAndBytesText(size.files, size.bytes) +
                        L"  " + name + L"  from " + (place.empty() ? L"?" : place));
    console.output.Json(JsonLine("copy")
                            .Text("item", copy.item)
                            .Bool("folder", size.isFolder)
                            .Number("location", copy.location)
                            .Number("number", copy.number)
                            .Text("label", label)
                            .Text("date", date)
                            .Number("files", static_cast<std::int64_t>(size.files))
                            .Number("bytes", static_cast<std::int64_t>(size.bytes))
                            .Text("original", place)
                            .Text("path", copy.path));
}

void ShowFolder(Console& console, CPackage& engine, const std::wstring& folder,
                const std::wstring& item) {
    const DestinationView view(console, folder);
    for (const ShownCopy& copy : CopiesIn(console, view)) {
        Console::StopIfRequested();
        // A copy that vanished meanwhile does not affect the others.
        console.Try([&] {
            std::wstring place;
            if (!copy.commentOf.empty()) {
                const auto comment = CommentOf(console, copy.commentOf);
                if (comment) place = comment->place;
            }
            if (IsOf(copy, place, item)) Show(console, engine, copy, place);
        });
    }
    if (view.HasChanged()) {
        console.output.Line(L"The destination changed while it was listed: " + folder);
        console.output.Json(JsonLine("changed").Text("path", folder));
    }
}

}  // namespace

int Copies(Console& console, const CopiesArguments& arguments) {
    SilentHost host(console);
    ConsoleProgram program;
    CPackage engine(console.system, console.state, host, program);
    std::vector<std::wstring> folders{console.state.defaultDestination};
    if (IsListPath(arguments.source)) {
        folders = ReadConsoleList(console, arguments.source).destinations;
    } else if (!arguments.source.empty()) {
        folders = {console.FullPath(arguments.source)};
    }
    for (const std::wstring& folder : folders) {
        console.Try([&] { ShowFolder(console, engine, folder, arguments.item); });
    }
    return 0;
}

}  // namespace vw
