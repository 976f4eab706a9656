// One item at a time, with every disk operation of its backup going wrong: once or from there on,
// by a full disk, a broken device or a refusal, or with the process dying in it, twice in a row
// too. The copies of the item are compared, number by number, with those of a run that went well.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iostream>

#include "engine/CopyName.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"

namespace vw::test {
namespace {

struct Scenario {
    const char* name;
    const wchar_t* item;
    int runs;    ///< good runs before
    int copies;  ///< the count of the list
};

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

// What is under one copy's name: a file is a tree of one node without a name.
using Content = Tree;

class ItemFaults : public testing::TestWithParam<Scenario> {
  protected:
    void SetUp() override {
        world_.List({GetParam().item}, GetParam().copies);
        for (int version = 1; version <= GetParam().runs; ++version) {
            Edit(version);
            EXPECT_EQ(world_.Run().exitCode, 0);
        }
        before_ = ReadTree(world_.Store());
        copiesBefore_ = CopiesNow();
        Edit(GetParam().runs + 1);
        EXPECT_EQ(world_.Run().exitCode, 0);
        copiesAfter_ = CopiesNow();
        ASSERT_FALSE(copiesAfter_.empty());
        ASSERT_EQ(copiesAfter_[1], SourceNow());
    }

    [[nodiscard]] static std::wstring Base() {
        std::wstring base = GetParam().item;
        while (base.ends_with(L'*') || base.ends_with(L'\\')) base.pop_back();
        return base;
    }
    [[nodiscard]] static bool IsFile() { return Base() == GetParam().item; }

    void Edit(int version) const {
        const std::string text = "version " + std::to_string(version);
        if (IsFile()) {
            world_.tree.File(Base(), text, Day(version));
            return;
        }
        for (const wchar_t* file : {L"\\a.txt", L"\\b.txt", L"\\Sub\\c.txt"}) {
            world_.tree.File(Base() + file, text, Day(version));
        }
        world_.tree.Folder(Base() + L"\\Sub\\Empty");
    }

    static Content ContentOf(std::wstring path) {
        if (path.ends_with(L'\\')) path.pop_back();
        Win32FileSystem disk;
        const auto facts = disk.Stat(path);
        if (!facts) return {};
        if (facts->isFolder) return ReadTree(path);
        return {{L"", {false, ReadBytes(path), ReadDate(path)}}};
    }

    // The source as a whole copy of the item holds it.
    [[nodiscard]] Content SourceNow() const {
        Content content = ContentOf(world_.Path(Base()));
        if (std::wstring_view(GetParam().item).ends_with(L'*')) {
            std::erase_if(content, [](const auto& node) {
                return node.second.isFolder || node.first.find(L'\\') != std::wstring::npos;
            });
        }
        return content;
    }

    [[nodiscard]] std::map<int, Content> CopiesNow() const {
        std::wstring item = world_.Path(GetParam().item);
        if (item.ends_with(L"\\*")) item.resize(item.size() - 2);
        std::map<int, Content> copies;
        for (int number = 1; number <= GetParam().copies + 2; ++number) {
            std::wstring path = CFilePackageName(item, number, 0, world_.Store());
            if (path.ends_with(L'\\')) path.pop_back();
            if (Exists(path)) copies[number] = ContentOf(path);
        }
        return copies;
    }

    // The destination as it was before the last version.
    void Restore() {
        world_.tree.Remove(L"Store");
        world_.tree.Folder(L"Store");
        for (const auto& [path, node] : before_) {
            if (node.isFolder) {
                world_.tree.Folder(L"Store\\" + path);
            } else {
                world_.tree.File(L"Store\\" + path, node.bytes, PartsOf(node.date));
            }
        }
    }

    // Whether copy 1 is the newest version without some of its files.
    [[nodiscard]] bool IsPartOfNewest(const Content& copy) const {
        const Content source = SourceNow();
        return std::all_of(copy.begin(), copy.end(), [&](const auto& node) {
            const auto whole = source.find(node.first);
            return whole != source.end() && whole->second == node.second;
        });
    }

