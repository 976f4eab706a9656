#include "console/ItemCheck.h"

#include <algorithm>
#include <vector>

#include "console/Console.h"
#include "console/Findings.h"
#include "console/MomentText.h"
#include "console/SizeWords.h"
#include "console/StoredCopies.h"
#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "engine/NameEncoding.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

// What a difference between an item and its copy 1 means depends on the change test. When the dates
// of item and comment are equal, the next run skips the item, so each difference is one that the
// test cannot see. Otherwise the next run makes a new copy, and only a file whose date is the same
// but whose length is not shows that something is wrong with the copy.

namespace vw {

namespace {

struct Difference {
    std::wstring kind;
    std::wstring path;
    std::wstring detail;
    bool isDamage = false;  ///< wrong whatever the change test says
};

std::wstring Facts(const FileInfo& facts) {
    if (facts.isFolder) return L"folder";
    return BytesText(facts.size) + L", " + MomentText(facts.lastWrite);
}

// Clang before version 16 initialises no aggregate in parentheses, as make_shared does.
auto RootsOf(const std::wstring& first, const std::wstring& second) {
    return std::make_shared<ComparedRoots>(ComparedRoots{first, second});
}

}  // namespace

struct ItemCheck::Result {
    std::vector<Difference> differences;
    NewestDates item{.newest = kEmptyFolderDate, .newestByPresentRules = {}};
    NewestDates equal{item};  ///< of the files that are equal in item and copy
    bool isPartial = false;   ///< a folder could not be listed
};

ItemCheck::ItemCheck(Console& console, CPackage& engine, Findings& findings, bool content)
    : console_(console),
      engine_(engine),
      findings_(findings),
      content_(content),
      bytes_(
          console.system.files, [this](const ComparedBytes& compared) { OnCompared(compared); },
          [] { Console::StopIfRequested(); }) {}

void ItemCheck::Finish() { bytes_.Finish(); }

void ItemCheck::Check(const ConsoleItem& item) {
    FileSystem& files = console_.system.files;
    console_.state.BackupTo = item.destination;
    const auto facts = files.Stat(item.path);
    if (!facts) {
        findings_.Add(L"missing", item.path, L"the item does not exist");
        return;
    }
    if (engine_.IsRefused(item.path)) {
        findings_.Add(L"refused", item.path, L"it holds the destination or lies in it");
        return;
    }
    const std::int16_t location = engine_.LocationID(item.line);
    if (location < 0) return;
    const std::wstring copy = CFilePackageName(item.path, 1, location, item.destination);
    const auto copyFacts = files.Stat(copy);
    if (!copyFacts) {
        findings_.Add(L"no-copy", item.path, L"it has no copy 1");
        return;
    }
    checked_.insert(UpperCase(copy));
    CheckAgainst(item, copy, *facts, *copyFacts);
    if (content_) CheckOlderCopies(item, location);
}

void ItemCheck::CheckAgainst(const ConsoleItem& item, const std::wstring& copy,
                             const FileInfo& facts, const FileInfo& copyFacts) {
    if (facts.isFolder != copyFacts.isFolder || facts.isFolder != item.IsFolder()) {
        findings_.Add(L"differs", copy, L"item and copy are not both files or both folders");
        return;
    }
    const auto comment = CommentOf(console_, copy);
    if (!comment) {
        findings_.Add(L"no-comment", copy, L"the copy has no comment");
        return;
    }
    CheckPlace(item, copy, comment->place);
    Result result = Compare(item, copy, facts);
    if (gone_.contains(item.path) || gone_.contains(copy)) return;
    if (!facts.isFolder) {
        const ComparedPair pair{{facts, L""}, {copyFacts, L""}};
        ComparedFolder single{.below = L"", .onlyFirst = {}, .onlySecond = {}, .both = {pair}};
        TakeFolder(RootsOf(item.path, copy), single, result);
    }
    // The sub-folders of a rule, and the dates of copies that lie in the item, count as well.
    const auto isOf = [&](const NewestDates& dates) {
        return comment->date && dates.HasDate(*comment->date);
    };
    bool isUnseen = isOf(result.item);
    if (facts.isFolder && (item.kind == ItemKind::Rule || !isUnseen)) {
        isUnseen = isOf(MFileDosShell::NewestDatesOf(console_.system, engine_, item.path));
    }
    Judge(item, copy, *comment, isUnseen, result);
}

// The comment of a copy that was made from another folder of the same name names that folder. A
// name with an apostrophe does not come back from a comment as it is, so it is taken the same way.
void ItemCheck::CheckPlace(const ConsoleItem& item, const std::wstring& copy,
                           const std::wstring& place) {
    const AnsiCodec& ansi = console_.system.ansi;
    const std::wstring own = MFileDosShell::CFileLocation(item.path);
    if (EqualNoCase(place, EnglishNameOrigin(EnglishNameFrom(own, ansi), ansi))) return;
    findings_.Add(L"other-place", copy,
                  L"the comment says " + (place.empty() ? L"no place" : place) + L", the item is " +
                      item.path);
}

ItemCheck::Result ItemCheck::Compare(const ConsoleItem& item, const std::wstring& copy,
                                     const FileInfo& facts) {
    Result result;
    if (!facts.isFolder) return result;
    const auto roots = RootsOf(item.path, copy);
    ComparisonVisitor visitor;
    visitor.folder = [&](const ComparedFolder& folder) { TakeFolder(roots, folder, result); };
    visitor.failed = [&](const RuntimeError& error) {
        result.isPartial = true;
        if (!IsGone(*roots)) console_.Report(error);
    };
    visitor.yield = [] { Console::StopIfRequested(); };
    CompareTrees(console_.system.files, item.path, copy, item.kind == ItemKind::Folder, visitor);
    return result;
}

void ItemCheck::TakeFolder(const Roots& roots, const ComparedFolder& folder, Result& result) {
    const auto below = [&](const std::wstring& root, const std::wstring& name) {
        const std::wstring path = folder.below + name;
        return path.empty() ? root : JoinPath(root, path);
    };
    const auto at = [&](const std::wstring& name) { return below(roots->first, name); };
    const auto take = [&](const FileInfo& entry) {
        if (!entry.isFolder) result.item.Take(entry);
    };
    std::vector<ComparedEntry> gone = folder.onlySecond;
    for (const ComparedEntry& entry : folder.onlyFirst) {
        take(entry);
        const auto before = std::ranges::find_if(
            gone, [&](const FileInfo& other) { return HaveSameInfo(entry, other); });
        if (before != gone.end() && !entry.isFolder) {
            result.differences.push_back(
                {L"renamed", at(entry.name), L"in the copy: " + before->name});
            gone.erase(before);
        } else {
            result.differences.push_back({L"not-in-copy", at(entry.name), Facts(entry)});
        }
    }
    for (const ComparedEntry& entry : gone) {
        result.differences.push_back({L"not-in-item", at(entry.name), Facts(entry)});
    }
    for (const auto& [first, second] : folder.both) {
        take(first);
        if (HaveSameInfo(first, second)) {
            result.equal.Take(first);
            if (!content_ || first.isFolder) continue;
            bytes_.Add({at(first.name), below(roots->second, second.name),
                        static_cast<const FileInfo&>(first), roots});
        } else {
            const bool isDamage =
                first.isFolder != second.isFolder || IsSameDate(first.lastWrite, second.lastWrite);
            result.differences.push_back({L"differs", at(first.name),
                                          Facts(first) + L"; the copy: " + Facts(second),
                                          isDamage});
        }
    }
}

void ItemCheck::Judge(const ConsoleItem& item, const std::wstring& copy, const CopyComment& comment,
                      bool isUnseen, const Result& result) {
    if (comment.isIncomplete) {
        findings_.Add(L"incomplete", copy,
                      std::to_wstring(result.differences.size()) + L" differences from the item");
        return;
    }
    const bool isOtherDate = result.differences.empty() && !isUnseen && !result.isPartial;
    if (!comment.date || isOtherDate || result.equal.IsAfter(*comment.date)) {
        findings_.Add(L"comment", copy, L"its date is not that of what was copied");
        return;
    }
    std::size_t due = 0;
    for (const Difference& difference : result.differences) {
        if (isUnseen || difference.isDamage) {
            findings_.Add(difference.kind, difference.path, difference.detail);
        } else {
            ++due;
        }
    }
    if (due > 0) {
        findings_.Note(L"due", item.path,
                       L"changed since copy 1, " + std::to_wstring(due) + L" differences");
    }
}

void ItemCheck::CheckOlderCopies(const ConsoleItem& item, std::int16_t location) {
    std::wstring newer = CFilePackageName(item.path, 1, location, item.destination);
    constexpr int kLastRotating = 20;
    for (int number = 2; number <= kLastRotating; ++number) {
        const std::wstring older = CFilePackageName(item.path, number, location, item.destination);
        if (!console_.system.files.Stat(older)) continue;
        CompareOlder(item, newer, older);
        newer = older;
    }
}

// Files that equal those of the item are compared with these, so that one damaged copy is named
// once; the others with the next newer copy.
void ItemCheck::CompareOlder(const ConsoleItem& item, const std::wstring& newer,
                             const std::wstring& older) {
    FileSystem& files = console_.system.files;
    const auto withItem = RootsOf(item.path, older);
    const auto withNewer = RootsOf(newer, older);
    const auto compare = [&](const std::wstring& below, const FileInfo& facts) {
        const auto path = [&](const std::wstring& root) {
            return below.empty() ? root : JoinPath(root, below);
        };
        for (const auto& roots : {withItem, withNewer}) {
            const auto other = files.Stat(path(roots->first));
            if (!other || !HaveSameInfo(*other, facts)) continue;
            bytes_.Add({path(roots->first), path(older), facts, roots});
            return;
        }
    };
    const auto facts = files.Stat(older);
    if (!facts) return;
    if (!facts->isFolder) {
        compare(L"", *facts);
        return;
    }
    ComparisonVisitor visitor;
    visitor.folder = [&](const ComparedFolder& folder) {
        for (const ComparedEntry& entry : folder.onlySecond) {
            if (!entry.isFolder) compare(folder.below + entry.name, entry);
        }
        for (const ComparedPair& pair : folder.both) {
            if (!pair.second.isFolder) compare(folder.below + pair.second.name, pair.second);
        }
    };
    visitor.failed = [&](const RuntimeError& error) {
        if (!IsGone(*withNewer)) console_.Report(error);
    };
    visitor.yield = [] { Console::StopIfRequested(); };
    CompareTrees(files, newer, older, true, visitor);
}

// A file that is written to or deleted meanwhile differs for a reason of its own.
void ItemCheck::OnCompared(const ComparedBytes& compared) {
    if (compared.isSame) return;
    const FilePair& pair = compared.pair;
    console_.Try([&] {
        if (IsGone(*pair.roots)) return;
        const auto isStill = [&](const std::wstring& path) {
            const auto now = console_.system.files.Stat(path);
            return now && HaveSameInfo(*now, pair.expected);
        };
        const bool isUnchanged = isStill(pair.first);
        if (compared.error && isUnchanged) std::rethrow_exception(compared.error);
        if (isUnchanged && isStill(pair.second)) {
            findings_.Add(L"content", pair.second, L"not the bytes of " + pair.first);
        } else {
            findings_.Note(L"changing", pair.first, L"changed while it was compared");
        }
    });
}

// One error for an item or copy that vanished, not one for each of its files.
bool ItemCheck::IsGone(const ComparedRoots& roots) {
    for (const std::wstring& root : {roots.first, roots.second}) {
        if (gone_.contains(root)) return true;
        if (console_.system.files.Stat(root)) continue;
        gone_.insert(root);
        console_.Report(RuntimeError(error_number::kFileNotFound,
                                     L"It vanished while it was compared", root, 0));
        return true;
    }
    return false;
}

}  // namespace vw
