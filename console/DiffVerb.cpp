#include <optional>

#include "console/Console.h"
#include "console/JsonLine.h"
#include "console/MomentText.h"
#include "console/SilentHost.h"
#include "console/SizeWords.h"
#include "console/StoredCopies.h"
#include "console/TreeComparison.h"
#include "console/Verbs.h"
#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/RuntimeError.h"

namespace vw {
namespace {

using MFileDosShell::CFileName;

/// What must stay the same while a copy is compared. A rotation gives its name to another copy.
struct Identity {
    FileInfo facts;
    Date date = kNoDate;

    friend bool operator==(const Identity& one, const Identity& other) {
        return one.date == other.date && one.facts.size == other.facts.size &&
               one.facts.lastWrite == other.facts.lastWrite &&
               one.facts.isFolder == other.facts.isFolder;
    }
};

Identity IdentityOf(Console& console, CPackage& engine, const std::wstring& path) {
    const auto facts = console.system.files.Stat(path);
    if (!facts) Throw(error_number::kFileNotFound, path);
    return {*facts, StoreOf(path) ? engine.PackageDate(path) : facts->lastWrite};
}

class Differences {
  public:
    explicit Differences(Console& console) : console_(console) {}

    void Show(const ComparedFolder& folder) {
        for (const auto& entry : folder.onlySecond) {
            Show(L"added", folder.below + entry.name, nullptr, &entry);
        }
        for (const auto& entry : folder.onlyFirst) {
            Show(L"removed", folder.below + entry.name, &entry, nullptr);
        }
        for (const auto& [first, second] : folder.both) {
            if (!HaveSameInfo(first, second))
                Show(L"changed", folder.below + first.name, &first, &second);
        }
    }

    void Show(const std::wstring& change, const std::wstring& name, const ComparedEntry* first,
              const ComparedEntry* second) {
        ++count_;
        std::wstring line = change + L": " + name + L" (";
        JsonLine json("difference");
        json.Text("change", change).Text("path", name);
        if (first != nullptr) {
            line += Facts(*first);
            Add(json, "before", *first);
        }
        if (first != nullptr && second != nullptr) line += L" -> ";
        if (second != nullptr) {
            line += Facts(*second);
            Add(json, "after", *second);
        }
        console_.output.Line(line + L")");
        console_.output.Json(json);
    }

    [[nodiscard]] int Count() const noexcept { return count_; }

  private:
    static std::wstring Facts(const FileInfo& facts) {
        if (facts.isFolder) return L"folder";
        return BytesText(facts.size) + L", " + MomentText(facts.lastWrite);
    }

    static void Add(JsonLine& json, const std::string& when, const FileInfo& facts) {
        json.Number(when + "Bytes", static_cast<std::int64_t>(facts.size))
            .Text(when + "Date", facts.isFolder ? L"" : MomentText(facts.lastWrite));
    }

    Console& console_;
    int count_ = 0;
};

// Where the comment of the series says that the item came from.
std::wstring OriginalOf(Console& console, const std::wstring& copy) {
    const DestinationView view(console, *StoreOf(copy));
    for (const ShownCopy& shown : CopiesIn(console, view)) {
        if (shown.path != copy || shown.commentOf.empty()) continue;
        const auto comment = CommentOf(console, shown.commentOf);
        if (comment && !comment->place.empty()) return JoinPath(comment->place, shown.item);
    }
    ThrowWith(error_number::kFileNotFound,
              L"No comment says what the copy was made from; name what to compare it with", copy);
}

}  // namespace

int Diff(Console& console, const DiffArguments& arguments) {
    SilentHost host(console);
    ConsoleProgram program;
    CPackage engine(console.system, console.state, host, program);
    const std::wstring first = console.FullPath(arguments.copy);
    const Identity firstBefore = IdentityOf(console, engine, first);
    if (!StoreOf(first) && arguments.other.empty()) {
        ThrowWith(error_number::kBadName, L"This is the name of no copy", first);
    }
    const std::wstring second =
        arguments.other.empty() ? OriginalOf(console, first) : console.FullPath(arguments.other);
    const Identity secondBefore = IdentityOf(console, engine, second);
    Differences differences(console);
    if (firstBefore.facts.isFolder && secondBefore.facts.isFolder) {
        ComparisonVisitor visitor;
        visitor.folder = [&](const ComparedFolder& folder) { differences.Show(folder); };
        visitor.failed = [&](const RuntimeError& error) { console.Report(error); };
        visitor.yield = [] { Console::StopIfRequested(); };
        CompareTrees(console.system.files, first, second, true, visitor);
    } else if (!HaveSameInfo(firstBefore.facts, secondBefore.facts)) {
        const ComparedEntry before{firstBefore.facts, CFileName(first)};
        const ComparedEntry after{secondBefore.facts, CFileName(second)};
        differences.Show(L"changed", before.name, &before, &after);
    }
    if (IdentityOf(console, engine, first) != firstBefore) {
        ThrowWith(error_number::kPermissionDenied, L"The copy changed while it was compared",
                  first);
    }
    if (StoreOf(second) && IdentityOf(console, engine, second) != secondBefore) {
        ThrowWith(error_number::kPermissionDenied, L"The copy changed while it was compared",
                  second);
    }
    return differences.Count() > 0 ? 1 : 0;
}

}  // namespace vw