    // After a run that went wrong: the old copies, in order, but for the one whose turn it was.
    void ExpectOldCopiesKept(bool mayBePartial) {
        std::vector<Content> newToOld;
        for (const auto& [number, copy] : CopiesNow()) {
            const bool isNewest = copy == SourceNow();
            const bool partial = number == 1 && mayBePartial && IsPartOfNewest(copy);
            if (isNewest || partial) {
                EXPECT_EQ(number, 1) << "the new copy stands elsewhere";
                continue;
            }
            newToOld.push_back(copy);
        }
        std::vector<Content> expected;
        for (const auto& [number, copy] : copiesBefore_) expected.push_back(copy);
        if (newToOld.size() < expected.size() &&
            static_cast<int>(expected.size()) == GetParam().copies) {
            expected.pop_back();
        }
        EXPECT_EQ(newToOld, expected);
    }

    // A folder that cannot be read while the newest date is looked for is passed over: the item
    // may look older than it is, and is copied once more by the next run.
    [[nodiscard]] bool IsInDateWalk(const FileOperation& fault) const {
        return fault.call == FileCall::List && fault.path.starts_with(world_.Path(Base()));
    }

    // A comment that cannot be read makes a file pass its number by: it is copied under another
    // one.
    [[nodiscard]] bool IsReadOfComment(const FileOperation& fault) const {
        return IsFile() && fault.call == FileCall::Read && fault.path.ends_with(L".vwc");
    }

    void ExpectToldOrHarmless(const RunResult& result, const FileOperation& fault) {
        for (const ToldError& error : result.errors) {
            EXPECT_FALSE(error.path.empty()) << error;
        }
        EXPECT_EQ(result.exitCode != 0, !result.errors.empty());
        // A fault that was not reported left nothing undone but some cleaning.
        if (result.errors.empty() && !IsReadOfComment(fault)) {
            EXPECT_EQ(CopiesNow(), copiesAfter_);
        }
    }

    // A run without faults behind it makes everything as if nothing had happened.
    void ExpectRecovery(bool mayBePartial, bool mayBeCopiedTwice = false) {
        world_.files.Heal();
        const RunResult result = world_.Run();
        EXPECT_EQ(result.exitCode, 0) << Joined(result.lines);
        EXPECT_EQ(LeftOvers(world_), Lines());
        std::map<int, Content> copies = CopiesNow();
        if (mayBePartial && IsPartOfNewest(copies[1])) copies[1] = SourceNow();
        if (mayBeCopiedTwice && copies.contains(2) && copies[2] == SourceNow()) {
            EXPECT_EQ(copies[1], SourceNow());
            return;
        }
        EXPECT_EQ(copies, copiesAfter_);
    }

    using Plan = std::function<void(FaultyFileSystem&, int)>;

    // One run with the plan at each n, until it has no effect any more.
    int Sweep(const std::string& what, const Plan& plan) {
        for (int n = 1;; ++n) {
            Restore();
            plan(world_.files, n);
            const RunResult result = world_.Run();
            const std::vector<FileOperation> faults = world_.files.Faults();
            if (faults.empty()) return n - 1;
            SCOPED_TRACE(what + " at " + std::to_string(n) + ": " + Describe(faults.front()) +
                         "\n" + Joined(result.lines));
            world_.files.Heal();
            const bool mayBePartial = !IsFile() && !result.errors.empty();
            ExpectOldCopiesKept(mayBePartial);
            if (!result.died) ExpectToldOrHarmless(result, faults.front());
            ExpectRecovery(mayBePartial,
                           !result.died && result.errors.empty() && IsInDateWalk(faults.front()));
            if (HasFailure()) return n;
        }
    }

    void Count(int points) {
        RecordProperty("points", points);
        std::cout << points << " points of failure\n";
    }

    EngineFixture world_;
    Tree before_;
    std::map<int, Content> copiesBefore_;
    std::map<int, Content> copiesAfter_;
};

TEST_P(ItemFaults, Once_AreReported_LoseNothing) {
    int points = 0;
    for (const int number :
         {error_number::kDeviceError, error_number::kDiskFull, error_number::kPermissionDenied}) {
        points += Sweep("error " + std::to_string(number) + " once",
                        [&](FaultyFileSystem& files, int n) { files.FailNth(n, number); });
    }
    Count(points);
    EXPECT_GT(points, 40);
}

TEST_P(ItemFaults, Persistent_AreReported_LoseNothing) {
    int points = 0;
    for (const int number :
         {error_number::kDeviceError, error_number::kDiskFull, error_number::kPermissionDenied}) {
        points += Sweep("error " + std::to_string(number) + " from there on",
                        [&](FaultyFileSystem& files, int n) { files.FailFrom(n, number); });
    }
    points += Sweep("disk full", [](FaultyFileSystem& files, int n) { files.FillDiskFrom(n); });
    Count(points);
    EXPECT_GT(points, 40);
}

TEST_P(ItemFaults, UnreportedByTheDisk_LoseNothing) {
    int points =
        Sweep("cut short", [](FaultyFileSystem& files, int n) { files.TruncateNthCopy(n); });
    points += Sweep("not copied", [](FaultyFileSystem& files, int n) {
        files.IgnoreNth(n, OnlyCalls({FileCall::Copy}));
    });
    Count(points);
    EXPECT_GE(points, 2);
}

TEST_P(ItemFaults, KilledAtAnyCall_LosesNothing) {
    const int points = Sweep("killed", [](FaultyFileSystem& files, int n) { files.DieAtNth(n); });
    Count(points);
    EXPECT_GT(points, 15);
}

using ItemKilledTwice = ItemFaults;

// What comes between two changes of the disk makes no difference to the next run.
TEST_P(ItemKilledTwice, AtAnyTwoChanges_LosesNothing) {
    int points = 0;
    bool firstDied = true;
    for (int n = 1; firstDied && !HasFailure(); ++n) {
        bool secondDied = true;
        for (int m = 1; secondDied && !HasFailure(); ++m, ++points) {
            Restore();
            world_.files.DieAtNth(n, OnlyChanges());
            world_.Run();
            firstDied = !world_.files.Faults().empty();
            world_.files.DieAtNth(m, OnlyChanges());
            world_.Run();
            secondDied = !world_.files.Faults().empty();
            SCOPED_TRACE("killed at change " + std::to_string(n) + " and at change " +
                         std::to_string(m));
            world_.files.Heal();
            ExpectOldCopiesKept(false);
            ExpectRecovery(false);
        }
    }
    Count(points);
    EXPECT_GT(points, 15);
}

constexpr Scenario kFullFile{"FileOfAFullSeries", L"a.txt", 3, 3};
constexpr Scenario kFullFolder{"FolderOfAFullSeries", L"Work\\", 2, 2};
constexpr Scenario kFullNestedFolder{"NestedFolderOfAFullSeries", L"j.smith\\Work\\", 2, 2};

const auto kNameOf = [](const auto& info) { return std::string(info.param.name); };

INSTANTIATE_TEST_SUITE_P(Of, ItemFaults,
                         testing::Values(Scenario{"FirstFile", L"a.txt", 0, 3}, kFullFile,
                                         Scenario{"FileWithOneCopy", L"a.txt", 1, 1},
                                         Scenario{"FirstFolder", L"Work\\", 0, 2}, kFullFolder,
                                         Scenario{"RuleOfAFullSeries", L"Work\\*", 2, 2},
                                         kFullNestedFolder,
                                         Scenario{"NestedFile", L"j.smith\\README", 1, 3}),
                         kNameOf);

INSTANTIATE_TEST_SUITE_P(Of, ItemKilledTwice,
                         testing::Values(kFullFile, kFullFolder, kFullNestedFolder), kNameOf);

}  // namespace
}  // namespace vw::test
